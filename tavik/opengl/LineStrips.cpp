#include <tavik/opengl/LineStrips.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::LineStrips::render(int)";

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
    GlHandler::checkError("LineStrips", Where); // setting uniforms would drop the errors of the upload
    const bool oneColor = !mUseMultiColor || !mGeometry.hasColors();
    beginLines(oneColor ? PolylineProgram : PolylineColorProgram, mStyle, oneColor);
    mBuffers.bind();
    drawStrips(GL_LINE_STRIP_ADJACENCY, StripSeparator, count, mGeometry.indices().size());
    GlHandler::checkError("LineStrips", Where);
    endLines();
}

} // namespace Tavik::OpenGL
