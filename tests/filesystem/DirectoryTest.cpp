#include <tavik/filesystem/Directory.h>

#include <support/TemporaryDirectory.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

using Tavik::FileSystem::Directory;
using Tavik::Support::TemporaryDirectory;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

namespace {

class DirectoryTest : public testing::Test
{
protected:
    std::string below(const std::string& name) const { return mDirectory.path() + "/" + name; }

    void makeFile(const std::string& name) const
    {
        fs::create_directories(fs::path(below(name)).parent_path());
        std::ofstream(below(name)) << name;
    }

    TemporaryDirectory mDirectory;
};

} // namespace

TEST_F(DirectoryTest, ListsFilesAndOnRequestWhatLiesBelow)
{
    makeFile("file");
    makeFile("sub/deep/.other");
    fs::create_symlink("sub", below("link"));
    fs::create_symlink("nowhere", below("broken"));
    fs::create_symlink("..", below("sub/circle"));
    fs::create_symlink("ring", below("ring"));

    Directory directory(mDirectory.path());
    EXPECT_THAT(directory.entryList(false),
                UnorderedElementsAre(below("file"), below("sub"), below("link"), below("broken"), below("ring")));
    EXPECT_THAT(directory.entryList(true),
                UnorderedElementsAre(below("file"), below("sub/deep/.other"), below("link/deep/.other"),
                                     below("broken"), below("ring")));
    EXPECT_THAT(Directory(below("missing")).entryList(true), testing::IsEmpty());
    EXPECT_THAT(Directory(below("file")).entryList(true), testing::IsEmpty());
}

// Twelve directories that all link to each other can be visited in over a thousand million orders.
TEST_F(DirectoryTest, LinksThatBranchEnd)
{
    const std::string names = "abcdefghijkl";
    for (const char from : names) {
        makeFile(std::string(1, from) + "/file");
        for (const char to : names) {
            fs::create_directory_symlink(std::string("../") + to, below(std::string(1, from) + "/" + to));
        }
    }
    const std::vector<std::string> entries = Directory(mDirectory.path()).entryList(true);
    EXPECT_LT(entries.size(), 10000u);
    EXPECT_THAT(entries, testing::IsSupersetOf({below("a/file"), below("l/file")}));
}

TEST_F(DirectoryTest, CreatesMissingDirectories)
{
    makeFile("file");
    EXPECT_TRUE(Directory::createDirectoryRecursive(below("one//two/three/")));
    EXPECT_TRUE(fs::is_directory(below("one/two/three")));
    EXPECT_TRUE(Directory::createDirectoryRecursive(below("file")));
    EXPECT_FALSE(Directory::createDirectoryRecursive(below("file/below")));
    EXPECT_TRUE(Directory(below("one")).exists());
    EXPECT_FALSE(Directory::exists(below("two")));
}

TEST_F(DirectoryTest, DirectoryPartOfAPath)
{
    EXPECT_EQ(Directory::extractPathFomFile("/data/terrain/N47E011.DT1"), "/data/terrain");
    EXPECT_EQ(Directory::extractPathFomFile("file"), "");
}
