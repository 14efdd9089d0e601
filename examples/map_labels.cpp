// Three kinds of text on a map: symbols in strokes, labels with outlines, a status line in crisp small letters.

#include <support/Fonts.h>
#include <support/FrameLoop.h>

#include <tavik/misc/CmdLine.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/TextureFont.h>
#include <tavik/opengl/TextureFontSdf.h>
#include <tavik/opengl/VectorFont.h>
#include <tavik/opengl/VectorSymbol.h>

#include <GL/gl.h>

#include <cmath>
#include <cstdlib>

using namespace Tavik;

struct Fix
{
    const char* name;
    OpenGL::VectorSymbol::Code symbol;
    float x; // pixels from the left
    float y; // and from below
};

constexpr Fix Fixes[] = {{"KINNO", OpenGL::VectorSymbol::WaypointFlyBy, 90.0f, 70.0f},
                         {"TUR 113.6", OpenGL::VectorSymbol::VorDme, 250.0f, 210.0f},
                         {"MORGU", OpenGL::VectorSymbol::Intersection, 420.0f, 150.0f},
                         {"LSAM", OpenGL::VectorSymbol::Airport, 560.0f, 260.0f}};

// From a text's anchor to the space of the matrix stack, which is pixels here.
Math::Matrix4<float> at(float x, float y, double clockwiseDegrees = 0.0)
{
    const double angle = clockwiseDegrees * 0.017453292519943295;
    Math::Matrix4<float> place;
    place.translate(x, y, 0.0f);
    place[0] = place[5] = static_cast<float>(std::cos(angle));
    place[4] = static_cast<float>(std::sin(angle));
    place[1] = -place[4];
    return place;
}

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--screenshot", "write a picture and stop", "");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string screenshot;
    options.getParameter("--screenshot", screenshot);
    Support::Window window("Labels", 640, 320, Support::visibilityFor(screenshot));

    OpenGL::LineStrips route;
    route.setLineWidth(4.0f);
    route.setColor({0.9f, 0.3f, 0.8f, 1.0f});
    OpenGL::VectorFont symbols; // in strokes: any size, any turn, no file
    symbols.setColor({0.3f, 0.9f, 1.0f, 1.0f});
    OpenGL::TextureFontSdf labels; // outlines, any size
    labels.load(Support::sansBoldFontPath(), 17);
    labels.setColor({1.0f, 1.0f, 1.0f, 1.0f});
    labels.setOutlineColor({0.05f, 0.07f, 0.1f, 1.0f});
    labels.setOutlineWidth(0.25f);
    OpenGL::TextureFont status; // crisp at the size that it was loaded for
    status.load(Support::sansFontPath(), 12);
    status.setColor({0.8f, 0.85f, 0.8f, 1.0f});

    // Batches: filled when the labels change, drawn in every frame with one call each.
    for (const Fix& fix : Fixes) {
        route.addVertex(Math::Vector2<float>(fix.x, fix.y));
        symbols.addText(std::string(1, fix.symbol), at(fix.x, fix.y), 34.0, OpenGL::VectorFont::MiddleCenter);
        labels.addText(fix.name, at(fix.x, fix.y + 18.0f), OpenGL::TextureFontSdf::BottomCenter);
    }
    // Along the leg from TUR to MORGU, below it.
    labels.addText("UN871  24.6", at(335.0f, 170.0f, 19.4), OpenGL::TextureFontSdf::TopCenter);

    return Support::showFrames(window, screenshot, [&] {
        const Math::Vector2<float> size = OpenGL::GlHandler::instance().viewPort();
        OpenGL::MatrixTranslate(-1.0, -1.0, 0.0); // pixels, from the lower left corner
        OpenGL::MatrixScale(2.0 / size.x, 2.0 / size.y, 1.0);
        route.render(-1);
        glLineWidth(2.0f); // of the strokes
        symbols.render();
        labels.render();
        status.renderFont(8.0, 8.0, "GS 252  TAS 260  TRK 071  FL085", OpenGL::TextureFont::BottomLeft);
    });
}
