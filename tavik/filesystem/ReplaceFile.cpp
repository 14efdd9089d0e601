#include <tavik/filesystem/ReplaceFile.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Tavik::FileSystem {

namespace {

constexpr int MaximumLinks = 40; // as Linux has it
constexpr int MaximumNames = 1000;
constexpr mode_t PermissionBits = 07777;
constexpr mode_t NewFileMode = 0666; // less the process's mask

/// Where the symbolic links end, be there a file or not; nothing where they run in a circle.
std::optional<std::filesystem::path> followLinks(std::filesystem::path path)
{
    for (int i = 0; i < MaximumLinks; ++i) {
        std::error_code error;
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error) {
            return path;
        }
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

bool writeAll(int descriptor, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t count = write(descriptor, content.data(), content.size());
        if (count > 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool writeDirectly(const std::filesystem::path& path, std::string_view content)
{
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool written = writeAll(descriptor, content);
    return close(descriptor) == 0 && written;
}

/// Creates a file of a name that nobody has, and tells that name.
int createBeside(const std::filesystem::path& target, std::filesystem::path& name)
{
    static std::atomic<unsigned int> number = 0;
    int descriptor = -1;
    for (int i = 0; i < MaximumNames && descriptor < 0 && (i == 0 || errno == EEXIST); ++i) {
        name = target.parent_path() / (".tavik-" + std::to_string(getpid()) + "-" + std::to_string(number++));
        descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode);
    }
    return descriptor;
}

/// The owner first, since changing it clears bits of the mode. Not everybody may, and not every file system can.
bool takeOver(int descriptor, const struct stat& old)
{
    static_cast<void>(fchown(descriptor, old.st_uid, old.st_gid) == 0);
    return fchmod(descriptor, old.st_mode & PermissionBits) == 0;
}

/// Makes the new name last through a loss of power; some file systems cannot, and the content is safe either way.
void flushFolder(const std::filesystem::path& target)
{
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        static_cast<void>(fsync(descriptor));
        close(descriptor);
    }
}

bool replaceRegularFile(const std::filesystem::path& target, const struct stat* old, std::string_view content)
{
    std::filesystem::path draft;
    const int descriptor = createBeside(target, draft);
    if (descriptor < 0) {
        return false;
    }
    const bool written =
        (old == nullptr || takeOver(descriptor, *old)) && writeAll(descriptor, content) && fsync(descriptor) == 0;
    if (close(descriptor) != 0 || !written || std::rename(draft.c_str(), target.c_str()) != 0) {
        unlink(draft.c_str());
        return false;
    }
    flushFolder(target);
    return true;
}

} // namespace

bool replaceFile(const std::string& file, std::string_view content)
{
    const std::optional<std::filesystem::path> target = followLinks(file);
    if (!target) {
        return false;
    }
    struct stat old = {};
    if (stat(target->c_str(), &old) != 0) {
        return errno == ENOENT && replaceRegularFile(*target, nullptr, content);
    }
    if (!S_ISREG(old.st_mode)) {
        return writeDirectly(*target, content);
    }
    return faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) == 0 && replaceRegularFile(*target, &old, content);
}

} // namespace Tavik::FileSystem
