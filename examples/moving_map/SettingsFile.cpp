#include <moving_map/SettingsFile.h>

#include <tavik/misc/Property.h>
#include <tavik/xml/XmlDocument.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace MovingMap {

namespace {

namespace fs = std::filesystem;
using Tavik::Misc::Property;

constexpr const char* RootName = "Properties";

} // namespace

std::string SettingsFile::usualPath()
{
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    fs::path folder;
    if (config != nullptr && fs::path(config).is_absolute()) {
        folder = config;
    } else if (home != nullptr && fs::path(home).is_absolute()) {
        folder = fs::path(home) / ".config";
    } else {
        return {};
    }
    return folder / "tavik" / "moving_map.xml";
}

SettingsFile::SettingsFile(std::string path) : mPath(std::move(path)) {}

Settings SettingsFile::read()
{
    mKept = {};
    std::error_code error;
    mIsNew = fs::status(mPath, error).type() == fs::file_type::not_found;
    if (mPath.empty() || mIsNew) {
        return mKept;
    }
    if (!load()) {
        std::fprintf(
            stderr,
            "moving_map: '%s' cannot be read as settings and stays as it is; nothing of this run will be kept\n",
            mPath.c_str());
        mPath.clear();
        return mKept;
    }
    for (const Setting& setting : listSettings(mKept)) {
        const std::string standard = setting.text();
        const std::string text = Property::instance().getString(setting.key, standard);
        if (text != standard && !setting.parse(text)) { // a default has more digits than its text
            std::fprintf(stderr, "moving_map: the value '%s' of %s in '%s' is not usable (%s); it is %s\n",
                         text.c_str(), setting.key.c_str(), mPath.c_str(), setting.values.c_str(), standard.c_str());
        }
    }
    return mKept;
}

/// Into the store. The name of the root tells a property file from other XML, which had better not be overwritten.
bool SettingsFile::load()
{
    Tavik::XML::XmlDocument document;
    if (!document.read(mPath) || document.root().name() != RootName) {
        return false;
    }
    for (auto element = document.root().firstElement(); element.valid(); element = element.nextElement()) {
        Property::instance().readElement(element, "");
    }
    return true;
}

void SettingsFile::write(const Settings& begun, const Settings& ended)
{
    if (mPath.empty()) {
        return;
    }
    Settings begin = begun;
    Settings end = ended;
    const std::vector<Setting> before = listSettings(begin);
    const std::vector<Setting> after = listSettings(end);
    const std::vector<Setting> kept = listSettings(mKept);
    Property& store = Property::instance();
    bool isChanged = mIsNew;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        if (after[i].text() != before[i].text()) {
            store.setString(kept[i].key, after[i].text());
            isChanged = true;
        } else if (store.getString(kept[i].key, "").empty()) {
            store.setString(kept[i].key, kept[i].text()); // so that the user finds it in the file
        }
    }
    if (isChanged) {
        std::error_code ignored; // what fails here fails in writing too, which tells
        fs::create_directories(fs::path(mPath).parent_path(), ignored);
        store.writeXmlFile(mPath);
    }
}

} // namespace MovingMap
