#include <moving_map/AirspaceStyle.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace MovingMap {

namespace {

constexpr unsigned int PatternEdge = 32;

constexpr Color Blue(0.45f, 0.66f, 1.0f, 1.0f);
constexpr Color PaleBlue(0.58f, 0.74f, 0.92f, 1.0f);
constexpr Color Grey(0.66f, 0.72f, 0.74f, 1.0f);
constexpr Color Red(1.0f, 0.36f, 0.32f, 1.0f);
constexpr Color Orange(1.0f, 0.66f, 0.26f, 1.0f);

constexpr std::uint16_t ShortDashes = 0x0FFF; // 12 pixels drawn, 20 left out
constexpr std::uint16_t Dots = 0x0F0F;

// Every spacing divides 32, so that the patterns have no seams.
bool dots(unsigned int x, unsigned int y)
{
    return x % 8 < 2 && y % 8 < 2;
}
bool sparseDots(unsigned int x, unsigned int y)
{
    return (x + y % 32 / 16 * 8) % 16 < 2 && y % 16 < 2;
}
bool wideRising(unsigned int x, unsigned int y)
{
    return (x + 32 - y) % 16 < 2;
}
bool wideFalling(unsigned int x, unsigned int y)
{
    return (x + y) % 16 < 2;
}
bool dashes(unsigned int x, unsigned int y)
{
    return y % 16 == 0 && (x + y / 16 * 16) % 32 < 12;
}
bool rising(unsigned int x, unsigned int y)
{
    return (x + 32 - y) % 8 < 2;
}
bool falling(unsigned int x, unsigned int y)
{
    return (x + y) % 8 < 2;
}
bool crossed(unsigned int x, unsigned int y)
{
    return rising(x, y) || falling(x, y);
}

// In the order of AirspaceClass.
const std::array<AirspaceStyle, AirspaceClassCount> Styles = {{
    {{Blue, 3.4f}, 0.12f, 0.30f, dots},
    {{Blue, 3.0f}, 0.10f, 0.24f, wideFalling},
    {{Blue, 2.4f}, 0.07f, 0.22f, sparseDots},
    {{Blue, 2.4f, ShortDashes}, 0.13f, 0.22f, wideRising},
    {{PaleBlue, 2.0f, ShortDashes}, 0.05f, 0.18f, dashes},
    {{Grey, 2.0f, Dots}, 0.05f, 0.20f, sparseDots},
    {{Grey, 1.6f, Dots}, 0.03f, 0.14f, dashes},
    {{Red, 3.0f}, 0.14f, 0.42f, crossed},
    {{Red, 2.4f}, 0.10f, 0.36f, rising},
    {{Orange, 2.4f}, 0.08f, 0.34f, falling},
}};

} // namespace

const AirspaceStyle& airspaceStyle(AirspaceClass airspaceClass)
{
    return Styles[static_cast<std::size_t>(airspaceClass)];
}

std::array<unsigned char, 128> hatchingBits(const AirspaceStyle& style)
{
    std::array<std::uint32_t, PatternEdge> rows = {};
    for (unsigned int y = 0; y < PatternEdge; ++y) {
        for (unsigned int x = 0; x < PatternEdge; ++x) {
            rows[y] |= style.isHatched(x, y) ? std::uint32_t{1} << x : 0;
        }
    }
    std::array<unsigned char, 128> bits = {};
    static_assert(sizeof(rows) == sizeof(bits));
    std::memcpy(bits.data(), rows.data(), sizeof(bits)); // the words are in the machine's byte order
    return bits;
}

} // namespace MovingMap
