#pragma once

#include <tavik/opengl/LineStyle.h>

#include <cstddef>
#include <cstdint>

namespace Tavik::OpenGL {

class LineBuffers;

/// How one kind of polylines is drawn.
struct LineKind
{
    const char* name;        // in the texts of OpenGL errors
    const char* where;       // there, too: the signature of the drawing function
    unsigned int mode;       // OpenGL's primitive
    std::uint32_t separator; // index that ends a strip
};

/// Activates a line program with its uniforms, and the blend state of a style: source alpha over what is there, or no
/// blending at all without anti-aliasing.
/// @param oneColor  whether the program takes the style's colour; otherwise it has one for each vertex
void beginLines(std::uint32_t program, const LineStyle& style, bool oneColor);

/// Unbinds vertex array and program and ends line smoothing. Check for errors of the drawing before: this drops them.
void endLines();

/// Hands the current matrix to the program and draws the elements of the bound vertex array in strips.
/// @param mode  OpenGL's primitive
/// @param separator  index that ends a strip
/// @param count  elements to draw; negative or more than there are for all
/// @param available  elements that there are
void drawStrips(unsigned int mode, std::uint32_t separator, int count, std::size_t available);

/// Draws polylines that have been uploaded, the whole of it from beginLines() to endLines(), and prints the errors of
/// the drawing and of the upload before.
/// @param program,style,oneColor  see beginLines()
/// @param count,available  see drawStrips()
void drawLines(const LineKind& kind, std::uint32_t program, const LineStyle& style, bool oneColor, LineBuffers& buffers,
               int count, std::size_t available);

} // namespace Tavik::OpenGL
