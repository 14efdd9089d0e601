// Every drawable and every text renderer, captioned: into one picture, or each into a file of its own.
//
//     gallery --screenshot gallery.png
//     gallery --folder DIR

#include <gallery/Colors.h>
#include <gallery/Exhibits.h>

#include <support/Area.h>
#include <support/Fonts.h>
#include <support/Window.h>
#include <tavik/filesystem/Directory.h>
#include <tavik/math/Matrix4.h>
#include <tavik/misc/CmdLine.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace Gallery {

namespace {

using Tavik::Support::Area;
using Tavik::Support::Window;

struct Exhibit
{
    const char* name;
    const char* caption;
    void (*draw)();
};

constexpr std::array<Exhibit, 16> Exhibits = {{
    {"Lines", "widths and stipples", drawLines},
    {"LineStrips", "routes with turns", drawLineStrips},
    {"LineStripsSimple", "hairlines", drawLineStripsSimple},
    {"LineLoops", "closed outlines", drawLineLoops},
    {"TriangleStrip", "colours and patterns", drawTriangleStrip},
    {"Polygon", "concave, crossing, with a hole", drawPolygon},
    {"Circle", "discs", drawCircle},
    {"MatrixStack", "one tick, one needle", drawMatrixStack},
    {"Texture", "tinted and wrapped", drawTexture},
    {"TextureTerrain", "relief to map", drawTextureTerrain},
    {"Video", "streamed frames", drawVideo},
    {"DistanceField", "coverage and its fields", drawDistanceField},
    {"VectorFont", "strokes", drawVectorFont},
    {"VectorFontSymbols", "codes 0 to 31", drawVectorFontSymbols},
    {"TextureFont", "glyphs from coverage", drawTextureFont},
    {"TextureFontSdf", "every size from one atlas", drawTextureFontSdf},
}};

constexpr int Columns = 4;
constexpr int Rows = static_cast<int>(Exhibits.size()) / Columns;
constexpr int CaptionHeight = 26;
constexpr int Gap = 4;
constexpr int CellWidth = ExhibitWidth + Gap;
constexpr int CellHeight = ExhibitHeight + CaptionHeight + Gap;

int fail(const std::string& what)
{
    std::fprintf(stderr, "gallery: %s\n", what.c_str());
    return EXIT_FAILURE;
}

/// The exhibit above its caption, in a cell whose lower left corner is given in pixels.
void drawCell(const Exhibit& exhibit, int x, int y)
{
    const Area caption = {x, y, ExhibitWidth, CaptionHeight};
    caption.fill({0.12f, 0.15f, 0.19f, 1.0f});
    caption.activate();
    Tavik::OpenGL::TextureFontSdf font;
    font.load(Tavik::Support::sansFontPath(), 15);
    Tavik::Math::Matrix4<float> place;
    place[12] = 10.0f;
    place[13] = 8.0f;
    font.setColor(White);
    font.addText(std::string(exhibit.name) + " - " + exhibit.caption, place, Tavik::OpenGL::TextureFontSdf::BottomLeft);
    font.render();

    const Area area = {x, y + CaptionHeight, ExhibitWidth, ExhibitHeight};
    area.fill(Background);
    area.activate();
    exhibit.draw();
}

/// What stands in the window, as a file; all exhibits must have drawn without error.
int finishPicture(Window& window, const std::string& path)
{
    const unsigned int error = Window::takeGlError();
    if (error != 0) {
        return fail("OpenGL reports error " + std::to_string(error));
    }
    if (!window.readPicture().writePng(path)) {
        return fail("cannot write the picture '" + path + "'");
    }
    window.swap();
    std::printf("wrote %s\n", path.c_str());
    return EXIT_SUCCESS;
}

int drawOnePicture(const std::string& path)
{
    Window window("Gallery", Columns * CellWidth + Gap, Rows * CellHeight + Gap, Window::Visibility::Hidden);
    if (!window.isOpen()) {
        return fail(window.error());
    }
    for (int i = 0; i < static_cast<int>(Exhibits.size()); ++i) {
        drawCell(Exhibits[static_cast<std::size_t>(i)], Gap + i % Columns * CellWidth,
                 Gap + (Rows - 1 - i / Columns) * CellHeight);
    }
    return finishPicture(window, path);
}

int drawEach(const std::string& folder)
{
    Window window("Gallery", ExhibitWidth, ExhibitHeight + CaptionHeight, Window::Visibility::Hidden);
    if (!window.isOpen()) {
        return fail(window.error());
    }
    for (const Exhibit& exhibit : Exhibits) {
        const std::filesystem::path file = std::filesystem::path(folder) / (std::string(exhibit.name) + ".png");
        drawCell(exhibit, 0, 0);
        if (finishPicture(window, file.string()) != EXIT_SUCCESS) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}

} // namespace

} // namespace Gallery

int main(int argc, char** argv)
{
    auto& options = Tavik::Misc::CmdLine::instance();
    options.addParameter("--screenshot", "PNG file for all exhibits in one picture", "gallery.png");
    options.addParameter("--folder", "folder for a PNG file of each exhibit, instead of the one picture", "");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string folder;
    if (options.getParameter("--folder", folder) && !folder.empty()) {
        Tavik::FileSystem::Directory::createDirectoryRecursive(folder);
        return Gallery::drawEach(folder);
    }
    std::string picture;
    options.getParameter("--screenshot", picture);
    return Gallery::drawOnePicture(picture);
}
