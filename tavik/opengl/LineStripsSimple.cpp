#include <tavik/opengl/LineStripsSimple.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::LineStripsSimple::render(int)";

} // namespace

void LineStripsSimple::init()
{
    mBuffers.upload(mGeometry);
}

void LineStripsSimple::setData()
{
    mGeometry.dropStrayIndices();
    mBuffers.upload(mGeometry);
    mGeometry.setUploaded();
}

void LineStripsSimple::render(int count)
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
    GlHandler::checkError("LineStripsSimple", Where); // setting uniforms would drop the errors of the upload
    const bool oneColor = !mUseMultiColor || !mGeometry.hasColors();
    beginLines(oneColor ? OneColorProgram : VertexColorProgram, mStyle, oneColor);
    mBuffers.bind();
    drawStrips(GL_LINE_STRIP, StripSeparator, count, mGeometry.indices().size());
    GlHandler::checkError("LineStripsSimple", Where);
    endLines();
}

} // namespace Tavik::OpenGL
