#pragma once

#include <moving_map/Palette.h>
#include <tavik/math/Vector2.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <string>

namespace MovingMap {

/// How a text lies beside its anchor. Upright, capitals are centred on it.
enum class TextAlign
{
    Left, ///< begins there
    Centre,
    Right ///< ends there
};

/// Texts of one colour, which are drawn together.
///
/// Text is UTF-8 or Latin-1, as in toLatin1. Sizes are pixels of FreeType's em; anchors are coordinates of the matrix
/// stack. Without a font on the system nothing is drawn, and every width is 0.
class TextBatch
{
public:
    using Pixel = Tavik::Math::Vector2<float>;

    explicit TextBatch(Color color);

    /// Removes all texts.
    void clear();

    void add(const std::string& text, Pixel anchor, int size, TextAlign align);

    /// Needs a current OpenGL context, as adding does.
    void render();

    static float width(const std::string& text, int size);

    /// Of capitals and digits.
    static float height(int size);

private:
    Tavik::OpenGL::TextureFontSdf mFont;
    bool mIsLoaded = false;
    bool mIsEmpty = true;
};

} // namespace MovingMap
