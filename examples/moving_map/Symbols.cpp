#include <moving_map/Symbols.h>

#include <moving_map/Units.h>

#include <array>
#include <cmath>

namespace MovingMap::Symbols {

Outline circle(Pixel centre, float radius)
{
    const int corners = radius < 30.0f ? 36 : 180;
    Outline outline;
    for (int corner = 0; corner < corners; ++corner) {
        const double angle = 360.0 * corner / corners * RadiansPerDegree;
        outline.emplace_back(centre.x + radius * static_cast<float>(std::sin(angle)),
                             centre.y + radius * static_cast<float>(std::cos(angle)));
    }
    return outline;
}

Outline aircraft(Pixel centre, Pixel ahead, float size)
{
    // Right half from the nose to the tail: to the right, ahead; the left half is its mirror image.
    constexpr std::array<Pixel, 9> Half = {{{0.00f, 1.00f},
                                            {0.10f, 0.80f},
                                            {0.12f, 0.35f},
                                            {0.95f, -0.20f},
                                            {0.95f, -0.38f},
                                            {0.12f, -0.12f},
                                            {0.09f, -0.65f},
                                            {0.34f, -0.88f},
                                            {0.34f, -1.00f}}};
    const Pixel right(ahead.y, -ahead.x);
    Outline outline;
    for (const Pixel& point : Half) {
        outline.push_back(centre + (right * point.x + ahead * point.y) * size);
    }
    outline.push_back(centre - ahead * (0.90f * size));
    for (auto point = Half.rbegin(); point + 1 != Half.rend(); ++point) {
        outline.push_back(centre + (right * -point->x + ahead * point->y) * size);
    }
    return outline;
}

Outline pointer(Pixel tip, Pixel towards, float size)
{
    const Pixel base = tip - towards * size;
    const Pixel aside = Pixel(towards.y, -towards.x) * (0.6f * size);
    return {tip, base + aside, base - aside};
}

Tavik::OpenGL::Tesselator::TessPolygon fill(const Outline& outline)
{
    Tavik::OpenGL::Tesselator tesselator;
    for (const Pixel& corner : outline) {
        tesselator.addVertex(corner);
    }
    return tesselator.tesselate();
}

} // namespace MovingMap::Symbols
