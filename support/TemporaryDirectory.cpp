#include <support/TemporaryDirectory.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Tavik::Support {

TemporaryDirectory::TemporaryDirectory() : mPath((std::filesystem::temp_directory_path() / "tavik-XXXXXX").string())
{
    if (mkdtemp(mPath.data()) == nullptr) {
        std::perror("mkdtemp");
        std::exit(EXIT_FAILURE);
    }
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

} // namespace Tavik::Support
