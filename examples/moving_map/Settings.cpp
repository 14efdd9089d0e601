#include <moving_map/Settings.h>

#include <moving_map/Numbers.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace MovingMap {

namespace {

constexpr int DecimalDigits = 6;

struct LayerText
{
    const char* key;
    const char* meaning;
};

// In the order of Layer.
constexpr std::array<LayerText, LayerCount> LayerTexts = {{
    {"relief", "heights as shaded colours"},
    {"contours", "contour lines"},
    {"airspaces", "areas and edges of airspaces"},
    {"symbols", "fixes, stations and obstacles"},
    {"compass", "compass rose and range rings"},
    {"names", "names of what is shown"},
    {"figures", "speed, track, altitude and the next fix"},
    {"profile", "vertical profile below the map"},
    {"camera", "view from the aircraft's nose"},
}};

std::string numberText(double number)
{
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, DecimalDigits);
    return {text.data(), end.ptr};
}

template <typename Number>
Setting numberSetting(const char* key, const char* unit, Number lowest, Number highest, const char* meaning,
                      Number& number)
{
    return {key, std::string(unit) + ", " + numberText(lowest) + " to " + numberText(highest), meaning,
            [&number] { return numberText(number); },
            [&number, lowest, highest](const std::string& text) { return parseNumber(text, lowest, highest, number); }};
}

Setting serverSetting(const char* key, const char* meaning, std::string& server)
{
    return {key, "HOST, HOST:PORT or empty", meaning, [&server] { return server; },
            [&server](const std::string& text) {
                if (isServer(text)) {
                    server = text;
                }
                return isServer(text);
            }};
}

/// A choice between two words.
Setting choiceSetting(const std::string& key, const std::string& no, const std::string& yes, const char* meaning,
                      const std::function<bool()>& get, const std::function<void(bool)>& set)
{
    return {key, yes + " or " + no, meaning, [=] { return get() ? yes : no; },
            [=](const std::string& text) {
                const bool isKnown = text == yes || text == no;
                if (isKnown) {
                    set(text == yes);
                }
                return isKnown;
            }};
}

Setting layerSetting(std::size_t index, Layers& layers)
{
    const auto layer = static_cast<Layer>(index);
    return choiceSetting(
        std::string("layers.") + LayerTexts[index].key, "false", "true", LayerTexts[index].meaning,
        [&layers, layer] { return layers.shows(layer); }, [&layers, layer](bool shown) { layers.show(layer, shown); });
}

/// "#RRGGBB", with two more digits where it is not opaque.
std::string colorText(Color color)
{
    const auto byte = [](float part) { return static_cast<unsigned int>(std::lround(255.0f * part)); };
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X%02X", byte(color.x), byte(color.y), byte(color.z),
                  byte(color.w));
    return {text.data(), color.w == 1.0f ? std::size_t{7} : std::size_t{9}};
}

bool parseColor(const std::string& text, Color& color)
{
    if ((text.size() != 7 && text.size() != 9) || text.front() != '#') {
        return false;
    }
    std::uint32_t bits = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data() + 1, end, bits, 16);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        return false;
    }
    const std::uint32_t all = text.size() == 7 ? bits << 8 | 0xFF : bits;
    const auto part = [all](int shift) { return static_cast<float>(all >> shift & 0xFF) / 255.0f; };
    color = {part(24), part(16), part(8), part(0)};
    return true;
}

Setting colorSetting(const char* key, const char* meaning, Color& color)
{
    return {key, "#RRGGBB or #RRGGBBAA", meaning, [&color] { return colorText(color); },
            [&color](const std::string& text) { return parseColor(text, color); }};
}

} // namespace

std::vector<Setting> listSettings(Settings& settings)
{
    DisplaySettings& display = settings.display;
    MapColors& colors = settings.colors;
    std::vector<Setting> list = {
        numberSetting("map.range", "nautical miles", SmallestRangeMiles, LargestRangeMiles,
                      "from the aircraft to the outer ring", display.rangeMiles),
        choiceSetting(
            "map.orientation", "north", "track", "what points up", [&display] { return display.trackUp; },
            [&display](bool trackUp) { display.trackUp = trackUp; }),
        numberSetting("window.width", "pixels", SmallestWindowPixels, LargestWindowPixels, "of the window at the start",
                      settings.widthPixels),
        numberSetting("window.height", "pixels", SmallestWindowPixels, LargestWindowPixels,
                      "of the window at the start", settings.heightPixels),
    };
    for (std::size_t i = 0; i < LayerCount; ++i) {
        list.push_back(layerSetting(i, display.layers));
    }
    list.insert(list.end(),
                {colorSetting("colors.background", "where no terrain is known or shown", colors.background),
                 colorSetting("colors.activeLeg", "the leg being flown, and the next fix", colors.activeLeg),
                 colorSetting("colors.otherLegs", "legs ahead, and their fixes", colors.otherLeg),
                 colorSetting("colors.flownLegs", "legs flown", colors.flownLeg),
                 colorSetting("colors.rings", "compass rose and range rings", colors.rings),
                 colorSetting("colors.projectedTrack", "the next five minutes of the track", colors.projectedTrack),
                 colorSetting("colors.aircraft", "the aircraft", colors.aircraft),
                 colorSetting("colors.stations", "navaids and airports", colors.station),
                 colorSetting("colors.obstacles", "obstacles", colors.obstacle)});
    FeedSources& feeds = settings.feeds;
    list.insert(
        list.end(),
        {numberSetting("feeds.ownShipPort", "UDP port", 0, LargestPort,
                       "own ship's positions from `traffic_feed`, 0 for none", feeds.ownShipPort),
         numberSetting("feeds.nmeaPort", "UDP port", 0, LargestPort,
                       "NMEA 0183 sentences of a satellite receiver, 0 for none", feeds.nmeaPort),
         serverSetting("feeds.traffic", "other aircraft from `traffic_feed`, port 4101 if not told", feeds.traffic),
         serverSetting("feeds.sbs", "lines of a transponder receiver, port 30003 if not told", feeds.sbs)});
    return list;
}

} // namespace MovingMap
