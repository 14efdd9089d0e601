#include <support/Area.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/gl.h>

namespace Tavik::Support {

void Area::activate() const
{
    glViewport(x, y, width, height);
    OpenGL::GlHandler::instance().setViewPort({static_cast<float>(width), static_cast<float>(height)});
    OpenGL::MatrixLoadIdent();
    OpenGL::MatrixTranslate(-1.0, -1.0, 0.0);
    OpenGL::MatrixScale(2.0 / width, 2.0 / height, 1.0);
}

void Area::fill(Math::Vector4<float> color) const
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    glClearColor(color.x, color.y, color.z, color.w);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
}

} // namespace Tavik::Support
