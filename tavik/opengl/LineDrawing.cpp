#include <tavik/opengl/LineDrawing.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineBuffers.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/VertexArray.h>

#include <GL/glew.h>

#include <algorithm>
#include <limits>

namespace Tavik::OpenGL {

void beginLines(std::uint32_t program, const LineStyle& style, bool oneColor)
{
    GlHandler& gl = GlHandler::instance();
    gl.activateShader(program);
    gl.setFloatVar("lineWidth", style.width);
    if (oneColor) {
        gl.setFloatVar("color", style.color.x, style.color.y, style.color.z, style.color.w);
    }
    gl.setIntVar("antialias", style.antiAlias ? 1 : 0);
    gl.setIntVar("lineStipple", style.stipple);
    gl.activateViewPort();

    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    if (style.antiAlias) {
        glEnable(GL_BLEND);
        glEnable(GL_LINE_SMOOTH);
    } else {
        glDisable(GL_BLEND);
        glDisable(GL_LINE_SMOOTH);
    }
}

void endLines()
{
    VertexArray::unbind();
    GlHandler::instance().deactivateShader();
    glDisable(GL_LINE_SMOOTH);
}

void drawStrips(unsigned int mode, std::uint32_t separator, int count, std::size_t available)
{
    const auto all = static_cast<int>(std::min<std::size_t>(available, std::numeric_limits<int>::max()));
    glPrimitiveRestartIndex(separator);
    glEnable(GL_PRIMITIVE_RESTART);
    MatrixActivate();
    glDrawElements(mode, count < 0 ? all : std::min(count, all), GL_UNSIGNED_INT, nullptr);
    glDisable(GL_PRIMITIVE_RESTART);
}

void drawLines(const LineKind& kind, std::uint32_t program, const LineStyle& style, bool oneColor, LineBuffers& buffers,
               int count, std::size_t available)
{
    GlHandler::checkError(kind.name, kind.where); // setting uniforms would drop the errors of the upload
    beginLines(program, style, oneColor);
    buffers.bind();
    drawStrips(kind.mode, kind.separator, count, available);
    GlHandler::checkError(kind.name, kind.where);
    endLines();
}

} // namespace Tavik::OpenGL
