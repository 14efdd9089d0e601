#include <tavik/opengl/CoverageTexture.h>

#include <tavik/opengl/TextureMaking.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

unsigned int createCoverageTexture(const unsigned char* pixels, int width, int height)
{
    if (pixels == nullptr || width < 1 || height < 1) {
        return 0;
    }
    const TextureImage image = {
        GL_R8, static_cast<unsigned int>(width), static_cast<unsigned int>(height), GL_RED, GL_UNSIGNED_BYTE, pixels};
    const unsigned int texture = makeTexture(GL_TEXTURE_2D, image, {GL_LINEAR, GL_CLAMP_TO_EDGE});
    if (texture != 0) {
        const TextureBinding binding(GL_TEXTURE_2D, texture);
        const GLint swizzle[] = {GL_ONE, GL_ONE, GL_ONE, GL_RED}; // the core profile has no texture of alpha alone
        glTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_SWIZZLE_RGBA, swizzle);
    }
    return texture;
}

} // namespace Tavik::OpenGL
