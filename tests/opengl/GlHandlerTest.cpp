#include "GlTest.h"

#include <support/TemporaryDirectory.h>
#include <tavik/opengl/Shader.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <numeric>
#include <utility>

using namespace Tavik::OpenGL;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

constexpr unsigned int StandardIds[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};

unsigned int currentProgram()
{
    int program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    return static_cast<unsigned int>(program);
}

bool compileText(Shader& shader, const std::string& text)
{
    return shader.loadSource(reinterpret_cast<const unsigned char*>(text.data()),
                             static_cast<unsigned int>(text.size())) &&
           shader.compile();
}

// Every log that OpenGL keeps of a program and its stages.
std::string allLogs(unsigned int program)
{
    std::string logs;
    char text[4096];
    glGetProgramInfoLog(program, sizeof(text), nullptr, text);
    logs += text;
    unsigned int shaders[8];
    int count = 0;
    glGetAttachedShaders(program, 8, &count, shaders);
    for (int i = 0; i < count; ++i) {
        glGetShaderInfoLog(shaders[i], sizeof(text), nullptr, text);
        logs += text;
    }
    return logs;
}

// What only a new handler shows: the tests may run in any order.
struct FirstSight
{
    std::string printed;
    Tavik::Math::Vector2<float> viewPort;
    unsigned int ofTheApplication = 0;
    unsigned int afterFirstDeactivation = 0;
    unsigned int afterSecondDeactivation = 0;
    unsigned int afterActivatingNone = 0; // while the application's program is current
};

FirstSight meetHandler()
{
    FirstSight seen;
    CaptureStdout();
    GlHandler& gl = GlHandler::instance();
    seen.printed = GetCapturedStdout();
    seen.viewPort = gl.viewPort();

    Shader vertex(Shader::VertexShader);
    compileText(vertex, "#version 330 core\nvoid main() { gl_Position = vec4(0.0); }");
    ShaderProgram program;
    program.attachShader(vertex);
    program.link();
    seen.ofTheApplication = program.handle();
    program.use(true);
    gl.deactivateShader();
    seen.afterFirstDeactivation = currentProgram();
    program.use(true);
    gl.deactivateShader();
    seen.afterSecondDeactivation = currentProgram();
    gl.activateShader(0);
    seen.afterActivatingNone = currentProgram();
    program.use(false);
    return seen;
}

class GlHandlerTest : public GlTest
{
protected:
    void SetUp() override
    {
        GlTest::SetUp();
        firstSight();
    }

    void TearDown() override
    {
        GlHandler::instance().deactivateShader();
        GlTest::TearDown();
    }

    static const FirstSight& firstSight()
    {
        static const FirstSight seen = meetHandler();
        return seen;
    }
};

} // namespace

TEST_F(GlHandlerTest, ConstructionPrintsTheVersionsAndKnowsNoActiveProgram)
{
    // Any error line or shader log would stand between or around these two.
    EXPECT_THAT(firstSight().printed,
                testing::MatchesRegex("GL version <[^\n]*> [0-9]+\\.[0-9]+\nGL version <[^\n]*> [0-9]+\\.[0-9]+\n"));
    EXPECT_THAT(firstSight().printed, testing::HasSubstr(reinterpret_cast<const char*>(glGetString(GL_VERSION))));
    EXPECT_GE(GlHandler::instance().glVersion(), 303);
    EXPECT_GE(GlHandler::instance().glSlVersion(), 330);
    EXPECT_EQ(firstSight().viewPort, Tavik::Math::Vector2<float>());

    EXPECT_NE(firstSight().ofTheApplication, 0u);
    EXPECT_EQ(firstSight().afterFirstDeactivation, 0u) << "does unbind: who knows what was active";
    EXPECT_EQ(firstSight().afterSecondDeactivation, firstSight().ofTheApplication) << "nothing of the library's is";
    EXPECT_EQ(firstSight().afterActivatingNone, firstSight().ofTheApplication);
}

TEST_F(GlHandlerTest, StandardProgramsHaveTheirInterface)
{
    struct Case
    {
        unsigned int id;
        std::vector<std::pair<std::string, int>> attributes; // those that the stages read
        std::vector<std::string> uniforms;
    };
    const Case cases[] = {
        {1, {{"vertex", 0}, {"color", 4}}, {"mvp"}},
        {2, {{"vertex", 0}}, {"mvp", "color"}},
        {3, {{"vertex", 0}, {"vertexUV", 2}}, {"mvp", "color", "myTextureSampler"}},
        {4,
         {{"vertex", 0}, {"vertexUV", 2}},
         {"mvp", "color", "lightDirection", "shadingOn", "terrainShadingFactor", "terrainContrast", "terrainBrightness",
          "osmTerrain", "Texture0", "Texture1", "Texture2"}},
        {5, {{"vertex", 0}, {"vertexUV", 2}}, {"mvp", "color", "offset", "myTextureSampler"}},
        {6, {{"vertex", 0}, {"vertexUV", 2}}, {"mvp", "color", "offset", "outlineColor", "outlineWidth", "Texture0"}},
        {7, {{"vertex", 0}}, {"mvp", "color", "offset"}},
        {8, {{"vertex", 0}}, {"mvp", "color", "lineWidth", "viewPort", "antialias", "lineStipple"}},
        {9, {{"vertex", 0}, {"position", 5}}, {"mvp", "color", "lineWidth", "viewPort", "antialias", "lineStipple"}},
        {10,
         {{"vertex", 0}, {"color", 4}, {"position", 5}},
         {"mvp", "lineWidth", "viewPort", "antialias", "lineStipple"}},
        {11, {{"vertex", 0}}, {"mvp", "color", "stipplePattern", "stippleUse"}},
    };
    GlHandler& gl = GlHandler::instance();
    for (const Case& c : cases) {
        SCOPED_TRACE("program " + std::to_string(c.id));
        gl.activateShader(c.id);
        const unsigned int program = gl.activeShaderHandle();
        EXPECT_EQ(program, currentProgram());
        EXPECT_EQ(allLogs(program), "");
        for (const auto& [name, location] : c.attributes) {
            EXPECT_EQ(glGetAttribLocation(program, name.c_str()), location) << name;
        }
        for (const std::string& name : c.uniforms) {
            EXPECT_GE(gl.activeShader().uniformLocation(name), 0) << name;
        }
        int uniformCount = 0;
        glGetProgramiv(program, GL_ACTIVE_UNIFORMS, &uniformCount);
        EXPECT_EQ(uniformCount, static_cast<int>(c.uniforms.size()));
    }
}

TEST_F(GlHandlerTest, ActivationFollowsTheIdentifier)
{
    GlHandler& gl = GlHandler::instance();
    std::vector<unsigned int> handles;
    for (const unsigned int id : StandardIds) {
        gl.activateShader(id);
        handles.push_back(currentProgram());
        EXPECT_EQ(std::count(handles.begin(), handles.end(), currentProgram()), 1) << id;
    }
    for (const unsigned int unknown : {12u, 0xFFFFFFFFu}) {
        gl.activateShader(unknown);
        EXPECT_EQ(currentProgram(), handles.back()) << unknown;
        EXPECT_EQ(gl.activeShaderHandle(), handles.back()) << unknown;
    }
    glUseProgram(0);
    gl.activateShader(11); // is active already: no call
    EXPECT_EQ(currentProgram(), 0u);
    gl.deactivateShader();
    gl.activateShader(11);
    EXPECT_EQ(currentProgram(), handles.back());
}

TEST_F(GlHandlerTest, UniformsReachTheProgram)
{
    GlHandler& gl = GlHandler::instance();
    gl.setViewPort({640.0f, 480.0f});
    gl.activateShader(9);
    gl.setFloatVar("lineWidth", 2.5f);
    gl.setIntVar("lineStipple", -2);
    gl.setFloatVar("color", 0.1f, 0.2f, 0.3f, 0.4f);
    gl.activateViewPort();
    gl.setFloatVar("noSuchName", 1.0f);
    const auto floats = [&gl](const std::string& name) {
        std::vector<float> values(4);
        glGetUniformfv(gl.activeShaderHandle(), gl.activeShader().uniformLocation(name), values.data());
        return values;
    };
    EXPECT_EQ(floats("lineWidth")[0], 2.5f);
    EXPECT_EQ(floats("color"), (std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f}));
    EXPECT_EQ(floats("viewPort"), (std::vector<float>{640.0f, 480.0f, 0.0f, 0.0f}));
    int stipple = 0;
    glGetUniformiv(gl.activeShaderHandle(), gl.activeShader().uniformLocation("lineStipple"), &stipple);
    EXPECT_EQ(stipple, -2);

    gl.activateShader(7);
    gl.setFloatVar("offset", 1.0f, 2.0f, 3.0f);
    EXPECT_EQ(floats("offset"), (std::vector<float>{1.0f, 2.0f, 3.0f, 0.0f}));

    gl.activateShader(11);
    int pattern[32];
    std::iota(std::begin(pattern), std::end(pattern), -16);
    gl.setStippleVar("stipplePattern", pattern);
    gl.setStippleVar("stipplePattern", nullptr);
    for (int row = 0; row < 32; ++row) {
        const std::string name = "stipplePattern[" + std::to_string(row) + "]";
        int value = 0;
        glGetUniformiv(gl.activeShaderHandle(), gl.activeShader().uniformLocation(name), &value);
        EXPECT_EQ(value, pattern[row]) << name;
    }
}

TEST_F(GlHandlerTest, LocationsAreForgottenByLinking)
{
    Shader vertex(Shader::VertexShader);
    ASSERT_TRUE(compileText(vertex, "#version 330 core\nuniform float a; uniform float b;"
                                    "void main() { gl_Position = vec4(a, b, 0.0, 1.0); }"));
    Shader other(Shader::VertexShader);
    ASSERT_TRUE(compileText(other, "#version 330 core\nuniform float b;"
                                   "void main() { gl_Position = vec4(b); }"));
    ShaderProgram program;
    ShaderProgram copy = program;
    program.attachShader(vertex);
    ASSERT_TRUE(program.link());
    EXPECT_GE(copy.uniformLocation("a"), 0);
    EXPECT_NE(copy.uniformLocation("a"), copy.uniformLocation("b"));
    program.detachShader(vertex);
    program.attachShader(other);
    ASSERT_TRUE(program.link());
    EXPECT_EQ(copy.uniformLocation("a"), -1);
    EXPECT_GE(copy.uniformLocation("b"), 0);
}

TEST_F(GlHandlerTest, ErrorsArePrintedWithCallAndFunction)
{
    expectGlErrors();
    GlHandler& gl = GlHandler::instance();
    const int pattern[32] = {};
    Shader noShader(static_cast<Shader::TShaderType>(3));
    ShaderProgram program; // not linked
    gl.deactivateShader();
    struct Case
    {
        const char* call;
        const char* where;
        int error;
        std::function<void()> run;
    };
    const std::string type = "Tavik::OpenGL::ShaderProgram::";
    const Case cases[] = {
        {"glAttachShader", "bool attachShader(Shader &)", 1281, [&] { program.attachShader(noShader); }},
        {"glDetachShader", "bool detachShader(Shader &)", 1281, [&] { program.detachShader(noShader); }},
        {"glBindAttribLocation", "void bindLocation(int, const std::string &)", 1281,
         [&] { program.bindLocation(-1, "v"); }},
        {"glUseProgram", "bool use(bool)", 1282, [&] { program.use(true); }},
        {"glUniform1f", "void setFloatVar(std::string, float)", 1282, [&] { gl.setFloatVar("x", 1.0f); }},
        {"glUniform2f", "void setFloatVar(std::string, float, float)", 1282, [&] { gl.setFloatVar("x", 1.0f, 2.0f); }},
        {"glUniform3f", "void setFloatVar(std::string, float, float, float)", 1282,
         [&] { gl.setFloatVar("x", 1.0f, 2.0f, 3.0f); }},
        {"glUniform4f", "void setFloatVar(std::string, float, float, float, float)", 1282,
         [&] { gl.setFloatVar("x", 1.0f, 2.0f, 3.0f, 4.0f); }},
        {"glUniform1i", "void setIntVar(std::string, int)", 1282, [&] { gl.setIntVar("x", 1); }},
        {"glUniform1iv", "void setStippleVar(std::string, int *)", 1282, [&] { gl.setStippleVar("x", pattern); }},
    };
    for (const Case& c : cases) {
        CaptureStdout();
        c.run();
        std::string where = c.where;
        where.insert(where.find(' ') + 1, type);
        EXPECT_EQ(GetCapturedStdout(),
                  "Error <" + std::string(c.call) + "> <" + where + "> " + std::to_string(c.error) + "\n");
    }
    CaptureStdout();
    glEnable(GL_TEXTURE_2D); // not in the core profile
    GlHandler::clearError();
    GlHandler::checkError("dropped", "where");
    glEnable(GL_TEXTURE_2D);
    GlHandler::checkError(std::string("call"), std::string("where"));
    EXPECT_EQ(GetCapturedStdout(), "Error <call> <where> 1280\n");

    // The setters above put an empty program under the identifier that stands for none, and kept it.
    const unsigned int empty = gl.activeShaderHandle();
    EXPECT_EQ(gl.activeShaderHandle(), empty);
    int linked = 1;
    glGetProgramiv(empty, GL_LINK_STATUS, &linked);
    EXPECT_EQ(linked, 0);
    gl.activateShader(2);
    const unsigned int linkedProgram = gl.activeShaderHandle();
    gl.deactivateShader();
    glUseProgram(linkedProgram);
    for (int i = 0; i < 2; ++i) { // what failed is not remembered
        CaptureStdout();
        gl.setIntVar("y", 1);
        EXPECT_EQ(GetCapturedStdout(),
                  "Error <glUniform1i> <void Tavik::OpenGL::ShaderProgram::setIntVar(std::string, int)> 1282\n");
    }
    glUseProgram(0);
}

TEST_F(GlHandlerTest, FailuresPrintOpenGlsLog)
{
    expectGlErrors();
    Shader broken(Shader::FragmentShader);
    CaptureStdout();
    EXPECT_FALSE(compileText(broken, "#version 330 core\nvoid main() { neverDeclared = 1.0; }"));
    EXPECT_THAT(GetCapturedStdout(), testing::HasSubstr("neverDeclared"));
    CaptureStdout();
    EXPECT_FALSE(broken.checkError());
    EXPECT_THAT(GetCapturedStdout(), testing::HasSubstr("neverDeclared"));

    ShaderProgram program;
    program.attachShader(broken);
    CaptureStdout();
    EXPECT_FALSE(program.link());
    const std::string linkLog = GetCapturedStdout();
    EXPECT_NE(linkLog, "");
    EXPECT_EQ(linkLog.find("Error <"), std::string::npos);
    CaptureStdout();
    program.info();
    EXPECT_EQ(GetCapturedStdout(), linkLog);
}

TEST_F(GlHandlerTest, ShaderSourcesFromFileAndMemory)
{
    const std::string text = "#version 330 core\nvoid main() { gl_Position = vec4(0.0); } // end";
    const Tavik::Support::TemporaryDirectory directory;
    std::ofstream(directory.path() + "/a.vert") << text;
    Shader vertex(Shader::VertexShader);
    EXPECT_TRUE(vertex.loadSource(directory.path() + "/a.vert"));
    EXPECT_TRUE(vertex.compile());
    EXPECT_FALSE(vertex.loadSource(directory.path() + "/b.vert"));
    EXPECT_FALSE(vertex.loadSource("/dev/zero"));
    EXPECT_FALSE(vertex.loadSource(nullptr, 5));
    EXPECT_TRUE(vertex.compile()) << "the source of before";
    // Only length bytes count: what stands behind them would not compile.
    const std::string longer = text + "\n neverDeclared";
    EXPECT_TRUE(vertex.loadSource(reinterpret_cast<const unsigned char*>(longer.data()),
                                  static_cast<unsigned int>(text.size())));
    EXPECT_TRUE(vertex.compile());

    Shader unknown(static_cast<Shader::TShaderType>(3));
    EXPECT_EQ(unknown.handle(), 0u);
    EXPECT_TRUE(unknown.loadSource(directory.path() + "/a.vert"));
    EXPECT_FALSE(unknown.compile());
    EXPECT_FALSE(unknown.checkError());
    unknown.info();
}

TEST_F(GlHandlerTest, MessageCallbackPrintsErrorsOnly)
{
    expectGlErrors();
    const char* sofar = "GL CALLBACK: ** GL ERROR ** type = 0x824c, severity = 0x9146, message = lost\n";
    testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr();
    MessageCallback(GL_DEBUG_SOURCE_API, GL_DEBUG_TYPE_ERROR, 1, GL_DEBUG_SEVERITY_HIGH, 4, "lost", nullptr);
    MessageCallback(GL_DEBUG_SOURCE_API, GL_DEBUG_TYPE_PERFORMANCE, 1, GL_DEBUG_SEVERITY_HIGH, 4, "slow", nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), sofar);
    testing::internal::CaptureStderr();
    glEnable(GL_TEXTURE_2D); // the driver calls it, too
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::StartsWith("GL CALLBACK: ** GL ERROR **"));
    EXPECT_EQ(Tavik::Support::Window::takeGlError(), static_cast<unsigned int>(GL_INVALID_ENUM));
    testing::internal::CaptureStderr();
}
