#pragma once

#include <moving_map/Settings.h>

namespace MovingMap {

/// The file that keeps the settings: an XML file of Tavik::Misc::Property.
///
///     SettingsFile file(SettingsFile::usualPath());
///     Settings settings = file.read();
///     const Settings begun = settings;
///     ... the user changes them
///     file.write(begun, settings);
///
/// Whatever is wrong with the file is told in one sentence to standard error, and the map goes on without it. One
/// object in a process, since there is one store of properties.
class SettingsFile
{
public:
    /// Where the user's file is: tavik/moving_map.xml below $XDG_CONFIG_HOME, else below $HOME/.config; empty where
    /// neither is known.
    static std::string usualPath();

    /// @param path  empty for none: nothing is read or written then
    explicit SettingsFile(std::string path);

    /// What the file says, and the defaults of what it does not say or what is not usable.
    ///
    /// A file that is no property file is left alone from here on.
    Settings read();

    /// Replaces the file when it does not exist, or when one of its settings has another text than it had at the
    /// beginning of the run. All else in it stays: what the user wrote by hand, and settings that the command line has
    /// changed for this run alone.
    void write(const Settings& begun, const Settings& ended);

private:
    bool load();

    std::string mPath;
    Settings mKept;      // as the file has it
    bool mIsNew = false; // there is no file yet
};

} // namespace MovingMap
