// 200 strips of 500 points, 3 pixels wide, that change in every frame: the preparation alone (from the application's
// points to the buffers on the GPU), and the whole frame.
//
// The limit does by hand what the task needs, with arrays that are kept: vertices, doubled ends, running length and
// upload, then the same program with bare OpenGL.
//
// A software driver spreads drawing over threads of its own, whose time is not ours; it is told to have none.

#include "BenchmarkWindow.h"

#include <support/Window.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <benchmark/benchmark.h>
#ifdef TAVIK_PEER_CAIRO
#include "CairoPicture.h"
#endif

#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Support::Window;

namespace {

constexpr std::size_t StripCount = 200;
constexpr std::size_t PointCount = 500; // of each strip
constexpr int WidthPixels = 640;
constexpr int HeightPixels = 400;
constexpr float LineWidth = 3.0f;
constexpr std::uint32_t Separator = LineStrips::StripSeparator;

using Strips = std::vector<std::vector<Vector2<float>>>;

bool openWindow()
{
    return openBenchmarkWindow(WidthPixels, HeightPixels);
}

// Wavy contour lines across the window; two frames of them, so that each upload brings something new.
Strips makeStrips(double phase)
{
    Strips strips(StripCount);
    for (std::size_t s = 0; s < StripCount; ++s) {
        for (std::size_t p = 0; p < PointCount; ++p) {
            const double x = static_cast<double>(p) * WidthPixels / PointCount;
            const double y = static_cast<double>(s) * HeightPixels / StripCount + 10.0 * std::sin(x * 0.05 + phase);
            strips[s].emplace_back(static_cast<float>(x), static_cast<float>(y));
        }
    }
    return strips;
}

const Strips& frame(std::size_t number)
{
    static const Strips frames[] = {makeStrips(0.0), makeStrips(1.0)};
    return frames[number % 2];
}

class BareLines
{
public:
    BareLines()
    {
        glGenVertexArrays(1, &mVertexArray);
        glGenBuffers(3, mBuffers.data());
        glBindVertexArray(mVertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffers[0]);
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(0);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffers[1]);
        glVertexAttribPointer(5, 1, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(5);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mBuffers[2]);

        GlHandler& gl = GlHandler::instance();
        gl.activateShader(9);
        mProgram = gl.activeShaderHandle();
        gl.deactivateShader();
        glUseProgram(mProgram);
        glUniform4f(location("color"), 1.0f, 1.0f, 1.0f, 1.0f);
        glUniform1f(location("lineWidth"), LineWidth);
        glUniform2f(location("viewPort"), WidthPixels, HeightPixels);
        glUniform1i(location("antialias"), 1);
        glUniform1i(location("lineStipple"), 0);
        glUniformMatrix4fv(location("mvp"), 1, GL_FALSE, MatrixGet().data());
        glUseProgram(0);
    }

    ~BareLines()
    {
        glDeleteBuffers(3, mBuffers.data());
        glDeleteVertexArrays(1, &mVertexArray);
    }

    BareLines(const BareLines&) = delete;
    BareLines& operator=(const BareLines&) = delete;

    void prepare(const Strips& strips)
    {
        fillVerticesAndIndices(strips);
        fillLengths(MatrixGet());
        glBindVertexArray(mVertexArray);
        upload(GL_ARRAY_BUFFER, mBuffers[0], mVertices);
        upload(GL_ARRAY_BUFFER, mBuffers[1], mLengths);
        upload(GL_ELEMENT_ARRAY_BUFFER, mBuffers[2], mIndices);
        glBindVertexArray(0);
    }

    void draw() const
    {
        glUseProgram(mProgram);
        glBindVertexArray(mVertexArray);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_BLEND);
        glEnable(GL_LINE_SMOOTH); // part of the drawable's state; a tenth of the frame on a software driver
        glPrimitiveRestartIndex(Separator);
        glEnable(GL_PRIMITIVE_RESTART);
        glDrawElements(GL_LINE_STRIP_ADJACENCY, static_cast<GLsizei>(mIndices.size()), GL_UNSIGNED_INT, nullptr);
        glDisable(GL_PRIMITIVE_RESTART);
        glDisable(GL_LINE_SMOOTH);
        glBindVertexArray(0);
        glUseProgram(0);
    }

private:
    GLint location(const char* name) const { return glGetUniformLocation(mProgram, name); }

    template <typename Value>
    static void upload(GLenum target, GLuint buffer, const std::vector<Value>& values)
    {
        glBindBuffer(target, buffer);
        glBufferData(target, static_cast<GLsizeiptr>(values.size() * sizeof(Value)), values.data(), GL_STATIC_DRAW);
    }

    void fillVerticesAndIndices(const Strips& strips)
    {
        mVertices.resize(StripCount * PointCount);
        mIndices.resize(StripCount * (PointCount + 3));
        Vector3<float>* vertex = mVertices.data();
        std::uint32_t* index = mIndices.data();
        std::uint32_t next = 0;
        for (const std::vector<Vector2<float>>& points : strips) {
            for (const Vector2<float> point : points) {
                *vertex++ = {point.x, point.y, 0.0f};
            }
            index[0] = next;
            std::iota(index + 1, index + 1 + PointCount, next);
            next += static_cast<std::uint32_t>(PointCount);
            index[PointCount + 1] = next - 1;
            index[PointCount + 2] = Separator;
            index += PointCount + 3;
        }
    }

    // In simple loops over one strip at a time, which the compiler turns into operations on several points at once.
    void fillLengths(const Matrix4<float> transform)
    {
        mLengths.resize(mVertices.size());
        float x[PointCount + 1];
        float y[PointCount + 1];
        float z[PointCount + 1];
        double step[PointCount];
        float sum = 0.0f;
        for (std::size_t start = 0; start < mVertices.size(); start += PointCount) {
            for (std::size_t i = 0; i < PointCount; ++i) {
                const Vector3<float> v = transform * mVertices[start + i];
                x[i + 1] = v.x;
                y[i + 1] = v.y;
                z[i + 1] = v.z;
            }
            const std::size_t before = start == 0 ? 1 : 0;
            for (std::size_t i = before; i < PointCount; ++i) {
                const double dx = toPixels(x[i + 1], WidthPixels) - toPixels(x[i], WidthPixels);
                const double dy = toPixels(y[i + 1], HeightPixels) - toPixels(y[i], HeightPixels);
                const double dz = static_cast<double>(z[i + 1]) - static_cast<double>(z[i]);
                step[i] = std::sqrt(dx * dx + dy * dy + dz * dz);
            }
            step[0] = start == 0 ? 0.0 : step[0];
            for (std::size_t i = 0; i < PointCount; ++i) {
                sum += static_cast<float>(step[i]);
                mLengths[start + i] = sum;
            }
            x[0] = x[PointCount];
            y[0] = y[PointCount];
            z[0] = z[PointCount];
        }
    }

    static double toPixels(float clip, double size) { return (static_cast<double>(clip) + 1.0) * 0.5 * size; }

    GLuint mProgram = 0;
    GLuint mVertexArray = 0;
    std::array<GLuint, 3> mBuffers = {};
    std::vector<Vector3<float>> mVertices;
    std::vector<float> mLengths;
    std::vector<std::uint32_t> mIndices;
};

void fill(LineStrips& lines, const Strips& strips)
{
    lines.clearVertex();
    for (const std::vector<Vector2<float>>& points : strips) {
        lines.addLineStrip(points);
    }
}

void finishFrame()
{
    glFinish();
    glClear(GL_COLOR_BUFFER_BIT);
}

// Runs work(frame number) in an open window.
template <typename Work>
void measure(benchmark::State& state, Work work)
{
    if (!openWindow()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    std::size_t number = 0;
    for ([[maybe_unused]] auto _ : state) {
        work(number++);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(number * StripCount * PointCount));
    if (Window::takeGlError() != 0) {
        state.SkipWithError("an OpenGL error");
    }
}

void prepareOurs(benchmark::State& state)
{
    openWindow();
    LineStrips lines;
    measure(state, [&lines](std::size_t number) {
        fill(lines, frame(number));
        lines.setData();
    });
}

void prepareLimit(benchmark::State& state)
{
    openWindow();
    BareLines lines;
    measure(state, [&lines](std::size_t number) { lines.prepare(frame(number)); });
}

void frameOurs(benchmark::State& state)
{
    openWindow();
    LineStrips lines;
    lines.setLineWidth(LineWidth);
    measure(state, [&lines](std::size_t number) {
        fill(lines, frame(number));
        lines.render(-1);
        finishFrame();
    });
}

void frameLimit(benchmark::State& state)
{
    openWindow();
    BareLines lines;
    measure(state, [&lines](std::size_t number) {
        lines.prepare(frame(number));
        lines.draw();
        finishFrame();
    });
}

#ifdef TAVIK_PEER_CAIRO
// The same lines on the processor; a strip at a time, since Cairo takes longer for the crossings of all in one path.
void frameCairo(benchmark::State& state)
{
    const CairoPicture picture(WidthPixels, HeightPixels);
    cairo_t* cairo = picture.context();
    cairo_set_source_rgb(cairo, 1.0, 1.0, 1.0);
    cairo_set_line_width(cairo, static_cast<double>(LineWidth));
    std::size_t number = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (const std::vector<Vector2<float>>& points : frame(number++)) {
            for (const Vector2<float> point : points) {
                cairo_line_to(cairo, static_cast<double>(point.x), static_cast<double>(point.y));
            }
            cairo_stroke(cairo);
        }
        picture.finishFrame();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(number * StripCount * PointCount));
}
BENCHMARK(frameCairo)->Name("line_strips_frame/peer_cairo")->Unit(benchmark::kMillisecond);
#endif

BENCHMARK(prepareOurs)->Name("line_strips_prepare/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(prepareLimit)->Name("line_strips_prepare/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(frameOurs)->Name("line_strips_frame/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(frameLimit)->Name("line_strips_frame/limit")->Unit(benchmark::kMillisecond);

} // namespace
