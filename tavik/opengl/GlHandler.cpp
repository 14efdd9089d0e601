#include <tavik/opengl/GlHandler.h>

#include <tavik/opengl/GlVersion.h>
#include <tavik/opengl/OpenGlLoader.h>
#include <tavik/opengl/Shader.h>
#include <tavik/opengl/StandardPrograms.h>

#include <GL/glew.h>

#include <cstdio>
#include <vector>

namespace Tavik::OpenGL {

namespace {

constexpr std::uint32_t NoShader = 0;

// Before the first activation nobody knows what the application has made current, so that it must be unbound.
constexpr std::uint32_t UnknownShader = 999999;

// A lost context may report errors for ever.
constexpr int MaximumPendingErrors = 100;

std::string versionText(GLenum name)
{
    const GLubyte* text = glGetString(name);
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

void installMessageCallback()
{
    // The entry point alone says little: a loader may hand out one that the context does not support.
    if (glDebugMessageCallback == nullptr || (!GLEW_VERSION_4_3 && glewGetExtension("GL_KHR_debug") == GL_FALSE)) {
        return;
    }
    glEnable(GL_DEBUG_OUTPUT);
    glDebugMessageCallback(MessageCallback, nullptr);
}

Shader compile(Shader::TShaderType type, const ShaderSource& source)
{
    Shader shader(type);
    shader.loadSource(source.text, source.length);
    shader.compile();
    return shader;
}

ShaderProgram build(const StandardProgram& standard)
{
    std::vector<Shader> stages = {compile(Shader::VertexShader, standard.vertex),
                                  compile(Shader::FragmentShader, standard.fragment)};
    if (standard.geometry.text != nullptr) {
        stages.push_back(compile(Shader::GeometryShader, standard.geometry));
    }
    ShaderProgram program;
    for (const Shader& stage : stages) {
        program.attachShader(stage);
    }
    for (const AttributeLocation& attribute : standard.attributes) {
        program.bindLocation(static_cast<int>(attribute.location), attribute.name);
    }
    program.link();
    return program;
}

} // namespace

GlHandler& GlHandler::instance()
{
    static GlHandler handler;
    return handler;
}

GlHandler::GlHandler() : mActiveShader(UnknownShader)
{
    const char* error = loadOpenGl();
    if (error != nullptr) {
        std::printf("GlHandler::GlHandler Error: %s\n", error);
    }
    if (isOpenGlLoaded()) {
        installMessageCallback();
        mGlVersion = versionText(GL_VERSION);
        mGlSlVersion = versionText(GL_SHADING_LANGUAGE_VERSION);
        clearError(); // looking for entry points and extensions may leave one behind
        initStandardShaders();
    }
    glVersion();
    glSlVersion();
}

bool GlHandler::isLoaded() const
{
    return isOpenGlLoaded();
}

void GlHandler::initStandardShaders()
{
    if (!isLoaded()) {
        return;
    }
    for (const StandardProgram& standard : standardPrograms()) {
        if (mPrograms.count(standard.id) == 0) {
            mPrograms.emplace(standard.id, build(standard));
        }
    }
}

int GlHandler::glVersion() const
{
    return parseGlVersion(mGlVersion);
}

int GlHandler::glSlVersion() const
{
    return parseGlVersion(mGlSlVersion);
}

void GlHandler::activateShader(unsigned int id)
{
    if (id == mActiveShader) {
        return;
    }
    const auto found = mPrograms.find(id);
    if (found == mPrograms.end()) {
        return;
    }
    mActiveShader = id;
    found->second.use(true);
}

void GlHandler::deactivateShader()
{
    if (mActiveShader == NoShader) {
        return;
    }
    mActiveShader = NoShader;
    if (!isOpenGlLoaded()) {
        return;
    }
    clearError();
    glUseProgram(0);
    checkError("glUseProgram", "void Tavik::OpenGL::GlHandler::deactivateShader()");
}

ShaderProgram& GlHandler::activeShader()
{
    return mPrograms[mActiveShader];
}

unsigned int GlHandler::activeShaderHandle()
{
    return activeShader().handle();
}

void GlHandler::setViewPort(Math::Vector2<float> size)
{
    mViewPort = size;
}

Math::Vector2<float> GlHandler::viewPort() const
{
    return mViewPort;
}

void GlHandler::activateViewPort()
{
    setFloatVar("viewPort", mViewPort.x, mViewPort.y);
}

void GlHandler::setFloatVar(const std::string& name, float x)
{
    activeShader().setFloatVar(name, x);
}

void GlHandler::setFloatVar(const std::string& name, float x, float y)
{
    activeShader().setFloatVar(name, x, y);
}

void GlHandler::setFloatVar(const std::string& name, float x, float y, float z)
{
    activeShader().setFloatVar(name, x, y, z);
}

void GlHandler::setFloatVar(const std::string& name, float x, float y, float z, float w)
{
    activeShader().setFloatVar(name, x, y, z, w);
}

void GlHandler::setIntVar(const std::string& name, int value)
{
    activeShader().setIntVar(name, value);
}

void GlHandler::setStippleVar(const std::string& name, const int* pattern)
{
    activeShader().setStippleVar(name, pattern);
}

void GlHandler::checkError(const std::string& call, const std::string& where)
{
    checkError(call.c_str(), where.c_str());
}

void GlHandler::checkError(const char* call, const char* where)
{
    for (int i = 0; i < MaximumPendingErrors; ++i) {
        const GLenum error = glGetError();
        if (error == GL_NO_ERROR) {
            return;
        }
        std::printf("Error <%s> <%s> %d\n", call, where, static_cast<int>(error));
    }
}

void GlHandler::clearError()
{
    for (int i = 0; i < MaximumPendingErrors && glGetError() != GL_NO_ERROR; ++i) {
    }
}

void MessageCallback(unsigned int /*source*/, unsigned int type, unsigned int /*id*/, unsigned int severity,
                     int /*length*/, const char* message, const void* /*userParam*/)
{
    if (type != GL_DEBUG_TYPE_ERROR) {
        return;
    }
    std::fprintf(stderr, "GL CALLBACK: %s type = 0x%x, severity = 0x%x, message = %s\n", "** GL ERROR **", type,
                 severity, message == nullptr ? "" : message);
}

} // namespace Tavik::OpenGL
