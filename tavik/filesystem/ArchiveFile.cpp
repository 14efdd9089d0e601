#include <tavik/filesystem/ArchiveFile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Tavik::FileSystem {

ArchiveFile openWithoutWaiting(const std::string& path)
{
    // O_NONBLOCK changes nothing for regular files, and keeps a pipe from blocking until somebody writes to it.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return nullptr;
    }
    ArchiveFile file(fdopen(descriptor, "rb"));
    if (file == nullptr) {
        close(descriptor);
    }
    return file;
}

ArchiveFile openArchive(const std::string& path, std::uint64_t& size)
{
    size = 0;
    ArchiveFile file = openWithoutWaiting(path);
    if (file == nullptr) {
        const int reason = errno; // which printing may replace
        std::printf("could not open <%s>\n", path.c_str());
        errno = reason;
        std::perror("fopen");
        return file;
    }
    struct stat status = {};
    if (fstat(fileno(file.get()), &status) == 0 && S_ISREG(status.st_mode)) {
        size = static_cast<std::uint64_t>(status.st_size);
    }
    return file;
}

} // namespace Tavik::FileSystem
