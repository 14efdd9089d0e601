#include <tavik/opengl/TextureDrawing.h>

#include <tavik/opengl/FillDrawing.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/glew.h>

#include <algorithm>
#include <limits>

namespace Tavik::OpenGL {

TextureUnits::TextureUnits()
{
    glGetIntegerv(GL_ACTIVE_TEXTURE, &mPreviousUnit);
}

TextureUnits::~TextureUnits()
{
    while (mCount > 0) {
        --mCount;
        glActiveTexture(GL_TEXTURE0 + mCount);
        glBindTexture(mTargets[mCount], 0);
    }
    glActiveTexture(static_cast<GLenum>(mPreviousUnit));
}

void TextureUnits::bindNext(unsigned int target, unsigned int name)
{
    glActiveTexture(GL_TEXTURE0 + mCount);
    glBindTexture(target, name);
    mTargets[mCount++] = target;
}

void beginTextures(std::uint32_t program, Math::Vector4<float> color)
{
    GlHandler& gl = GlHandler::instance();
    gl.activateShader(program);
    gl.setFloatVar("color", color.x, color.y, color.z, color.w);
    enableBlending();
}

void drawStrip(std::size_t vertexCount)
{
    MatrixActivate();
    const auto count = std::min<std::size_t>(vertexCount, std::numeric_limits<GLsizei>::max());
    glDrawArrays(GL_TRIANGLE_STRIP, 0, static_cast<GLsizei>(count));
}

} // namespace Tavik::OpenGL
