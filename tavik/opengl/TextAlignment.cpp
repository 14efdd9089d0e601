#include <tavik/opengl/TextAlignment.h>

namespace Tavik::OpenGL {

TextOffset textOffset(int alignment, double width, double topDrop, double middleDrop)
{
    if (alignment < 0 || alignment > 8) {
        return {0.0, 0.0};
    }
    const double horizontal[] = {0.0, -0.5 * width, -width};
    const double vertical[] = {-topDrop, -middleDrop, 0.0};
    return {horizontal[alignment / 3], vertical[alignment % 3]};
}

} // namespace Tavik::OpenGL
