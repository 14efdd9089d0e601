#include <tavik/filesystem/Directory.h>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

namespace Tavik::FileSystem {

namespace {

// A few directories that link to each other form no endless path, yet as many paths as there are orders to visit them.
// Links that are not reached through another link cannot do so, and are not counted.
constexpr int MaximumNestedLinks = 4096;

struct CloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

/// One listing: where it stands in the tree and what it has found.
class Walk
{
public:
    Walk(bool recursive, std::vector<std::string>& entries) : mRecursive(recursive), mEntries(entries) {}

    void list(const std::string& path)
    {
        std::unique_ptr<DIR, CloseDirectory> directory(opendir(path.c_str()));
        if (directory == nullptr || !enter(directory.get())) {
            return;
        }
        std::vector<Entry> entries;
        while (const dirent* entry = readdir(directory.get())) {
            if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
                entries.push_back({entry->d_name, entry->d_type});
            }
        }
        directory.reset(); // before descending: a process may have few descriptors, and a tree many levels
        for (const Entry& entry : entries) {
            add(path + "/" + entry.name, entry.type);
        }
        mAncestors.pop_back();
    }

private:
    struct Entry
    {
        std::string name;
        unsigned char type; // as readdir tells it
    };

    struct Identity
    {
        dev_t device;
        ino_t inode;
        bool operator==(const Identity& other) const { return device == other.device && inode == other.inode; }
    };

    /// Puts the directory on the path from the top of the listing; false when it is there already.
    bool enter(DIR* directory)
    {
        struct stat status = {};
        if (fstat(dirfd(directory), &status) != 0) {
            return false;
        }
        const Identity identity = {status.st_dev, status.st_ino};
        if (std::find(mAncestors.begin(), mAncestors.end(), identity) != mAncestors.end()) {
            return false;
        }
        mAncestors.push_back(identity);
        return true;
    }

    /// Most file systems tell the type for nothing, while stat costs as much as opening the file.
    void add(std::string path, unsigned char type)
    {
        if (!mRecursive) {
            mEntries.push_back(std::move(path));
            return;
        }
        struct stat status = {};
        if (type == DT_UNKNOWN && lstat(path.c_str(), &status) == 0) {
            type = IFTODT(status.st_mode);
        }
        const bool link = type == DT_LNK;
        if (link && stat(path.c_str(), &status) == 0) {
            type = IFTODT(status.st_mode);
        }
        if (type != DT_DIR) {
            mEntries.push_back(std::move(path));
        } else if (!link) {
            list(path);
        } else if (mLinksOnPath == 0 || ++mNestedLinks <= MaximumNestedLinks) {
            ++mLinksOnPath;
            list(path);
            --mLinksOnPath;
        }
    }

    bool mRecursive;
    std::vector<std::string>& mEntries;
    std::vector<Identity> mAncestors;
    int mLinksOnPath = 0;
    int mNestedLinks = 0; // followed in the whole listing
};

} // namespace

Directory::Directory(const std::string& path) : mPath(path) {}

bool Directory::exists() const
{
    return exists(mPath);
}

bool Directory::exists(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

std::vector<std::string> Directory::entryList(bool recursive)
{
    mEntries.clear();
    readDirectory(mPath, recursive);
    return mEntries;
}

void Directory::readDirectory(const std::string& path, bool recursive)
{
    Walk(recursive, mEntries).list(path);
}

const std::vector<std::string>& Directory::entries() const
{
    return mEntries;
}

std::string Directory::extractPathFomFile(const std::string& file)
{
    const std::size_t slash = file.rfind('/');
    return slash == std::string::npos ? std::string() : file.substr(0, slash);
}

bool Directory::createDirectoryRecursive(const std::string& path)
{
    if (access(path.c_str(), F_OK) == 0) {
        return true;
    }
    constexpr mode_t Mode = 0777;
    for (std::size_t slash = path.find('/'); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        mkdir(path.substr(0, slash).c_str(), Mode); // fails harmlessly where the prefix exists
    }
    mkdir(path.c_str(), Mode);
    return access(path.c_str(), F_OK) == 0;
}

} // namespace Tavik::FileSystem
