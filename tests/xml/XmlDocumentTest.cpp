#include <support/TemporaryDirectory.h>
#include <tavik/xml/XmlDocument.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using Tavik::XML::XmlDocument;
using Tavik::XML::XmlElement;

namespace {

std::string repeated(const std::string& text, std::size_t count)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::string nested(std::size_t levels)
{
    return repeated("<a>", levels - 1) + "<a/>" + repeated("</a>", levels - 1);
}

std::string attributes(int count)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += " a" + std::to_string(i) + "='1'";
    }
    return all;
}

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t filesIn(const std::string& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

class XmlFiles : public testing::Test
{
protected:
    /// What reading a text prints, its first line taken off; "good" where it is read.
    std::string read(const std::string& content)
    {
        std::ofstream(path, std::ios::binary) << content;
        return readFrom(path);
    }

    std::string readFrom(const std::string& file)
    {
        testing::internal::CaptureStdout();
        const bool good = document.read(file);
        const std::string output = testing::internal::GetCapturedStdout();
        const std::string start = "Error reading <" + file + "> :\n";
        EXPECT_EQ(output.empty(), good);
        EXPECT_EQ(output.substr(0, start.size()), good ? "" : start);
        return good ? "good" : output.substr(start.size());
    }

    const Tavik::Support::TemporaryDirectory directory;
    const std::string path = directory.path() + "/file.xml";
    XmlDocument document;
};

TEST_F(XmlFiles, TellsWhereAndWhyReadingFails)
{
    EXPECT_EQ(read("<good/>"), "good");
    const struct
    {
        const char* name;
        std::string content;
        std::string expected;
    } cases[] = {
        {"empty", "", "Row 0 Col 0 Error Error document empty.\n"},
        {"wrong end tag", "<a>\n  <b>x</c>\n</a>", "Row 2 Col 7 Error Error reading end tag.\n"},
        {"too deep", "<r>\n" + nested(1000) + "</r>", "Row 2 Col 2998 Error Elements nested too deeply.\n"},
        {"a few thousand", nested(5000), "Row 1 Col 3001 Error Elements nested too deeply.\n"},
        {"stack", nested(100000), "Row 1 Col 3001 Error Elements nested too deeply.\n"},
        {"stack, never closed", repeated("<a b='>'>", 500000), "Row 1 Col 9001 Error Elements nested too deeply.\n"},
        {"path too long", "<r><" + std::string(16383, 'x') + "/></r>",
         "Row 1 Col 4 Error Elements nested too deeply.\n"},
        // TinyXML would take all up to the semicolon for one character, and so miss the end tags.
        {"hidden in a reference", repeated("<a>&#x</a>x41;", 100000),
         "Row 1 Col 4 Error Error in a character reference.\n"},
        {"hidden by the end of a wrong level", "</a>" + nested(1001),
         "Row 1 Col 3005 Error Elements nested too deeply.\n"},
        {"hidden in a declaration", repeated("<a><?xml version='?></a>'?>", 1001),
         "Row 1 Col 27001 Error Elements nested too deeply.\n"},
        // As UTF-8, the byte E4 would swallow the end tag's first two.
        {"hidden behind broken UTF-8",
         "<?xml version='1.0' encoding='UTF-8'?><r>" + repeated("<a>\xE4</a>", 1500) + "</r>", "good"},
        {"attributes", "<r" + attributes(1001) + "/>", "Row 1 Col 1 Error Too many attributes.\n"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(read(c.content), c.expected) << c.name;
    }
    EXPECT_EQ(readFrom(directory.path() + "/missing"), "Row 0 Col 0 Error Failed to open file\n");
    EXPECT_EQ(readFrom(directory.path()), "Row 0 Col 0 Error Failed to open file\n");
    EXPECT_EQ(readFrom("/dev/zero"), "Row 0 Col 0 Error File too large.\n");
}

// What is unusual and good is not refused, and comes out right.
TEST_F(XmlFiles, ReadsWhatIsGood)
{
    const std::string manyDeep = repeated("<g>" + nested(998) + "</g>", 20);
    const struct
    {
        const char* name;
        std::string content;
        std::string value; // of the root's attribute v
    } cases[] = {
        {"deep enough", "<r v='1'>" + manyDeep + "</r>", "1"},
        {"attributes", "<r" + attributes(999) + " v='1'/>", "1"},
        {"comments", "<!-- <a><a> --><r v='1'><!--" + repeated("<a>", 2000) + "--></r>", "1"},
        {"character data", "<r v='1'><![CDATA[" + repeated("<a>", 2000) + "]]></r>", "1"},
        {"brackets in values", "<r v='>/>'>" + repeated("<a b='<c>'></a>", 2000) + "</r>", ">/>"},
        {"declarations", "<?xml version=\"1.0\" encoding='UTF-8'?><?xml-stylesheet href='a?b=c'?><r v='1'/>", "1"},
        {"byte order mark", "\xEF\xBB\xBF<r v='1'/>", "1"},
        {"line ends", "<r\r\nv='a\r\nb\rc'/>\r", "a\nb\nc"},
        {"references in UTF-8", "<r v='\xC3\xA4&#xE4;&#8364;&amp;#x41;'/>", "\xC3\xA4\xC3\xA4\xE2\x82\xAC&#x41;"},
        {"Latin-1", "<?xml version='1.0' encoding='ISO-8859-1'?><r v='\xE4'/>", "\xE4"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(read(c.content), "good") << c.name;
        EXPECT_EQ(document.root().getAttributeString("v", 100), c.value) << c.name;
    }
    EXPECT_EQ(read("<r>some <i/>text</r>"), "good");
    EXPECT_EQ(document.root().value(), "some");
}

TEST_F(XmlFiles, KeepsTheOldContentWhenReadingFails)
{
    read("<old/>");
    const XmlElement old = document.root();
    EXPECT_NE(read("<new>"), "good");
    EXPECT_EQ(document.root().name(), "old");
    read("<new/>");
    EXPECT_EQ(old.name() + document.root().name(), "oldnew");
}

TEST_F(XmlFiles, WritesThroughLinksAndKeepsPermissions)
{
    read("<r><a b=\"c\" /></r>");
    const std::string folder = directory.path() + "/folder";
    std::filesystem::create_directory(folder);
    std::filesystem::create_symlink("folder/target.xml", directory.path() + "/link.xml");
    for (const mode_t mode : {0u, 0640u}) { // first into nothing
        if (mode != 0) {
            chmod((folder + "/target.xml").c_str(), mode);
        }
        ASSERT_TRUE(document.write(directory.path() + "/link.xml"));
        EXPECT_EQ(contentOf(folder + "/target.xml"), "<r>\n    <a b=\"c\" />\n</r>\n");
        EXPECT_TRUE(std::filesystem::is_symlink(directory.path() + "/link.xml"));
        EXPECT_EQ(filesIn(folder), 1u);
        struct stat status = {};
        stat((folder + "/target.xml").c_str(), &status);
        const mode_t mask = umask(0);
        umask(mask);
        EXPECT_EQ(status.st_mode & 07777u, mode != 0 ? mode : 0666u & ~mask);
    }
}

TEST_F(XmlFiles, LeavesTheOldFileWhenWritingFails)
{
    read("<old/>");
    std::filesystem::create_symlink("circle", directory.path() + "/circle");
    for (const std::string& file : {std::string(), directory.path(), directory.path() + "/missing/file.xml",
                                    directory.path() + "/circle", std::string("/dev/full")}) {
        EXPECT_FALSE(document.write(file)) << file;
    }
    const pid_t child = fork();
    if (child == 0) { // a disk that is full after eight bytes
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {8, 8};
        setrlimit(RLIMIT_FSIZE, &limit);
        XmlElement more("more-than-eight-bytes");
        document.appendElement(more);
        _exit(document.write(path) ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(path), "<old/>");
    EXPECT_EQ(filesIn(directory.path()), 2u);
}

// A writer that is killed at any moment leaves one content or the other, whole.
TEST_F(XmlFiles, SurvivesAKilledWriter)
{
    const std::string contents[] = {"<one>" + repeated("<a/>", 20000) + "</one>",
                                    "<two>" + repeated("<b/>", 20000) + "</two>"};
    XmlDocument documents[2];
    std::string whole[2];
    for (int i = 0; i < 2; ++i) {
        read(contents[i]);
        documents[i].read(path);
        documents[i].write(path);
        whole[i] = contentOf(path);
    }
    int pipeEnds[2] = {};
    ASSERT_EQ(pipe(pipeEnds), 0);
    for (useconds_t round = 0; round < 40; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (int i = 0;; ++i) {
                documents[i % 2].write(path);
                if (i == 1 && write(pipeEnds[1], "", 1) != 1) {
                    _exit(1);
                }
            }
        }
        char byte = 0;
        ASSERT_EQ(::read(pipeEnds[0], &byte, 1), 1); // the child has written, and goes on
        usleep(977 * round);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string content = contentOf(path);
        ASSERT_TRUE(content == whole[0] || content == whole[1]) << content.size() << " bytes";
    }
}

} // namespace
