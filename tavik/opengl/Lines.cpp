#include <tavik/opengl/Lines.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

constexpr const char* Where = "void Tavik::OpenGL::Lines::render()";

} // namespace

void Lines::render()
{
    GlHandler::clearError();
    if (mVertices.size() < 2 || !GlHandler::instance().isLoaded()) {
        return;
    }
    if (mVertices.needsUpload()) {
        setData();
    }
    GlHandler::checkError("Lines", Where); // setting uniforms would drop the errors of the upload
    beginLines(SegmentProgram, mStyle, true);
    mVertices.bind();
    MatrixActivate();
    mVertices.draw(GL_LINES);
    GlHandler::checkError("Lines", Where);
    endLines();
}

} // namespace Tavik::OpenGL
