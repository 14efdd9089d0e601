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
    makeFile(".hidden");
    makeFile("sub/deep/other");
    fs::create_directory(below("hollow"));
    fs::create_symlink("sub", below("link"));
    fs::create_symlink("nowhere", below("broken"));

    Directory directory(mDirectory.path());
    EXPECT_THAT(directory.entryList(false), UnorderedElementsAre(below("file"), below(".hidden"), below("sub"),
                                                                 below("hollow"), below("link"), below("broken")));
    EXPECT_THAT(directory.entryList(true),
                UnorderedElementsAre(below("file"), below(".hidden"), below("sub/deep/other"), below("link/deep/other"),
                                     below("broken")));
    EXPECT_THAT(Directory(below("missing")).entryList(true), testing::IsEmpty());
    EXPECT_THAT(Directory(below("file")).entryList(true), testing::IsEmpty());
}

TEST_F(DirectoryTest, LinksInACircleEnd)
{
    makeFile("a/file");
    fs::create_symlink(".", below("a/self"));
    fs::create_symlink("..", below("a/up"));
    fs::create_symlink("ring", below("ring"));
    EXPECT_THAT(Directory(mDirectory.path()).entryList(true), UnorderedElementsAre(below("a/file"), below("ring")));
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
    for (const char name : names) {
        EXPECT_THAT(entries, testing::Contains(below(std::string(1, name) + "/file")));
    }
}

TEST_F(DirectoryTest, ManyLinksAndLevelsAreNoCircle)
{
    makeFile("store/file");
    for (int i = 0; i < 4200; ++i) {
        fs::create_directory_symlink("store", below(std::to_string(i)));
    }
    Directory directory(mDirectory.path());
    EXPECT_EQ(directory.entryList(true).size(), 4201u);

    std::string deep = "d";
    for (int level = 1; level < 300; ++level) {
        deep += "/d";
    }
    fs::create_directories(below(deep));
    std::ofstream(below(deep + "/file"));
    directory.readDirectory(below("d"), true);
    EXPECT_EQ(directory.entries().size(), 4202u);
    EXPECT_EQ(directory.entries().back(), below(deep + "/file"));
}

TEST_F(DirectoryTest, CreatesMissingDirectories)
{
    makeFile("file");
    EXPECT_TRUE(Directory::createDirectoryRecursive(below("one//two/three/")));
    EXPECT_TRUE(fs::is_directory(below("one/two/three")));
    EXPECT_TRUE(Directory::createDirectoryRecursive(below("one/two")));
    EXPECT_FALSE(Directory::createDirectoryRecursive(below("file/below")));
    EXPECT_FALSE(Directory::createDirectoryRecursive(""));
    EXPECT_TRUE(Directory(below("one")).exists());
    EXPECT_FALSE(Directory::exists(below("two")));
}

TEST_F(DirectoryTest, DirectoryPartOfAPath)
{
    EXPECT_EQ(Directory::extractPathFomFile("/data/terrain/N47E011.DT1"), "/data/terrain");
    EXPECT_EQ(Directory::extractPathFomFile("/file"), "");
    EXPECT_EQ(Directory::extractPathFomFile("file"), "");
    EXPECT_EQ(Directory::extractPathFomFile("dir/"), "dir");
}
