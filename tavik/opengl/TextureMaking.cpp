#include <tavik/opengl/TextureMaking.h>

#include <tavik/opengl/GlHandler.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

namespace {

struct UnpackSetting
{
    GLenum name;
    GLint value;
};

constexpr UnpackSetting UnpackSettings[] = {{GL_UNPACK_ALIGNMENT, 1},
                                            {GL_UNPACK_ROW_LENGTH, 0},
                                            {GL_UNPACK_SKIP_ROWS, 0},
                                            {GL_UNPACK_SKIP_PIXELS, 0},
                                            {GL_UNPACK_SWAP_BYTES, GL_FALSE}};

void upload(GLenum target, const TextureImage& image)
{
    const PixelUnpacking unpacking;
    const auto width = static_cast<GLsizei>(image.width);
    if (target == GL_TEXTURE_1D) {
        glTexImage1D(target, 0, image.internalFormat, width, 0, image.format, image.type, image.pixels);
    } else {
        glTexImage2D(target, 0, image.internalFormat, width, static_cast<GLsizei>(image.height), 0, image.format,
                     image.type, image.pixels);
    }
}

} // namespace

TextureBinding::TextureBinding(unsigned int target, unsigned int name) : mTarget(target)
{
    glGetIntegerv(target == GL_TEXTURE_1D ? GL_TEXTURE_BINDING_1D : GL_TEXTURE_BINDING_2D, &mPrevious);
    glBindTexture(target, name);
}

TextureBinding::~TextureBinding()
{
    glBindTexture(mTarget, static_cast<GLuint>(mPrevious));
}

PixelUnpacking::PixelUnpacking()
{
    static_assert(std::size(UnpackSettings) == SettingCount);
    for (std::size_t i = 0; i < SettingCount; ++i) {
        glGetIntegerv(UnpackSettings[i].name, &mPrevious[i]);
        glPixelStorei(UnpackSettings[i].name, UnpackSettings[i].value);
    }
    glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &mPreviousBuffer);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
}

PixelUnpacking::~PixelUnpacking()
{
    for (std::size_t i = 0; i < SettingCount; ++i) {
        glPixelStorei(UnpackSettings[i].name, mPrevious[i]);
    }
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(mPreviousBuffer));
}

unsigned int makeTexture(unsigned int target, const TextureImage& image, TextureSampling sampling, bool hasMipMaps)
{
    if (!GlHandler::instance().isLoaded() || !isTextureSize(image.width, image.height)) {
        return 0;
    }
    GlHandler::clearError();
    GLuint name = 0;
    glGenTextures(1, &name);
    {
        const TextureBinding binding(target, name);
        glTexParameteri(target, GL_TEXTURE_MIN_FILTER, hasMipMaps ? GL_LINEAR_MIPMAP_LINEAR : sampling.filter);
        glTexParameteri(target, GL_TEXTURE_MAG_FILTER, sampling.filter);
        glTexParameteri(target, GL_TEXTURE_WRAP_S, sampling.wrapMode);
        glTexParameteri(target, GL_TEXTURE_WRAP_T, sampling.wrapMode);
        upload(target, image);
        if (hasMipMaps) {
            // The core profile makes no levels by itself, and a texture that lacks them is black.
            glGenerateMipmap(target);
        }
    }
    if (glGetError() != GL_NO_ERROR) {
        GlHandler::clearError();
        glDeleteTextures(1, &name);
        return 0;
    }
    return name;
}

bool isTextureSize(unsigned int width, unsigned int height)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    const auto limit = static_cast<unsigned int>(largest);
    return width > 0 && height > 0 && width <= limit && height <= limit;
}

} // namespace Tavik::OpenGL
