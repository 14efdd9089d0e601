#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/Shader.h>

#include <gtest/gtest.h>

using namespace Tavik::OpenGL;

TEST(GlHandlerNoContext, EverythingIsWithoutEffectAndAlive)
{
    testing::internal::CaptureStdout();
    GlHandler& gl = GlHandler::instance();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "GlHandler::GlHandler Error: Missing GL version\nGL version <> 0.0\nGL version <> 0.0\n");

    testing::internal::CaptureStdout();
    const int pattern[32] = {};
    gl.initStandardShaders();
    gl.activateShader(9);
    gl.setViewPort({64.0f, 64.0f});
    gl.activateViewPort();
    gl.setFloatVar("color", 1.0f, 1.0f, 1.0f, 1.0f);
    gl.setStippleVar("stipplePattern", pattern);
    EXPECT_EQ(gl.activeShaderHandle(), 0u);
    gl.deactivateShader();

    Shader shader(Shader::GeometryShader);
    EXPECT_EQ(shader.handle(), 0u);
    EXPECT_FALSE(shader.compile());
    ShaderProgram program;
    EXPECT_TRUE(program.attachShader(shader));
    EXPECT_FALSE(program.link());
    EXPECT_TRUE(program.use(true));
    EXPECT_EQ(program.uniformLocation("mvp"), -1);
    program.info();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
