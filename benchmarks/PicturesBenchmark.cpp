// What a picture costs in each frame beside its pixels, and what a frame of a video costs.
//
// The limits are the bare OpenGL calls for the same: same program, same state, same bytes.
//
// A software driver spreads drawing over threads of its own, whose time is not ours; it is told to have none.

#include "BenchmarkWindow.h"

#include <support/Window.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/Texture.h>
#include <tavik/opengl/Video.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Support::Window;

namespace {

constexpr int WindowPixels = 64;
constexpr int DrawingsPerFrame = 100;
constexpr unsigned int PicturePixels = 4;
constexpr GLsizei FrameWidth = 1280;
constexpr GLsizei FrameHeight = 720;
constexpr GLsizeiptr FrameBytes = GLsizeiptr{FrameWidth} * FrameHeight * 3;

using Bytes = std::vector<unsigned char>;

void openWindow()
{
    openBenchmarkWindow(WindowPixels, WindowPixels);
    MatrixLoadIdent();
    MatrixScale(2.0 / WindowPixels, 2.0 / WindowPixels, 1.0);
}

template <typename Work>
void measure(benchmark::State& state, Work work)
{
    for ([[maybe_unused]] auto _ : state) {
        work();
    }
    if (Window::takeGlError() != 0) {
        state.SkipWithError("an OpenGL error, or no OpenGL");
    }
}

template <typename Draw>
void measureDrawing(benchmark::State& state, Draw draw)
{
    measure(state, [&] {
        for (int i = 0; i < DrawingsPerFrame; ++i) {
            draw();
        }
        glFinish();
        glClear(GL_COLOR_BUFFER_BIT);
    });
    state.SetItemsProcessed(state.iterations() * DrawingsPerFrame);
}

unsigned int makeTexture(GLint internalFormat, GLsizei width, GLsizei height, GLenum format, const void* pixels)
{
    unsigned int name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, format, GL_UNSIGNED_BYTE, pixels);
    glBindTexture(GL_TEXTURE_2D, 0);
    return name;
}

// A picture on a strip of two triangles with indices.
class BarePicture
{
public:
    explicit BarePicture(const Bytes& pixels)
    {
        mTexture = makeTexture(GL_COMPRESSED_RGBA, PicturePixels, PicturePixels, GL_RGBA, pixels.data());
        glGenVertexArrays(1, &mVertexArray);
        glGenBuffers(3, mBuffers.data());
        glBindVertexArray(mVertexArray);
        constexpr float Half = PicturePixels / 2.0f;
        const float positions[] = {-Half, -Half, 0, -Half, Half, 0, Half, -Half, 0, Half, Half, 0};
        const float coordinates[] = {0, 1, 0, 0, 1, 1, 1, 0};
        const std::uint32_t indices[] = {0, 1, 2, 3};
        upload(GL_ARRAY_BUFFER, mBuffers[0], positions, sizeof(positions));
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(0);
        upload(GL_ARRAY_BUFFER, mBuffers[1], coordinates, sizeof(coordinates));
        glVertexAttribPointer(2, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(2);
        upload(GL_ELEMENT_ARRAY_BUFFER, mBuffers[2], indices, sizeof(indices));
        glBindVertexArray(0);

        GlHandler& gl = GlHandler::instance();
        gl.activateShader(3);
        mProgram = gl.activeShaderHandle();
        gl.deactivateShader();
        mColor = glGetUniformLocation(mProgram, "color");
        mMatrix = glGetUniformLocation(mProgram, "mvp");
    }

    ~BarePicture()
    {
        glDeleteTextures(1, &mTexture);
        glDeleteBuffers(3, mBuffers.data());
        glDeleteVertexArrays(1, &mVertexArray);
    }

    BarePicture(const BarePicture&) = delete;
    BarePicture& operator=(const BarePicture&) = delete;

    void draw() const
    {
        glUseProgram(mProgram);
        glUniform4f(mColor, 1.0f, 1.0f, 1.0f, 1.0f);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_BLEND);
        glActiveTexture(GL_TEXTURE0);
        glBindTexture(GL_TEXTURE_2D, mTexture);
        glBindVertexArray(mVertexArray);
        glPrimitiveRestartIndex(Texture::StripSeparator);
        glEnable(GL_PRIMITIVE_RESTART);
        glUniformMatrix4fv(mMatrix, 1, GL_FALSE, MatrixGet().data());
        glDrawElements(GL_TRIANGLE_STRIP, 4, GL_UNSIGNED_INT, nullptr);
        glDisable(GL_PRIMITIVE_RESTART);
        glBindVertexArray(0);
        glUseProgram(0);
        glBindTexture(GL_TEXTURE_2D, 0);
    }

private:
    static void upload(GLenum target, GLuint buffer, const void* data, std::size_t size)
    {
        glBindBuffer(target, buffer);
        glBufferData(target, static_cast<GLsizeiptr>(size), data, GL_STATIC_DRAW);
    }

    GLuint mTexture = 0;
    GLuint mVertexArray = 0;
    GLuint mProgram = 0;
    GLint mColor = -1;
    GLint mMatrix = -1;
    std::array<GLuint, 3> mBuffers = {};
};

void textureOurs(benchmark::State& state)
{
    openWindow();
    const Bytes pixels(std::size_t{PicturePixels} * PicturePixels * 4, 255);
    Texture texture;
    texture.load(pixels.data(), PicturePixels, PicturePixels, GL_RGBA);
    measureDrawing(state, [&] { texture.render(); });
}

void textureLimit(benchmark::State& state)
{
    openWindow();
    const BarePicture picture(Bytes(std::size_t{PicturePixels} * PicturePixels * 4, 255));
    measureDrawing(state, [&] { picture.draw(); });
}

void videoOurs(benchmark::State& state)
{
    openWindow();
    const Bytes frame(FrameBytes, 128);
    Video video;
    video.init(FrameWidth, FrameHeight);
    measure(state, [&] {
        video.putFrame(frame.data());
        glFinish();
    });
    state.SetBytesProcessed(state.iterations() * FrameBytes);
}

// New memory for the buffer, a copy, and the transfer from there.
void videoLimit(benchmark::State& state)
{
    openWindow();
    const Bytes frame(FrameBytes, 128);
    unsigned int texture = makeTexture(GL_RGBA, FrameWidth, FrameHeight, GL_RGB, nullptr);
    unsigned int buffer = 0;
    glGenBuffers(1, &buffer);
    measure(state, [&] {
        glBindTexture(GL_TEXTURE_2D, texture);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffer);
        glBufferData(GL_PIXEL_UNPACK_BUFFER, FrameBytes, nullptr, GL_STREAM_DRAW);
        std::memcpy(glMapBuffer(GL_PIXEL_UNPACK_BUFFER, GL_WRITE_ONLY), frame.data(), frame.size());
        glUnmapBuffer(GL_PIXEL_UNPACK_BUFFER);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, FrameWidth, FrameHeight, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        glBindTexture(GL_TEXTURE_2D, 0);
        glFinish();
    });
    glDeleteBuffers(1, &buffer);
    glDeleteTextures(1, &texture);
    state.SetBytesProcessed(state.iterations() * FrameBytes);
}

BENCHMARK(textureOurs)->Name("texture_fixed_cost/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(textureLimit)->Name("texture_fixed_cost/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(videoOurs)->Name("video_frame/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(videoLimit)->Name("video_frame/limit")->Unit(benchmark::kMicrosecond);

} // namespace
