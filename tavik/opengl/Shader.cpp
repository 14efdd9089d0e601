#include <tavik/opengl/Shader.h>

#include <tavik/opengl/InfoLog.h>
#include <tavik/opengl/OpenGlLoader.h>

#include <GL/glew.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>

namespace Tavik::OpenGL {

namespace {

constexpr GLenum Kinds[] = {GL_VERTEX_SHADER, GL_FRAGMENT_SHADER, GL_GEOMETRY_SHADER};

// Keeps a device file that never ends from filling the memory.
constexpr std::size_t LargestSource = 16U << 20U;

} // namespace

Shader::Shader(TShaderType type) : mType(type)
{
    if (mType < std::size(Kinds) && isOpenGlLoaded()) {
        mHandle = glCreateShader(Kinds[mType]);
    }
}

bool Shader::loadSource(const std::string& fileName)
{
    std::ifstream file(fileName);
    if (!file) {
        return false;
    }
    std::string text;
    char block[4096];
    while (file.read(block, sizeof(block)) || file.gcount() > 0) {
        text.append(block, static_cast<std::size_t>(file.gcount()));
        if (text.size() > LargestSource) {
            return false;
        }
    }
    if (!text.empty() && text.back() != '\n') {
        text += '\n';
    }
    setSource(text.c_str());
    return true;
}

bool Shader::loadSource(const unsigned char* text, unsigned int length)
{
    if (text == nullptr && length > 0) {
        return false;
    }
    const std::unique_ptr<char[]> source(new (std::nothrow) char[static_cast<std::size_t>(length) + 1]);
    if (!source) {
        return false;
    }
    std::copy_n(text, length, source.get());
    source[length] = '\0';
    setSource(source.get());
    return true;
}

bool Shader::compile()
{
    if (mHandle == 0) {
        return false;
    }
    glCompileShader(mHandle);
    return checkError();
}

bool Shader::checkError() const
{
    if (mHandle == 0) {
        return false;
    }
    GLint compiled = GL_FALSE;
    glGetShaderiv(mHandle, GL_COMPILE_STATUS, &compiled);
    if (compiled == GL_FALSE) {
        info();
    }
    return compiled != GL_FALSE;
}

void Shader::info() const
{
    if (mHandle == 0) {
        return;
    }
    GLint length = 0;
    glGetShaderiv(mHandle, GL_INFO_LOG_LENGTH, &length);
    printInfoLog(length, [this](GLsizei size, char* log) { glGetShaderInfoLog(mHandle, size, nullptr, log); });
}

void Shader::setSource(const char* text) const
{
    if (mHandle != 0) {
        glShaderSource(mHandle, 1, &text, nullptr);
    }
}

} // namespace Tavik::OpenGL
