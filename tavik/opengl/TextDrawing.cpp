#include <tavik/opengl/TextDrawing.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineDrawing.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

TextDrawing::TextDrawing(std::uint32_t program, unsigned int atlas, Math::Vector3<float> offset)
{
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    GlHandler& gl = GlHandler::instance();
    gl.activateShader(program);
    gl.setFloatVar("offset", offset.x, offset.y, offset.z);
    glGetIntegerv(GL_ACTIVE_TEXTURE, &mActiveTexture);
    glActiveTexture(GL_TEXTURE0); // where the programs' samplers point
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &mBoundTexture);
    glBindTexture(GL_TEXTURE_2D, atlas);
}

TextDrawing::~TextDrawing()
{
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(mBoundTexture));
    glActiveTexture(static_cast<GLenum>(mActiveTexture));
    VertexArray::unbind();
    GlHandler::instance().deactivateShader();
}

void TextDrawing::draw(TextQuads& quads, Math::Vector4<float> color)
{
    GlHandler::instance().setFloatVar("color", color.x, color.y, color.z, color.w);
    quads.bind();
    drawStrips(GL_TRIANGLE_FAN, TextQuads::QuadSeparator, -1, quads.indexCount());
}

} // namespace Tavik::OpenGL
