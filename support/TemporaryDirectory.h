#pragma once

#include <string>

namespace Tavik::Support {

/// A fresh directory that disappears with everything in it when the object goes.
///
///     TemporaryDirectory directory;
///     std::ofstream(directory.path() + "/N47E011.DT1") << ...;
class TemporaryDirectory
{
public:
    /// Creates the directory below the system's place for temporary files; ends the program if that fails, since no
    /// test can go on without it.
    TemporaryDirectory();
    ~TemporaryDirectory();

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Full path, without a slash at the end.
    const std::string& path() const { return mPath; }

private:
    std::string mPath;
};

} // namespace Tavik::Support
