#include <tavik/opengl/FontFile.h>

#include <cstddef>
#include <cstdio>
#include <memory>

namespace Tavik::OpenGL {

namespace {

// Folders and devices claim sizes of any kind.
constexpr long MaximumFileSize = 1L << 30;

struct FileCloser
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

bool readFontFile(const char* fileName, std::vector<char>& contents)
{
    const std::unique_ptr<std::FILE, FileCloser> file(fileName == nullptr ? nullptr : std::fopen(fileName, "rb"));
    if (file == nullptr || std::fseek(file.get(), 0, SEEK_END) != 0) {
        return false;
    }
    const long size = std::ftell(file.get());
    if (size < 0 || size > MaximumFileSize) {
        return false;
    }
    std::rewind(file.get());
    contents.resize(static_cast<std::size_t>(size));
    return std::fread(contents.data(), 1, contents.size(), file.get()) == contents.size();
}

} // namespace Tavik::OpenGL
