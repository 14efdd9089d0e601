#include <moving_map/Area.h>

#include <moving_map/MapView.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/gl.h>

namespace MovingMap {

void Area::activate() const
{
    glViewport(x, y, width, height);
    Tavik::OpenGL::GlHandler::instance().setViewPort({static_cast<float>(width), static_cast<float>(height)});
    Tavik::OpenGL::MatrixSet(pixelMatrix(width, height));
}

void Area::fill(Color color) const
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    glClearColor(color.x, color.y, color.z, color.w);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
}

} // namespace MovingMap
