#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace Tavik::FileSystem {

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// An archive open for reading, closed when it goes. For the library's own sources only.
using ArchiveFile = std::unique_ptr<std::FILE, CloseFile>;

/// Opens a file for reading; opening a pipe does not wait for a writer.
/// @return null, with errno set, where it cannot be opened
ArchiveFile openWithoutWaiting(const std::string& path);

/// Opens an archive and tells its size in bytes.
///
/// On failure prints "could not open <path>" to standard output and the system's reason to standard error. A directory,
/// pipe or device is an archive of size 0.
ArchiveFile openArchive(const std::string& path, std::uint64_t& size);

} // namespace Tavik::FileSystem
