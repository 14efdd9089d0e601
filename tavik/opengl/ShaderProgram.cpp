#include <tavik/opengl/ShaderProgram.h>

#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/InfoLog.h>
#include <tavik/opengl/OpenGlLoader.h>
#include <tavik/opengl/Shader.h>

#include <GL/glew.h>

#include <vector>

namespace Tavik::OpenGL {

namespace {

constexpr GLsizei StippleRowCount = 32;

// Makes an OpenGL call between dropping earlier errors and reporting its own.
template <typename Call>
void checkedCall(const char* name, const char* where, Call call)
{
    if (!isOpenGlLoaded()) {
        return;
    }
    GlHandler::clearError();
    call();
    GlHandler::checkError(name, where);
}

} // namespace

// Shared by the copies of a program: what one of them links changes the locations for all.
struct ShaderProgram::UniformLocations
{
    struct Entry
    {
        std::string name;
        int location;
    };

    // A program has a dozen uniforms at most; comparing that many short names beats hashing one.
    std::vector<Entry> entries;

    // OpenGL reports an error for each look-up in a program that is not linked, so those are not remembered.
    bool isLinked = false;
};

ShaderProgram::ShaderProgram() : mUniformLocations(std::make_shared<UniformLocations>())
{
    checkedCall("glCreateProgram", "Tavik::OpenGL::ShaderProgram::ShaderProgram()",
                [this] { mHandle = glCreateProgram(); });
}

bool ShaderProgram::attachShader(const Shader& shader)
{
    checkedCall("glAttachShader", "bool Tavik::OpenGL::ShaderProgram::attachShader(Shader &)",
                [&] { glAttachShader(mHandle, shader.handle()); });
    return true;
}

bool ShaderProgram::detachShader(const Shader& shader)
{
    checkedCall("glDetachShader", "bool Tavik::OpenGL::ShaderProgram::detachShader(Shader &)",
                [&] { glDetachShader(mHandle, shader.handle()); });
    return true;
}

void ShaderProgram::bindLocation(int location, const std::string& name)
{
    checkedCall("glBindAttribLocation", "void Tavik::OpenGL::ShaderProgram::bindLocation(int, const std::string &)",
                [&] { glBindAttribLocation(mHandle, static_cast<GLuint>(location), name.c_str()); });
}

bool ShaderProgram::link()
{
    checkedCall("glLinkProgram", "bool Tavik::OpenGL::ShaderProgram::link()", [this] { glLinkProgram(mHandle); });
    mUniformLocations->entries.clear();
    mUniformLocations->isLinked = checkError();
    return mUniformLocations->isLinked;
}

bool ShaderProgram::checkError() const
{
    GLint linked = GL_FALSE;
    checkedCall("glGetProgramiv", "bool Tavik::OpenGL::ShaderProgram::checkError()",
                [&] { glGetProgramiv(mHandle, GL_LINK_STATUS, &linked); });
    if (linked == GL_FALSE) {
        info();
    }
    return linked != GL_FALSE;
}

bool ShaderProgram::use(bool on)
{
    checkedCall("glUseProgram", "bool Tavik::OpenGL::ShaderProgram::use(bool)",
                [&] { glUseProgram(on ? mHandle : 0); });
    return true;
}

int ShaderProgram::uniformLocation(const std::string& name)
{
    for (const UniformLocations::Entry& entry : mUniformLocations->entries) {
        if (entry.name == name) {
            return entry.location;
        }
    }
    if (!isOpenGlLoaded()) {
        return -1;
    }
    const int location = glGetUniformLocation(mHandle, name.c_str());
    if (mUniformLocations->isLinked) {
        mUniformLocations->entries.push_back({name, location});
    }
    return location;
}

void ShaderProgram::setFloatVar(const std::string& name, float x)
{
    checkedCall("glUniform1f", "void Tavik::OpenGL::ShaderProgram::setFloatVar(std::string, float)",
                [&] { glUniform1f(uniformLocation(name), x); });
}

void ShaderProgram::setFloatVar(const std::string& name, float x, float y)
{
    checkedCall("glUniform2f", "void Tavik::OpenGL::ShaderProgram::setFloatVar(std::string, float, float)",
                [&] { glUniform2f(uniformLocation(name), x, y); });
}

void ShaderProgram::setFloatVar(const std::string& name, float x, float y, float z)
{
    checkedCall("glUniform3f", "void Tavik::OpenGL::ShaderProgram::setFloatVar(std::string, float, float, float)",
                [&] { glUniform3f(uniformLocation(name), x, y, z); });
}

void ShaderProgram::setFloatVar(const std::string& name, float x, float y, float z, float w)
{
    checkedCall("glUniform4f",
                "void Tavik::OpenGL::ShaderProgram::setFloatVar(std::string, float, float, float, float)",
                [&] { glUniform4f(uniformLocation(name), x, y, z, w); });
}

void ShaderProgram::setIntVar(const std::string& name, int value)
{
    checkedCall("glUniform1i", "void Tavik::OpenGL::ShaderProgram::setIntVar(std::string, int)",
                [&] { glUniform1i(uniformLocation(name), value); });
}

void ShaderProgram::setStippleVar(const std::string& name, const int* pattern)
{
    if (pattern == nullptr) {
        return;
    }
    checkedCall("glUniform1iv", "void Tavik::OpenGL::ShaderProgram::setStippleVar(std::string, int *)",
                [&] { glUniform1iv(uniformLocation(name), StippleRowCount, pattern); });
}

void ShaderProgram::info() const
{
    if (mHandle == 0) {
        return;
    }
    GLint length = 0;
    glGetProgramiv(mHandle, GL_INFO_LOG_LENGTH, &length);
    printInfoLog(length, [this](GLsizei size, char* log) { glGetProgramInfoLog(mHandle, size, nullptr, log); });
}

} // namespace Tavik::OpenGL
