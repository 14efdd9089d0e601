#include <tavik/opengl/LineStripsSimple.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

constexpr LineKind Kind = {"LineStripsSimple", "void Tavik::OpenGL::LineStripsSimple::render(int)", GL_LINE_STRIP,
                           LineStripsSimple::StripSeparator};

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
    const bool oneColor = !mUseMultiColor || !mGeometry.hasColors();
    drawLines(Kind, oneColor ? OneColorProgram : VertexColorProgram, mStyle, oneColor, mBuffers, count,
              mGeometry.indices().size());
}

} // namespace Tavik::OpenGL
