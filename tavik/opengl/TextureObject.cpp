#include <tavik/opengl/TextureObject.h>

#include <GL/glew.h>

namespace Tavik::OpenGL {

void TextureObject::take(unsigned int name)
{
    if (mName != 0 && mName != name) {
        glDeleteTextures(1, &mName);
    }
    mName = name;
}

} // namespace Tavik::OpenGL
