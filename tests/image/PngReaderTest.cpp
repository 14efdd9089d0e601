#include <support/TemporaryDirectory.h>
#include <tavik/image/PngReader.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

using Tavik::Image::PngReader;

namespace {

// Size of the pictures in data, and the formulas of their pixels, as in data/make_pictures.
constexpr int Width = 13;
constexpr int Height = 11;

using Pixel = std::array<int, 4>;

Pixel shallow(int x, int y)
{
    return {(x * 19 + y * 7) % 256, (x * 5 + y * 23) % 256, x * y * 3 % 256, (x * 17 + y * 11) % 256};
}

// 16 bits, rounded to 8.
Pixel deep(int x, int y)
{
    Pixel pixel = shallow(x, y);
    for (int& sample : pixel) {
        sample = static_cast<int>(std::lround((sample * 251 + x * 31 + y * 13) / 257.0));
    }
    return pixel;
}

template <int Colors>
Pixel palette(int x, int y)
{
    const int entry = (x + 2 * y) % Colors;
    return {entry * 37 % 256, 255 - entry * 2, entry * 71 % 256, 255};
}

std::string picturePath(const std::string& name)
{
    return std::string(PICTURES) + "/" + name + ".png";
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What is printed for a picture that is refused, and must leave the image alone; "read" for another.
std::string outcome(const std::string& path)
{
    unsigned char nothing = 0;
    PngReader::ImageRGBA image;
    image.data = &nothing;
    testing::internal::CaptureStdout();
    const bool isRead = PngReader::readFileRGBA(path, image);
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(image.data != &nothing, isRead) << path;
    if (isRead) {
        std::free(image.data);
    }
    return isRead ? "read" : printed;
}

// Files that are not quite a picture.
class PngReaderDamage : public testing::Test
{
protected:
    std::string outcomeOf(const std::string& bytes) const
    {
        std::remove(mPath.c_str()); // some file systems wait for the disk when a file is written over
        std::ofstream(mPath, std::ios::binary) << bytes;
        return outcome(mPath);
    }

    const Tavik::Support::TemporaryDirectory mDirectory;
    const std::string mPath = mDirectory.path() + "/damaged.png";
    const std::string mNoPng = "[read_png_file] File " + mPath + " is not recognized as a PNG file\n";
    const std::string mSetUpFailed = "[read_png_file] Error during init_io";
    const std::string mReadFailed = "[read_png_file] Error during read_image " + mPath + "\n";
};

void put(std::string& bytes, std::size_t offset, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[offset + i] = static_cast<char>(value >> (24 - 8 * i));
    }
}

} // namespace

TEST(PngReader, PicturesInColorArePixelExact)
{
    struct Case
    {
        const char* name;
        bool hasAlpha;
        Pixel (*expected)(int x, int y);
    };
    const Case cases[] = {
        {"rgb8", false, shallow},
        {"rgb8_interlaced", false, shallow},
        {"rgb8_transparent_color", false, shallow},
        {"rgb16", false, deep},
        {"rgba8", true, shallow},
        {"rgba16", true, deep},
        {"rgba16_interlaced", true, deep},
        {"palette1", false, palette<2>},
        {"palette2", false, palette<4>},
        {"palette4", false, palette<16>},
        {"palette4_interlaced", false, palette<16>},
        {"palette8", false, palette<100>},
        {"palette8_transparent_color", false, palette<100>},
    };
    for (const Case& c : cases) {
        PngReader::ImageRGBA image;
        ASSERT_TRUE(PngReader::readFileRGBA(picturePath(c.name), image)) << c.name;
        ASSERT_TRUE(image.width == Width && image.height == Height) << c.name;
        for (int i = 0; i < Width * Height; ++i) {
            Pixel expected = c.expected(i % Width, i / Width);
            expected[3] = c.hasAlpha ? expected[3] : 255;
            const unsigned char* data = &image.data[std::ptrdiff_t{4} * i];
            EXPECT_EQ((Pixel{data[0], data[1], data[2], data[3]}), expected) << c.name << " pixel " << i;
        }
        std::free(image.data);
    }
}

TEST(PngReader, GreyPicturesAndOtherFilesAreRefused)
{
    EXPECT_EQ(outcome(picturePath("grey8")), "wrong file format 0\n");
    EXPECT_EQ(outcome(picturePath("grey16_interlaced")), "wrong file format 0\n");
    EXPECT_EQ(outcome(picturePath("grey_alpha8")), "wrong file format 4\n");
    EXPECT_EQ(outcome(picturePath("missing")), "");
    EXPECT_EQ(outcome(PICTURES), "[read_png_file] File " PICTURES " is not recognized as a PNG file\n") << "a folder";
}

TEST_F(PngReaderDamage, CutAndDamagedPicturesAreRefused)
{
    for (const char* name : {"palette4", "rgb8_interlaced"}) {
        const std::string picture = readFile(picturePath(name));
        // The signature, the header, whatever comes between, the pixels, the end.
        for (std::size_t length = 0; length < picture.size(); ++length) {
            const std::string printed = outcomeOf(picture.substr(0, length));
            EXPECT_TRUE(printed == (length < 8 ? mNoPng : mSetUpFailed) || (length > 33 && printed == mReadFailed))
                << name << " cut to " << length << ": " << printed;
            EXPECT_TRUE(length < 120 || printed == mReadFailed) << printed;
            std::string flipped = picture;
            flipped[length] = static_cast<char>(flipped[length] ^ 0x10);
            EXPECT_NE(outcomeOf(flipped), "read") << name << " byte " << length;
        }
    }
}

TEST_F(PngReaderDamage, SizesAreBounded)
{
    struct Case
    {
        std::uint32_t width;
        std::uint32_t height;
        const std::string& printed;
    };
    for (const Case& c :
         {Case{0, Height, mSetUpFailed}, Case{Width, 0xFFFFFFFF, mSetUpFailed}, Case{1000001, 1, mSetUpFailed},
          Case{65536, 65536, mSetUpFailed}, Case{16385, 16384, mSetUpFailed}, Case{10000, 10000, mReadFailed},
          Case{Width, Height + 1, mReadFailed}}) {
        constexpr std::size_t Header = 12; // behind signature and length; its check sum is made right
        constexpr std::size_t HeaderSize = 17;
        std::string bytes = readFile(picturePath("rgb8"));
        put(bytes, Header + 4, c.width);
        put(bytes, Header + 8, c.height);
        const auto* header = reinterpret_cast<const unsigned char*>(&bytes[Header]);
        put(bytes, Header + HeaderSize, static_cast<std::uint32_t>(crc32(0, header, HeaderSize)));
        EXPECT_EQ(outcomeOf(bytes), c.printed) << c.width << " x " << c.height;
    }
}

TEST(PngReader, DataAreNotDecoded)
{
    PngReader::ImageRGBA image;
    testing::internal::CaptureStdout();
    EXPECT_TRUE(PngReader::readDataRGBA(nullptr, image));
    std::ostringstream expected;
    expected << "read PNG Data <" << static_cast<const void*>(&image) << ">\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected.str());
}
