#include <tavik/opengl/LineStrips.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

constexpr LineKind Kind = {"LineStrips", "void Tavik::OpenGL::LineStrips::render(int)", GL_LINE_STRIP_ADJACENCY,
                           LineStrips::StripSeparator};

} // namespace

void LineStrips::init()
{
    mBuffers.upload(mGeometry);
}

void LineStrips::setData()
{
    mGeometry.calcPositions();
    mGeometry.expandIndices();
    mBuffers.upload(mGeometry);
    mGeometry.setUploaded();
}

void LineStrips::calcPositions()
{
    mGeometry.calcPositions();
    mBuffers.uploadPositions(mGeometry);
}

void LineStrips::render(int count)
{
    GlHandler::clearError();
    if (mGeometry.indices().size() < 2 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mGeometry.isDirty()) {
        setData();
    } else if (!mBuffers.exist()) {
        init();
    }
    const bool oneColor = !mUseMultiColor || !mGeometry.hasColors();
    drawLines(Kind, oneColor ? PolylineProgram : PolylineColorProgram, mStyle, oneColor, mBuffers, count,
              mGeometry.indices().size());
}

} // namespace Tavik::OpenGL
