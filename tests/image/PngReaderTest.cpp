#include <support/TemporaryDirectory.h>
#include <tavik/image/PngReader.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

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

struct Result
{
    bool isRead;
    std::string printed;
};

// Reads and releases a picture; a failure must leave the image alone.
Result read(const std::string& path)
{
    unsigned char nothing = 0;
    PngReader::ImageRGBA image;
    image.width = 1;
    image.height = 2;
    image.data = &nothing;
    testing::internal::CaptureStdout();
    const bool isRead = PngReader::readFileRGBA(path, image);
    const std::string printed = testing::internal::GetCapturedStdout();
    if (isRead) {
        std::free(image.data);
    } else {
        EXPECT_TRUE(image.width == 1 && image.height == 2 && image.data == &nothing) << path;
    }
    return {isRead, printed};
}

class DamagedPicture
{
public:
    explicit DamagedPicture(const std::string& name) : mBytes(readFile(picturePath(name))) {}

    std::size_t size() const { return mBytes.size(); }
    std::string path() const { return mDirectory.path() + "/damaged.png"; }

    Result readFirst(std::size_t length) const { return readBytes(mBytes.substr(0, length)); }

    Result readFlipped(std::size_t offset) const
    {
        std::string bytes = mBytes;
        bytes[offset] = static_cast<char>(bytes[offset] ^ 0x10);
        return readBytes(bytes);
    }

    // With another size in the header, whose check sum is made right.
    Result readResized(std::uint32_t width, std::uint32_t height) const
    {
        constexpr std::size_t Header = 12; // behind signature and length
        constexpr std::size_t HeaderSize = 17;
        std::string bytes = mBytes;
        put(bytes, Header + 4, width);
        put(bytes, Header + 8, height);
        const auto* header = reinterpret_cast<const unsigned char*>(&bytes[Header]);
        put(bytes, Header + HeaderSize, static_cast<std::uint32_t>(crc32(0, header, HeaderSize)));
        return readBytes(bytes);
    }

private:
    static void put(std::string& bytes, std::size_t offset, std::uint32_t value)
    {
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[offset + i] = static_cast<char>(value >> (24 - 8 * i));
        }
    }

    Result readBytes(const std::string& bytes) const
    {
        std::ofstream(path(), std::ios::binary) << bytes;
        return read(path());
    }

    Tavik::Support::TemporaryDirectory mDirectory;
    std::string mBytes;
};

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
    EXPECT_EQ(read(picturePath("grey8")).printed, "wrong file format 0\n");
    EXPECT_EQ(read(picturePath("grey16_interlaced")).printed, "wrong file format 0\n");
    EXPECT_EQ(read(picturePath("grey_alpha8")).printed, "wrong file format 4\n");
    EXPECT_FALSE(read(picturePath("grey8")).isRead);

    const std::string script = std::string(PICTURES) + "/make_pictures";
    EXPECT_EQ(read(script).printed, "[read_png_file] File " + script + " is not recognized as a PNG file\n");
    const Result missing = read(picturePath("missing"));
    EXPECT_FALSE(missing.isRead);
    EXPECT_EQ(missing.printed, "");
    EXPECT_FALSE(read(PICTURES).isRead) << "a folder";
}

TEST(PngReader, CutPicturesAreRefusedWhereverTheyEnd)
{
    for (const char* name : {"rgba16_interlaced", "palette4", "rgb8_interlaced"}) {
        const DamagedPicture picture(name);
        constexpr std::size_t EndChunk = 12; // nothing but a mark
        for (std::size_t length = 0; length + EndChunk < picture.size(); ++length) {
            const Result result = picture.readFirst(length);
            EXPECT_FALSE(result.isRead) << name << " cut to " << length;
            const std::string expected =
                length < 8 ? "[read_png_file] File " + picture.path() + " is not recognized as a PNG file\n"
                : result.printed.find("read_image") == std::string::npos
                    ? "[read_png_file] Error during init_io"
                    : "[read_png_file] Error during read_image " + picture.path() + "\n";
            EXPECT_EQ(result.printed, expected) << name << " cut to " << length;
        }
    }
}

TEST(PngReader, DamageIsFoundByCheckSums)
{
    const DamagedPicture picture("palette4");
    // Between signature and end mark every byte counts: each chunk has a check sum.
    for (std::size_t offset = 0; offset + 12 < picture.size(); ++offset) {
        EXPECT_FALSE(picture.readFlipped(offset).isRead) << "byte " << offset;
    }
}

TEST(PngReader, SizesAreBounded)
{
    const DamagedPicture picture("rgb8");
    const std::string setUpFailed = "[read_png_file] Error during init_io";
    const std::string readFailed = "[read_png_file] Error during read_image " + picture.path() + "\n";
    struct Case
    {
        std::uint32_t width;
        std::uint32_t height;
        const std::string& printed;
    };
    for (const Case& c :
         {Case{0, Height, setUpFailed}, Case{Width, 0xFFFFFFFF, setUpFailed}, Case{1000001, 1, setUpFailed},
          Case{65536, 65536, setUpFailed}, Case{16385, 16384, setUpFailed}, Case{10000, 10000, readFailed},
          Case{Width, Height + 1, readFailed}}) {
        const Result result = picture.readResized(c.width, c.height);
        EXPECT_FALSE(result.isRead) << c.width << " x " << c.height;
        EXPECT_EQ(result.printed, c.printed) << c.width << " x " << c.height;
    }
}

TEST(PngReader, DataAreNotDecoded)
{
    PngReader::ImageRGBA image;
    char expected[64];
    std::snprintf(expected, sizeof(expected), "read PNG Data <%p>\n", static_cast<void*>(&image));
    testing::internal::CaptureStdout();
    EXPECT_TRUE(PngReader::readDataRGBA(nullptr, image));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
    EXPECT_EQ(image.data, nullptr);
}
