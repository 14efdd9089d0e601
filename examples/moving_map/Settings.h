#pragma once

#include <moving_map/DisplaySettings.h>
#include <moving_map/FeedSources.h>
#include <moving_map/Palette.h>

#include <functional>
#include <string>
#include <vector>

namespace MovingMap {

constexpr int SmallestWindowPixels = 64;
constexpr int LargestWindowPixels = 8192;

/// What the map keeps from one run to the next. The centre of the display is not kept.
struct Settings
{
    DisplaySettings display;
    int widthPixels = 1280;
    int heightPixels = 800;
    MapColors colors;
    FeedSources feeds;
};

/// One of the settings, as it stands in the file.
struct Setting
{
    std::string key;
    std::string values; ///< unit and range, or what there is to choose from
    std::string meaning;
    std::function<std::string()> text;
    std::function<bool(const std::string&)> parse; ///< false where a text is not usable; nothing is changed then
};

/// All that are kept, in the order of the guide. They refer to the settings given, which must outlive them.
std::vector<Setting> listSettings(Settings& settings);

} // namespace MovingMap
