#pragma once

#include <tavik/math/Vector3.h>
#include <tavik/math/Vector4.h>
#include <tavik/opengl/TextQuads.h>

#include <cstdint>

namespace Tavik::OpenGL {

/// Draws text with one of the programs for texture fonts. While it lives the program is active, the atlas bound to
/// texture unit 0, and blending on: source alpha over what is there. Afterwards no program and no vertex array is
/// bound, the texture units are as they were, and blending stays.
class TextDrawing
{
public:
    /// @param offset  where the text's origin is drawn, in the units of its vertices
    TextDrawing(std::uint32_t program, unsigned int atlas, Math::Vector3<float> offset);

    /// Drops pending OpenGL errors: check for those of the drawing before.
    ~TextDrawing();

    TextDrawing(const TextDrawing&) = delete;
    TextDrawing& operator=(const TextDrawing&) = delete;

    /// Draws uploaded quads with the current matrix.
    static void draw(TextQuads& quads, Math::Vector4<float> color);

private:
    int mActiveTexture = 0;
    int mBoundTexture = 0;
};

} // namespace Tavik::OpenGL
