#pragma once

#include <tavik/Export.h>

#include <string>
#include <vector>

namespace Tavik::FileSystem {

/// Lists the files below a directory, and creates directories.
///
///     Directory directory("/data/terrain");
///     if (directory.exists()) {
///         for (const std::string& path : directory.entryList(true)) { ... }
///     }
///
/// Nothing is read before entryList or readDirectory is called, and nothing is printed. Different objects may be used
/// from different threads.
class TAVIK_API Directory
{
public:
    /// Remembers the path; the file system is not touched.
    explicit Directory(const std::string& path);

    /// @{
    /// Whether the path names anything at all, a directory or not. Links are followed.
    bool exists() const;
    static bool exists(const std::string& path);
    /// @}

    /// Lists the directory anew.
    /// @param recursive  true: the files of the directory and of everything below it, but no directories;
    ///                   false: the directory's own entries, subdirectories among them
    /// @return the directory's path, "/" and the entry's path below it, in the order in which the system returns the
    ///         entries; empty when the directory cannot be read
    std::vector<std::string> entryList(bool recursive);

    /// Appends the entries of one directory to entries(); a directory that cannot be read adds none.
    ///
    /// A link to a directory counts as that directory and is descended into. One that leads back to a directory being
    /// listed is left out, and of the links that are reached through other links one listing follows 4096 at most, so
    /// that links that point at each other end.
    void readDirectory(const std::string& path, bool recursive);

    /// What has been listed: entryList starts anew, readDirectory appends.
    const std::vector<std::string>& entries() const;

    /// The directory part of a file's path: the text before its last '/', empty when there is none.
    static std::string extractPathFomFile(const std::string& file);

    /// Creates every missing directory of the path, with mode 0777 less the process's umask.
    /// @return whether the path can be accessed afterwards (also when it was there before, or is a file)
    static bool createDirectoryRecursive(const std::string& path);

private:
    std::string mPath;
    std::vector<std::string> mEntries;
};

} // namespace Tavik::FileSystem
