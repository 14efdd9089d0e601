// ZIP archives: lists the members and inflates the first ones.

#include <fuzz/InputFile.h>
#include <fuzz/Require.h>
#include <tavik/filesystem/ZipFile.h>

#include <algorithm>
#include <cstring>
#include <memory>

using Tavik::FileSystem::ZipFile;
using Tavik::Fuzz::require;

namespace {

using Buffer = std::unique_ptr<unsigned char[]>;

void checkContent(const Buffer& content, unsigned int size, const ZipFile::FileData& member)
{
    if (content == nullptr) {
        require(size == 0);
        return;
    }
    require(size == member.uncompressedSize);
    require(content[size] == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Tavik::Fuzz::InputFile file;
    file.write(data, size);

    ZipFile archive(file.path());
    std::vector<ZipFile::FileData> members = archive.members();
    require(members.size() == archive.nrFiles());
    require(members.size() == archive.getFiles().size());
    members.resize(std::min<std::size_t>(members.size(), 8)); // more of them only cost time
    for (ZipFile::FileData& member : members) {
        unsigned int length = 1;
        const Buffer content(archive.readFileContent(member, length));
        checkContent(content, length, member);
    }
    if (!members.empty()) {
        unsigned int length = 1;
        const Buffer first(archive.readFirstFile(length));
        checkContent(first, length, members.front());
        unsigned int namedLength = 1;
        const Buffer named(archive.readFile(members.front().name, namedLength));
        require(namedLength == length && (named == nullptr) == (first == nullptr));
        require(first == nullptr || std::memcmp(first.get(), named.get(), length) == 0);
    }
    return 0;
}
