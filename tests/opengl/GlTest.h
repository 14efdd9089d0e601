#pragma once

#include <support/Window.h>
#include <tavik/opengl/GlHandler.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <gtest/gtest.h>

/// A hidden window with a debug context, shared by the tests of one program; each test must end without OpenGL error
/// and without a word from OpenGL's debug output.
class GlTest : public ::testing::Test
{
protected:
    static constexpr int Size = 128; // pixels, both ways

    static Tavik::Support::Window& window()
    {
        static Tavik::Support::Window instance("Tavik test", Size, Size, Tavik::Support::Window::Visibility::Hidden,
                                               true);
        return instance;
    }

    void SetUp() override
    {
        ASSERT_TRUE(window().isOpen()) << window().error();
        testing::internal::CaptureStderr();
    }

    void TearDown() override
    {
        const std::string messages = testing::internal::GetCapturedStderr();
        if (!mExpectsGlErrors) {
            EXPECT_EQ(messages.find("GL CALLBACK"), std::string::npos) << messages;
        }
        EXPECT_EQ(Tavik::Support::Window::takeGlError(), 0u);
    }

    /// For tests that provoke OpenGL errors on purpose.
    void expectGlErrors() { mExpectsGlErrors = true; }

private:
    bool mExpectsGlErrors = false;
};
