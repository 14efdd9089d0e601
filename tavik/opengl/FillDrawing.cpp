#include <tavik/opengl/FillDrawing.h>

#include <tavik/opengl/FillPattern.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/StandardPrograms.h>
#include <tavik/opengl/VertexArray.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

void activateFill(std::uint32_t program, Math::Vector4<float> color, const FillPattern& pattern)
{
    GlHandler& gl = GlHandler::instance();
    gl.activateShader(program);
    if (program != VertexColorProgram) {
        gl.setFloatVar("color", color.x, color.y, color.z, color.w);
    }
    if (program == PatternProgram) {
        pattern.activate();
    }
}

void enableBlending()
{
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
}

void endFill()
{
    VertexArray::unbind();
    GlHandler::instance().deactivateShader();
}

} // namespace Tavik::OpenGL
