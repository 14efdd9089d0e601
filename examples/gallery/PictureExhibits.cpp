#include <gallery/Colors.h>
#include <gallery/Exhibits.h>

#include <support/Picture.h>
#include <tavik/opengl/DistanceField.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/TerrainTexels.h>
#include <tavik/opengl/Texture.h>
#include <tavik/opengl/TextureFontSdf.h>
#include <tavik/opengl/TextureTerrain.h>
#include <tavik/opengl/Video.h>

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace Gallery {

namespace {

namespace GL = Tavik::OpenGL;
using Tavik::Math::Vector3;

constexpr double Turn = 6.283185307179586; // radians

std::uint8_t toByte(double value)
{
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 1.0) * 255.0);
}

/// A chequered ball in front of the sky, a picture that shows which way is up.
Tavik::Support::Picture ball(int size)
{
    Tavik::Support::Picture picture(size, size);
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            const double x = 2.0 * (column + 0.5) / size - 1.0;
            const double y = 1.0 - 2.0 * (row + 0.5) / size;
            const double reach = x * x + y * y;
            if (reach > 0.81) {
                const double sky = 0.5 + 0.5 * y;
                picture.setPixel(column, row, {toByte(0.1), toByte(0.15 + 0.3 * sky), toByte(0.3 + 0.5 * sky), 255});
                continue;
            }
            const double z = std::sqrt(0.81 - reach);
            const bool light = (static_cast<int>(std::floor(6.0 + 5.0 * std::asin(x / 0.9))) +
                                static_cast<int>(std::floor(6.0 + 5.0 * std::asin(y / 0.9)))) %
                                   2 ==
                               0;
            const double shade = std::max(0.25, (-0.5 * x + 0.6 * y + 0.62 * z) / 0.9);
            picture.setPixel(column, row,
                             {toByte(shade * (light ? 0.95 : 0.85)), toByte(shade * (light ? 0.95 : 0.35)),
                              toByte(shade * (light ? 0.9 : 0.15)), 255});
        }
    }
    return picture;
}

/// Smooth hills above a bay, by made-up waves.
class Hills
{
public:
    /// Metres at a place in pixels.
    double height(double x, double y) const
    {
        double sum = -900.0 + 9.0 * y;
        double amplitude = 700.0;
        double length = 170.0;
        for (int octave = 0; octave < 6; ++octave) {
            const double turn = 1.1 * octave;
            const double along = x * std::cos(turn) + y * std::sin(turn);
            const double across = y * std::cos(turn) - x * std::sin(turn);
            const double wave = std::sin(Turn * along / length + 2.0 * std::sin(Turn * across / (1.7 * length)));
            sum += amplitude * (1.0 - 2.0 * std::abs(wave));
            amplitude *= 0.5;
            length *= 0.55;
        }
        return std::max(sum, 0.0);
    }
};

/// A map of coloured fields and white roads.
Tavik::Support::Picture fieldsAndRoads(int width, int height)
{
    Tavik::Support::Picture picture(width, height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const double x = column + 12.0 * std::sin(row / 25.0);
            const double y = row + 9.0 * std::sin(column / 31.0);
            const double tone = 0.5 + 0.5 * std::sin(std::floor(x / 34.0) * 12.9 + std::floor(y / 26.0) * 78.2);
            const bool road = std::fmod(x + 340.0, 68.0) < 3.0 || std::fmod(y + 260.0, 78.0) < 3.0;
            picture.setPixel(column, row,
                             road
                                 ? Tavik::Support::Picture::Pixel{250, 250, 245, 255}
                                 : Tavik::Support::Picture::Pixel{toByte(0.55 + 0.3 * tone), toByte(0.72 + 0.15 * tone),
                                                                  toByte(0.45 + 0.1 * tone), 255});
        }
    }
    return picture;
}

/// Sky, ground with a runway, and a horizon at a bank angle; rows from top to bottom, three bytes a pixel.
/// @param bankRadians  right wing down positive
std::vector<std::uint8_t> cameraFrame(unsigned int width, unsigned int height, double bankRadians)
{
    std::vector<std::uint8_t> frame;
    for (unsigned int row = 0; row < height; ++row) {
        for (unsigned int column = 0; column < width; ++column) {
            const double right = column + 0.5 - 0.5 * width;
            const double up = 0.5 * height - row - 0.5;
            const double x = right * std::cos(bankRadians) - up * std::sin(bankRadians);
            const double y = right * std::sin(bankRadians) + up * std::cos(bankRadians) - 0.1 * height;
            const double depth = -y / height;
            Color color = depth < 0.0 ? mixed(White, Blue, static_cast<float>(std::min(1.0, -2.2 * depth)))
                                      : mixed(Color(0.45f, 0.5f, 0.4f, 1.0f), Color(0.2f, 0.35f, 0.15f, 1.0f),
                                              static_cast<float>(std::min(1.0, 2.0 * depth)));
            const bool onRunway = depth > 0.03 && std::abs(x) < 0.32 * depth * width;
            const bool onLine = onRunway && std::abs(x) < 0.02 * depth * width && std::fmod(3.0 / depth, 2.0) < 1.2;
            if (onRunway) {
                color = onLine ? White : Color(0.25f, 0.26f, 0.28f, 1.0f);
            }
            for (const float part : {color.x, color.y, color.z}) {
                frame.push_back(toByte(part));
            }
        }
    }
    return frame;
}

/// @param bytes  size × size, rows from top to bottom
void drawGrey(const std::vector<std::uint8_t>& bytes, int size, Point centre)
{
    Tavik::Support::Picture picture(size, size);
    for (int i = 0; i < size * size; ++i) {
        const std::uint8_t grey = bytes[static_cast<std::size_t>(i)];
        picture.setPixel(i % size, i / size, {grey, grey, grey, 255});
    }
    GL::Texture texture;
    texture.setWrapMode(GL_CLAMP_TO_EDGE);
    texture.load(picture.data(), static_cast<unsigned int>(size), static_cast<unsigned int>(size), GL_RGBA);
    GL::MatrixPush();
    GL::MatrixTranslate(centre.x, centre.y, 0.0);
    texture.render();
    GL::MatrixPop();
}

} // namespace

/// A picture as it is, tinted, half transparent, and wrapped around a curved strip.
void drawTexture()
{
    const Tavik::Support::Picture picture = ball(128);
    GL::Texture texture;
    texture.setUseMipMaps(true);
    texture.setWrapMode(GL_REPEAT);
    texture.load(picture.data(), 128, 128, GL_RGBA);
    const Color halfTransparent(1.0f, 1.0f, 1.0f, 0.4f);
    double x = 75.0;
    for (const Color color : {Color(1.0f, 1.0f, 1.0f, 1.0f), mixed(Green, White, 0.2f), halfTransparent}) {
        texture.setColor(color);
        GL::MatrixPush();
        GL::MatrixTranslate(x, 215.0, 0.0);
        texture.render();
        GL::MatrixPop();
        x += 126.0;
    }

    texture.setColor({1.0f, 1.0f, 1.0f, 1.0f});
    texture.clearVertex();
    for (int i = 0; i <= 60; ++i) {
        const float part = static_cast<float>(i) / 60.0f;
        const float bend = 25.0f * std::sin(static_cast<float>(Turn) * part);
        texture.addVertex(Vector3<float>(20.0f + 360.0f * part, 30.0f + bend, 0.0f), Point(4.0f * part, 1.0f));
        texture.addVertex(Vector3<float>(20.0f + 360.0f * part, 110.0f + bend, 0.0f), Point(4.0f * part, 0.0f));
    }
    texture.render();
}

/// Relief alone, relief and map picture mixed, and the picture of colours without shading.
void drawTextureTerrain()
{
    constexpr unsigned int Columns = 400;
    constexpr unsigned int Rows = 300;
    const Hills hills;
    std::vector<Vector3<float>> normals;
    std::vector<float> heights;
    for (unsigned int row = 0; row < Rows; ++row) {
        for (unsigned int column = 0; column < Columns; ++column) {
            const double x = column;
            const double y = Rows - 1.0 - row;
            constexpr double PixelMetres = 60.0;
            const double slopeX = (hills.height(x + 0.5, y) - hills.height(x - 0.5, y)) / PixelMetres;
            const double slopeY = (hills.height(x, y + 0.5) - hills.height(x, y - 0.5)) / PixelMetres;
            const double length = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1.0);
            normals.emplace_back(static_cast<float>(-slopeX / length), static_cast<float>(-slopeY / length),
                                 static_cast<float>(1.0 / length));
            heights.push_back(static_cast<float>(hills.height(x, y)));
        }
    }
    const Tavik::Support::Picture map = fieldsAndRoads(Columns, Rows);
    GL::TextureTerrain terrain;
    terrain.load(map.data(), Columns, Rows, GL_RGBA);
    terrain.loadNormals(GL::packTerrain(normals, heights).data(), Columns, Rows, GL_RGBA);
    constexpr std::array<double, 3> MapParts = {0.0, 0.5, 1.0};
    for (std::size_t i = 0; i < MapParts.size(); ++i) {
        const auto west = static_cast<float>(i) / 3.0f;
        const auto east = static_cast<float>(i + 1) / 3.0f;
        terrain.clearVertex();
        for (const float u : {west, east}) {
            terrain.addVertex(Vector3<float>(u * Columns, 0.0f, 0.0f), Point(u, 1.0f));
            terrain.addVertex(Vector3<float>(u * Columns, Rows, 0.0f), Point(u, 0.0f));
        }
        terrain.setTerrainOsm(MapParts[i]);
        terrain.render();
    }
}

/// Frames of a synthetic camera, of an odd size.
void drawVideo()
{
    constexpr unsigned int Width = 175;
    constexpr unsigned int Height = 115;
    GL::Video video;
    video.init(Width, Height);
    int frame = 0;
    for (const Point& centre :
         std::vector<Point>{{102.0f, 225.0f}, {298.0f, 225.0f}, {102.0f, 85.0f}, {298.0f, 85.0f}}) {
        video.putFrame(cameraFrame(Width, Height, 0.12 * frame - 0.2).data());
        ++frame;
        GL::MatrixPush();
        GL::MatrixTranslate(centre.x, centre.y, 0.0);
        video.render();
        GL::MatrixPop();
    }
}

/// A shape's coverage, the distance field that keeps it sharp at any scale, and the field by ring search.
void drawDistanceField()
{
    constexpr int Size = 124;
    std::vector<std::uint8_t> coverage;
    for (int row = 0; row < Size; ++row) {
        for (int column = 0; column < Size; ++column) {
            const double x = column + 0.5 - 0.5 * Size;
            const double y = row + 0.5 - 0.5 * Size;
            const double ring = 12.0 - std::abs(std::sqrt(x * x + y * y) - 38.0);
            const double bar =
                8.0 - std::max(std::abs(x + y) / std::sqrt(2.0), std::abs(x - y) / std::sqrt(2.0) - 46.0);
            coverage.push_back(toByte(0.5 + std::max(ring, bar)));
        }
    }
    std::vector<std::uint8_t> field(coverage.size());
    sdfBuildDistanceField(field.data(), Size, 12.0f, coverage.data(), Size, Size, Size);
    std::vector<std::uint8_t> rings = coverage;
    GL::TextureFontSdf font;
    font.calcSdf(rings.data(), Size, Size);

    drawGrey(coverage, Size, {69.0f, 150.0f});
    drawGrey(field, Size, {200.0f, 150.0f});
    drawGrey(rings, Size, {331.0f, 150.0f});
}

} // namespace Gallery
