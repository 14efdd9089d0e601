#include <support/Fonts.h>
#include <tavik/opengl/DistanceField.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

// As the functions count pixels, in int.
std::size_t index(int x, int y, int stride)
{
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) + static_cast<std::size_t>(x);
}

struct Image
{
    Image(int w, int h, int s = 0) : width(w), height(h), stride(s == 0 ? w : s), pixels(index(0, h, stride)) {}

    unsigned char& at(int x, int y) { return pixels[index(x, y, stride)]; }
    unsigned char at(int x, int y) const { return pixels[index(x, y, stride)]; }

    int width;
    int height;
    int stride;
    std::vector<unsigned char> pixels;
};

float edgeDistance(const Image& image, int x, int y, float limit, float flatFactor, float& gx, float& gy)
{
    const float root2 = 1.4142137f;
    const auto c = [&](int dx, int dy) { return float(image.at(x + dx, y + dy)); };
    gx = (c(1, -1) - c(-1, -1)) + (c(1, 1) - c(-1, 1)) + root2 * (c(1, 0) - c(-1, 0));
    gy = (c(-1, 1) - c(-1, -1)) + (c(1, 1) - c(1, -1)) + root2 * (c(0, 1) - c(0, -1));
    const float a = c(0, 0) / 255.0f;
    if (std::fabs(gx) < limit && std::fabs(gy) < limit) {
        gx = gy = 0.0f;
        return (0.5f - a) * flatFactor;
    }
    const float squared = gx * gx + gy * gy;
    if (squared > 0.0001f) {
        gx /= std::sqrt(squared);
        gy /= std::sqrt(squared);
    }
    if (gx == 0.0f || gy == 0.0f) {
        return 0.5f - a;
    }
    const float g1 = std::min(std::fabs(gx), std::fabs(gy));
    const float g2 = std::max(std::fabs(gx), std::fabs(gy));
    const float a1 = 0.5f * g1 / g2;
    if (a < a1) {
        return 0.5f * (g1 + g2) - std::sqrt(2.0f * g1 * g2 * a);
    }
    return a < 1.0f - a1 ? (0.5f - a) * g2 : -0.5f * (g1 + g2) + std::sqrt(2.0f * g1 * g2 * (1.0f - a));
}

bool mayHoldEdge(const Image& image, int x, int y)
{
    const int c = image.at(x, y);
    return c != 255 && (c != 0 || image.at(x - 1, y) == 255 || image.at(x, y - 1) == 255 || image.at(x + 1, y) == 255 ||
                        image.at(x, y + 1) == 255);
}

// The plain form: every pixel in every sweep, at any distance.
Image plainField(const Image& image, float radius)
{
    struct Cell
    {
        float squared = 1e37f;
        float x = 0.0f;
        float y = 0.0f;
    };
    const int w = image.width;
    const int h = image.height;
    std::vector<Cell> cells(index(0, h, w));
    const auto cell = [&](int x, int y) -> Cell& { return cells[index(x, y, w)]; };
    const auto squaredTo = [](const Cell& c, int x, int y) {
        return (c.x - float(x)) * (c.x - float(x)) + (c.y - float(y)) * (c.y - float(y));
    };
    for (int y = 1; y < h - 1; ++y) {
        for (int x = 1; x < w - 1; ++x) {
            float gx = 0.0f;
            float gy = 0.0f;
            if (mayHoldEdge(image, x, y)) {
                const float distance = edgeDistance(image, x, y, 0.001f, 0.0f, gx, gy);
                if (gx != 0.0f || gy != 0.0f) {
                    cell(x, y) = {0.0f, float(x) + gx * distance, float(y) + gy * distance};
                    cell(x, y).squared = squaredTo(cell(x, y), x, y);
                }
            }
        }
    }
    const int neighbours[4][2] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}};
    bool changed = true;
    for (int repetition = 0; repetition < 10 && changed; ++repetition) {
        changed = false;
        for (const int step : {1, -1}) {
            for (int i = 0; i < w * h; ++i) {
                const int place = step > 0 ? i : w * h - 1 - i;
                const int x = place % w;
                const int y = place / w;
                for (const auto& n : neighbours) {
                    const int nx = x + step * n[0];
                    const int ny = y + step * n[1];
                    if (nx < 0 || ny < 0 || nx >= w || ny >= h || cell(nx, ny).squared > 1e36f) {
                        continue;
                    }
                    const float squared = squaredTo(cell(nx, ny), x, y);
                    if (squared < cell(x, y).squared) {
                        cell(x, y) = {squared, cell(nx, ny).x, cell(nx, ny).y};
                        changed = true;
                    }
                }
            }
        }
    }
    Image field(w, h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const float d = std::sqrt(cell(x, y).squared) / radius;
            const float share = 0.5f + 0.5f * (image.at(x, y) >= 128 ? d : -d);
            field.at(x, y) = static_cast<unsigned char>(std::clamp(share, 0.0f, 1.0f) * 255.0f);
        }
    }
    return field;
}

Image plainCoverageField(const Image& image)
{
    Image field(image.width, image.height);
    for (int y = 1; y < image.height - 1; ++y) {
        for (int x = 1; x < image.width - 1; ++x) {
            float gx = 0.0f;
            float gy = 0.0f;
            field.at(x, y) = image.at(x, y);
            if (mayHoldEdge(image, x, y)) {
                const float distance = edgeDistance(image, x, y, 0.0001f, 1.4142137f, gx, gy);
                field.at(x, y) =
                    static_cast<unsigned char>(std::clamp(0.5f - 0.7071067f * distance, 0.0f, 1.0f) * 255.0f);
            }
        }
    }
    return field;
}

// One pixel by searching whole squares; the extremes only count pixels that found one.
bool plainNearest(const Image& image, int x, int y, int radius, float& distance)
{
    const bool inside = image.at(x, y) != 0;
    for (int k = 1; k <= radius; ++k) {
        const int left = std::max(x - k, 0);
        const int top = std::max(y - k, 0);
        for (int row = top; row <= std::min(y + k, image.height - 1); ++row) {
            for (int column = left; column <= std::min(x + k, image.width - 1); ++column) {
                if ((image.at(column, row) != 0) != inside) {
                    const float corner = float((x - left) * (x - left) + (y - top) * (y - top));
                    const float root = std::sqrt(std::min(2.0f * float(k) * float(k), corner));
                    distance = inside ? -root : root;
                    return true;
                }
            }
        }
    }
    const float farthest = std::sqrt(2.0f * float(radius) * float(radius));
    distance = inside ? -farthest : farthest;
    return false;
}

Image plainRings(const Image& image, std::string& printed)
{
    std::vector<float> distances;
    float least = 1000.0f;
    float greatest = -1000.0f;
    for (int i = 0; i < image.width * image.height; ++i) {
        float d = 0.0f;
        if (plainNearest(image, i % image.width, i / image.width, 14, d)) {
            least = d < least ? d : least;
            greatest = d > greatest ? d : greatest;
        }
        distances.push_back(d);
    }
    Image field(image.width, image.height);
    for (std::size_t i = 0; i < distances.size(); ++i) {
        const float t = std::clamp((distances[i] - least) / (greatest - least), 0.0f, 1.0f);
        field.pixels[i] = static_cast<unsigned char>(255.0f - 255.0f * t);
    }
    char text[100];
    std::snprintf(text, sizeof(text), "Font SDF minDist %f maxDist %f\n", double(least), double(greatest));
    printed = text;
    return field;
}

Image randomImage(unsigned int seed, int width, int height, int stride, int emptyShare)
{
    std::mt19937 random(seed);
    Image image(width, height, stride);
    for (unsigned char& pixel : image.pixels) {
        const auto kind = static_cast<int>(random() % 100);
        pixel = static_cast<unsigned char>(kind < emptyShare ? 0 : kind % 3 == 0 ? 255 : random() % 256);
    }
    return image;
}

Image glyphImage()
{
    Image image(512, 256);
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    EXPECT_EQ(FT_New_Face(library, Tavik::Support::sansFontPath(), 0, &face), 0) << "the sans-serif font";
    EXPECT_EQ(FT_Set_Pixel_Sizes(face, 0, 50), 0);
    const std::string text = "AgQ&@%$8ij\xC4\xDF";
    for (std::size_t i = 0; i < text.size(); ++i) {
        EXPECT_EQ(FT_Load_Char(face, static_cast<unsigned char>(text[i]), FT_LOAD_RENDER), 0);
        const FT_Bitmap& bitmap = face->glyph->bitmap;
        for (unsigned int y = 0; y < bitmap.rows; ++y) {
            for (unsigned int x = 0; x < bitmap.width; ++x) {
                image.at(int(10 + i % 6 * 80 + x), int(10 + i / 6 * 100 + y)) =
                    bitmap.buffer[y * static_cast<unsigned int>(bitmap.pitch) + x];
            }
        }
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return image;
}

::testing::AssertionResult sameBytes(const Image& a, const Image& b)
{
    for (int y = 0; y < b.height; ++y) {
        for (int x = 0; x < b.width; ++x) {
            if (a.at(x, y) != b.at(x, y)) {
                return ::testing::AssertionFailure()
                       << "at (" << x << ", " << y << ") " << int(a.at(x, y)) << " and not " << int(b.at(x, y));
            }
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace

TEST(DistanceField, EqualsThePlainFormByteByByte)
{
    struct Case
    {
        const char* name;
        Image image;
        float radius;
    };
    Image uniform(40, 40);
    std::fill(uniform.pixels.begin(), uniform.pixels.end(), static_cast<unsigned char>(255));
    std::vector<Case> cases = {{"glyphs", glyphImage(), 8.0f},
                               {"glyphs, wide", glyphImage(), 30.0f},
                               {"glyphs, the way round", glyphImage(), 5.0f},
                               {"full", uniform, 8.0f},
                               {"empty", Image(40, 40), 8.0f},
                               {"too low", randomImage(1, 40, 2, 0, 50), 8.0f},
                               {"too narrow", randomImage(1, 2, 40, 0, 50), 8.0f},
                               {"one interior pixel", randomImage(2, 3, 3, 3, 0), 2.0f},
                               {"no radius", randomImage(3, 50, 20, 0, 90), 1e-30f}};
    // Dense, and so sparse that edge points travel far; widths around the words of the change masks.
    for (unsigned int i = 0; i < 40; ++i) {
        const int empty[] = {0, 60, 97, 100};
        const float radii[] = {8.0f, 25.0f, 1.0f, 3.5f};
        const int width = 3 + int(i * 37 % 131);
        cases.push_back({"random", randomImage(i, width, 60, width + int(i % 3), empty[i % 4]), radii[i / 4 % 4]});
    }
    for (Case& c : cases) {
        const Image expected = plainField(c.image, c.radius);
        Image out(c.image.width, c.image.height, c.image.width + 5);
        EXPECT_EQ(sdfBuildDistanceField(out.pixels.data(), out.stride, c.radius, c.image.pixels.data(), c.image.width,
                                        c.image.height, c.image.stride),
                  1);
        EXPECT_TRUE(sameBytes(out, expected)) << c.name << ", width " << c.image.width;

        Image coverage(c.image.width, c.image.height);
        sdfCoverageToDistanceField(coverage.pixels.data(), coverage.stride, c.image.pixels.data(), c.image.width,
                                   c.image.height, c.image.stride);
        EXPECT_TRUE(sameBytes(coverage, plainCoverageField(c.image))) << c.name << ", coverage alone";

        // In place, with a work area that has been used.
        std::vector<unsigned char> work(index(0, c.image.height, c.image.width) * 12, 0x5A);
        sdfBuildDistanceFieldNoAlloc(c.image.pixels.data(), c.image.stride, c.radius, c.image.pixels.data(),
                                     c.image.width, c.image.height, c.image.stride, work.data());
        EXPECT_TRUE(sameBytes(c.image, expected)) << c.name << ", in place";
    }
}

TEST(DistanceField, MeasuresTheDistanceToAnEdge)
{
    // Columns 0 to 19 are full, column 20 is covered by a quarter: the edge is 20.25 pixels from the left, 19.75 from
    // the first pixel's centre.
    Image image(40, 9);
    for (int y = 0; y < image.height; ++y) {
        std::fill_n(&image.at(0, y), 20, static_cast<unsigned char>(255));
        image.at(20, y) = 64;
    }
    Image out(40, 9);
    sdfBuildDistanceField(out.pixels.data(), 40, 8.0f, image.pixels.data(), 40, 9, 40);
    for (int x = 12; x < 28; ++x) {
        const double expected = 127.5 * (1.0 + (19.75 - x) / 8.0);
        EXPECT_NEAR(out.at(x, 4), expected, 1.0) << x;
    }
    EXPECT_EQ(out.at(11, 4), 255);
    EXPECT_EQ(out.at(28, 4), 0);
}

TEST(DistanceField, NothingIsDoneWithoutPixels)
{
    unsigned char out = 7;
    const unsigned char in = 200;
    EXPECT_EQ(sdfBuildDistanceField(&out, 1, 8.0f, &in, 0, 5, 1), 1);
    EXPECT_EQ(sdfBuildDistanceField(&out, 1, 8.0f, &in, 1, -5, 1), 1);
    sdfCoverageToDistanceField(&out, 1, &in, -1, -1, 1);
    EXPECT_EQ(out, 7);
    for (const float radius : {0.0f, -8.0f, std::nanf("")}) {
        EXPECT_EQ(sdfBuildDistanceField(&out, 1, radius, &in, 1, 1, 1), 1);
    }
    EXPECT_EQ(sdfBuildDistanceField(&out, 1, 8.0f, &in, 2000000000, 2000000000, 0), 0) << "no memory for this";
}

TEST(RingDistance, EqualsTheBruteForceByteByByte)
{
    std::vector<Image> images = {glyphImage(), Image(30, 20), randomImage(5, 40, 1, 0, 70),
                                 randomImage(6, 1, 40, 0, 70), randomImage(7, 1, 1, 0, 0)};
    for (unsigned int i = 0; i < 30; ++i) {
        const int empty[] = {0, 50, 95, 100}; // 100: a single pixel inside, below
        images.push_back(randomImage(i, 3 + int(i * 7), 40, 0, empty[i % 4]));
        images.back().at(int(i % 3), int(i % 7)) = 255;
    }
    Tavik::OpenGL::TextureFontSdf font;
    for (Image& image : images) {
        SCOPED_TRACE(image.width);
        for (const int radius : {0, 1, 14, 300}) {
            for (int i = 0; i < image.width * image.height; i += 1 + image.width * image.height / 300) {
                float expected = 0.0f;
                float found = 0.0f;
                const auto x = static_cast<unsigned int>(i % image.width);
                const auto y = static_cast<unsigned int>(i / image.width);
                ASSERT_EQ(font.getNearest(image.pixels.data(), static_cast<unsigned int>(image.width),
                                          static_cast<unsigned int>(image.height), x, y,
                                          static_cast<unsigned int>(radius), found),
                          plainNearest(image, int(x), int(y), radius, expected));
                ASSERT_EQ(found, expected) << x << ", " << y << ", radius " << radius;
            }
        }
        std::string printed;
        const Image expected = plainRings(image, printed);
        testing::internal::CaptureStdout();
        font.calcSdf(image.pixels.data(), static_cast<unsigned int>(image.width),
                     static_cast<unsigned int>(image.height));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), printed);
        ASSERT_TRUE(sameBytes(image, expected));
    }
    float distance = 1.0f;
    unsigned char pixel = 3;
    font.calcSdf(nullptr, 3, 3);
    font.calcSdf(&pixel, 0, 7);
    EXPECT_EQ(pixel, 3);
    EXPECT_FALSE(font.getNearest(&pixel, 1, 1, 1, 0, 0xFFFFFFFF, distance));
    EXPECT_FALSE(font.getNearest(&pixel, 1, 1, 0, 0, 0xFFFFFFFF, distance)); // returns at once
    EXPECT_LT(distance, -6e9f);
}
