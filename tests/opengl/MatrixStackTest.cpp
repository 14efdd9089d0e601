#include "GlTest.h"

#include <tavik/opengl/MatrixStack.h>

#include <cmath>
#include <functional>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Math::Vector3;

namespace {

class MatrixStackTest : public GlTest
{
protected:
    void TearDown() override
    {
        for (int i = 0; i < 40; ++i) {
            MatrixPop();
        }
        MatrixLoadIdent();
        GlTest::TearDown();
    }
};

} // namespace

TEST_F(MatrixStackTest, TransformsApplyToVerticesLastOneFirst)
{
    struct Case
    {
        const char* name;
        std::function<void()> build;
        Vector3<float> vertex;
        Vector3<float> expected;
    };
    const float third = 1.0f / std::sqrt(3.0f);
    const Case cases[] = {
        {"translate, scale",
         [] {
             MatrixTranslate(10.0, 20.0, 30.0);
             MatrixScale(2.0, 3.0, 4.0);
         },
         {1.0f, 1.0f, 1.0f},
         {12.0f, 23.0f, 34.0f}},
        {"scale, translate",
         [] {
             MatrixScale(2.0, 3.0, 4.0);
             MatrixTranslate(10.0, 20.0, 30.0);
         },
         {1.0f, 1.0f, 1.0f},
         {22.0f, 63.0f, 124.0f}},
        {"turn about z", [] { MatrixRotate(90.0, 0.0, 0.0, 1.0); }, {1.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}},
        {"turn about the diagonal",
         [third] { MatrixRotate(120.0, third, third, third); },
         {1.0f, 2.0f, 3.0f},
         {3.0f, 1.0f, 2.0f}},
        {"an axis of length 2 scales", // x² t + c with t = 1 − cos 90° = 1
         [] { MatrixRotate(90.0, 2.0, 0.0, 0.0); },
         {1.0f, 1.0f, 0.0f},
         {4.0f, 0.0f, 2.0f}},
        {"multiply from the right",
         [] {
             Matrix4<float> translation;
             translation.translate(1.0f, 2.0f, 3.0f);
             MatrixScale(2.0, 2.0, 2.0);
             MatrixMult(translation);
         },
         {0.0f, 0.0f, 0.0f},
         {2.0f, 4.0f, 6.0f}},
    };
    for (const Case& c : cases) {
        MatrixLoadIdent();
        c.build();
        const Vector3<float> error = MatrixGet() * c.vertex - c.expected;
        EXPECT_LT(std::fabs(error.x) + std::fabs(error.y) + std::fabs(error.z), 1e-5f) << c.name;
    }
}

TEST_F(MatrixStackTest, ThirtyOnePushesAndNoMore)
{
    EXPECT_EQ(MatrixGet(), Matrix4<float>());
    // The matrix at depth n is a translation by n; at the bottom stands 0.
    for (int depth = 1; depth <= 31; ++depth) {
        MatrixPush();
        MatrixTranslate(1.0, 0.0, 0.0);
        EXPECT_EQ(MatrixGet()[12], static_cast<float>(depth));
    }
    MatrixPush(); // without effect: the top itself is changed from here on
    MatrixPush();
    MatrixTranslate(100.0, 0.0, 0.0);
    EXPECT_EQ(MatrixGet()[12], 131.0f);
    for (int depth = 30; depth >= 0; --depth) {
        MatrixPop();
        EXPECT_EQ(MatrixGet()[12], static_cast<float>(depth));
    }
    MatrixTranslate(7.0, 0.0, 0.0);
    MatrixPop(); // without effect
    EXPECT_EQ(MatrixGet()[12], 7.0f);
}

TEST_F(MatrixStackTest, ActivationUploadsTheTop)
{
    GlHandler& gl = GlHandler::instance();
    Matrix4<float> expected;
    for (std::size_t i = 0; i < Matrix4<float>::ElementCount; ++i) {
        expected[i] = static_cast<float>(i) + 0.5f;
    }
    for (const unsigned int id : {2u, 9u}) {
        gl.activateShader(id);
        expected[0] = static_cast<float>(id);
        MatrixSet(expected);
        MatrixActivate();
        Matrix4<float> uploaded;
        glGetUniformfv(gl.activeShaderHandle(), gl.activeShader().uniformLocation("mvp"), uploaded.data());
        EXPECT_EQ(uploaded, expected) << id;
    }
    gl.deactivateShader();
}

TEST_F(MatrixStackTest, ActivationWithoutProgramIsReported)
{
    expectGlErrors();
    GlHandler::instance().deactivateShader();
    testing::internal::CaptureStdout();
    MatrixActivate();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error <glUniformMatrix4fv> <void Tavik::OpenGL::MatrixActivate()> 1282\n");
}
