// Filled areas: cutting one into triangles, drawing fifty, and what one drawable costs in each frame beside its pixels.
//
// The limits do by hand what the task needs: GLU with callbacks that write to arrays which are kept, and bare OpenGL
// calls for the same triangles with the same program.
//
// A software driver spreads drawing over threads of its own, whose time is not ours; it is told to have none.

#include "BenchmarkWindow.h"

#include <support/Window.h>
#include <tavik/opengl/Circle.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/Lines.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/Polygon.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>
#include <benchmark/benchmark.h>
#ifdef TAVIK_PEER_CAIRO
#include "CairoPicture.h"
#endif

#include <array>
#include <cmath>
#include <deque>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Support::Window;

namespace {

constexpr int WidthPixels = 640;
constexpr int HeightPixels = 400;
constexpr std::size_t CornerCount = 200;
constexpr int PolygonCount = 50;
constexpr int DrawingsPerFrame = 100;
constexpr double Pi = 3.14159265358979323846;

using Outline = std::vector<Vector2<float>>;

bool openWindow()
{
    return openBenchmarkWindow(WidthPixels, HeightPixels);
}

// A lake with bays: every radius differs from its neighbours'.
Outline makeOutline(double x, double y, double radius)
{
    Outline outline;
    for (std::size_t i = 0; i < CornerCount; ++i) {
        const double angle = 2.0 * Pi * static_cast<double>(i) / CornerCount;
        const double r = radius * (0.7 + 0.2 * std::sin(7.0 * angle) + 0.1 * std::sin(61.0 * angle));
        outline.emplace_back(static_cast<float>(x + r * std::sin(angle)), static_cast<float>(y + r * std::cos(angle)));
    }
    return outline;
}

std::vector<Outline> makeOutlines()
{
    constexpr int Columns = 10;
    std::vector<Outline> outlines;
    for (int i = 0; i < PolygonCount; ++i) {
        const int column = i % Columns;
        const int row = i / Columns;
        outlines.push_back(makeOutline(32.0 + 64.0 * column, 40.0 + 80.0 * row, 40.0));
    }
    return outlines;
}

Tesselator::TessPolygon cut(Tesselator& tesselator, const Outline& outline)
{
    tesselator.clearVertex();
    for (const Vector2<float> corner : outline) {
        tesselator.addVertex(corner);
    }
    return tesselator.tesselate();
}

// GLU alone.
class BareTesselator
{
public:
    struct Primitive
    {
        GLenum mode;
        std::size_t first;
    };

    void cut(const Outline& outline)
    {
        mVertices.clear();
        mPrimitives.clear();
        mCombined.clear();
        mCorners.resize(outline.size());
        GLUtesselator* tess = gluNewTess();
        gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
        gluTessCallback(tess, GLU_TESS_BEGIN_DATA, reinterpret_cast<_GLUfuncptr>(begin));
        gluTessCallback(tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<_GLUfuncptr>(vertex));
        gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<_GLUfuncptr>(combine));
        gluTessBeginPolygon(tess, this);
        gluTessBeginContour(tess);
        for (std::size_t i = 0; i < outline.size(); ++i) {
            mCorners[i] = {outline[i].x, outline[i].y, 0.0};
            gluTessVertex(tess, mCorners[i].data(), mCorners[i].data());
        }
        gluTessEndContour(tess);
        gluTessEndPolygon(tess);
        gluDeleteTess(tess);
    }

    const std::vector<Vector3<float>>& vertices() const { return mVertices; }
    const std::vector<Primitive>& primitives() const { return mPrimitives; }

private:
    static void begin(GLenum mode, void* self)
    {
        auto* tesselator = static_cast<BareTesselator*>(self);
        tesselator->mPrimitives.push_back({mode, tesselator->mVertices.size()});
    }

    static void vertex(void* data, void* self)
    {
        const auto* xyz = static_cast<double*>(data);
        static_cast<BareTesselator*>(self)->mVertices.emplace_back(
            static_cast<float>(xyz[0]), static_cast<float>(xyz[1]), static_cast<float>(xyz[2]));
    }

    static void combine(double* xyz, void** /*neighbours*/, float* /*weights*/, void** out, void* self)
    {
        auto* tesselator = static_cast<BareTesselator*>(self);
        tesselator->mCombined.push_back({xyz[0], xyz[1], xyz[2]});
        *out = tesselator->mCombined.back().data();
    }

    std::vector<std::array<double, 3>> mCorners;
    std::deque<std::array<double, 3>> mCombined;
    std::vector<Vector3<float>> mVertices;
    std::vector<Primitive> mPrimitives;
};

// One program with its uniforms and one vertex array: what a drawing needs of OpenGL in each frame, and no more.
class BareDrawable
{
public:
    explicit BareDrawable(unsigned int program) : mProgram(programName(program))
    {
        glGenVertexArrays(1, &mVertexArray);
        glGenBuffers(1, &mBuffer);
    }

    ~BareDrawable()
    {
        glDeleteBuffers(1, &mBuffer);
        glDeleteVertexArrays(1, &mVertexArray);
    }

    BareDrawable(const BareDrawable&) = delete;
    BareDrawable& operator=(const BareDrawable&) = delete;

    void upload(const std::vector<Vector3<float>>& vertices) const
    {
        glBindVertexArray(mVertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer);
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size() * sizeof(vertices[0])), vertices.data(),
                     GL_STATIC_DRAW);
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(0);
        glBindVertexArray(0);
    }

    GLint location(const char* name) const { return glGetUniformLocation(mProgram, name); }

    template <typename SetUniforms, typename Draw>
    void draw(SetUniforms setUniforms, Draw drawPrimitives) const
    {
        glUseProgram(mProgram);
        setUniforms();
        glBindVertexArray(mVertexArray);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_BLEND);
        glUniformMatrix4fv(mMatrix, 1, GL_FALSE, MatrixGet().data());
        drawPrimitives();
        glBindVertexArray(0);
        glUseProgram(0);
    }

private:
    static GLuint programName(unsigned int program)
    {
        GlHandler& gl = GlHandler::instance();
        gl.activateShader(program);
        const GLuint name = gl.activeShaderHandle();
        gl.deactivateShader();
        return name;
    }

    GLuint mProgram;
    GLuint mVertexArray = 0;
    GLuint mBuffer = 0;
    GLint mMatrix = location("mvp");
};

// Runs work() in the window.
template <typename Work>
void measure(benchmark::State& state, Work work)
{
    if (!GlHandler::instance().isLoaded()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        work();
    }
    if (Window::takeGlError() != 0) {
        state.SkipWithError("an OpenGL error");
    }
}

void finishFrame()
{
    glFinish();
    glClear(GL_COLOR_BUFFER_BIT);
}

void tesselateOurs(benchmark::State& state)
{
    const Outline outline = makeOutline(0.0, 0.0, 100.0);
    Tesselator tesselator;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(cut(tesselator, outline).vertices().data());
    }
}

void tesselateLimit(benchmark::State& state)
{
    const Outline outline = makeOutline(0.0, 0.0, 100.0);
    BareTesselator tesselator;
    for ([[maybe_unused]] auto _ : state) {
        tesselator.cut(outline);
        benchmark::DoNotOptimize(tesselator.vertices().data());
    }
}

void polygonsOurs(benchmark::State& state)
{
    openWindow();
    Polygon polygon;
    polygon.setColor({0.2f, 0.4f, 1.0f, 0.5f});
    Tesselator tesselator;
    for (const Outline& outline : makeOutlines()) {
        polygon.addTessPolygon(cut(tesselator, outline));
    }
    measure(state, [&] {
        polygon.render();
        finishFrame();
    });
}

// The same triangles, the primitives of one kind at once.
void polygonsLimit(benchmark::State& state)
{
    openWindow();
    constexpr std::size_t ModeCount = 3; // triangles, strips and fans, which have successive numbers
    std::array<std::vector<GLint>, ModeCount> firsts;
    std::array<std::vector<GLsizei>, ModeCount> counts;
    std::vector<Vector3<float>> vertices;
    BareTesselator tesselator;
    for (const Outline& outline : makeOutlines()) {
        tesselator.cut(outline);
        const auto& primitives = tesselator.primitives();
        for (std::size_t i = 0; i < primitives.size(); ++i) {
            const std::size_t end = i + 1 < primitives.size() ? primitives[i + 1].first : tesselator.vertices().size();
            firsts[primitives[i].mode - GL_TRIANGLES].push_back(
                static_cast<GLint>(vertices.size() + primitives[i].first));
            counts[primitives[i].mode - GL_TRIANGLES].push_back(static_cast<GLsizei>(end - primitives[i].first));
        }
        vertices.insert(vertices.end(), tesselator.vertices().begin(), tesselator.vertices().end());
    }
    const BareDrawable polygons(11);
    polygons.upload(vertices);
    const GLint color = polygons.location("color");
    const GLint stippleUse = polygons.location("stippleUse");
    measure(state, [&] {
        polygons.draw(
            [&] {
                glUniform4f(color, 0.2f, 0.4f, 1.0f, 0.5f);
                glUniform1i(stippleUse, 0);
            },
            [&] {
                for (std::size_t mode = 0; mode < ModeCount; ++mode) {
                    glMultiDrawArrays(GL_TRIANGLES + static_cast<GLenum>(mode), firsts[mode].data(),
                                      counts[mode].data(), static_cast<GLsizei>(firsts[mode].size()));
                }
            });
        finishFrame();
    });
}

#ifdef TAVIK_PEER_CAIRO
// The same outlines on the processor. Edges are hard, as those of the other two are.
void polygonsCairo(benchmark::State& state)
{
    const CairoPicture picture(WidthPixels, HeightPixels);
    cairo_t* cairo = picture.context();
    cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
    cairo_set_source_rgba(cairo, 0.2, 0.4, 1.0, 0.5);
    const std::vector<Outline> outlines = makeOutlines();
    for ([[maybe_unused]] auto _ : state) {
        for (const Outline& outline : outlines) {
            for (const Vector2<float> corner : outline) {
                cairo_line_to(cairo, static_cast<double>(corner.x), static_cast<double>(corner.y));
            }
            cairo_fill(cairo);
        }
        picture.finishFrame();
    }
}
BENCHMARK(polygonsCairo)->Name("polygons_50/peer_cairo")->Unit(benchmark::kMicrosecond);
#endif

// What a drawable of hardly any pixels takes in each frame, beside the rasteriser's share.
template <typename Draw>
void measureFixedCost(benchmark::State& state, Draw draw)
{
    measure(state, [&] {
        for (int i = 0; i < DrawingsPerFrame; ++i) {
            draw();
        }
        finishFrame();
    });
    state.SetItemsProcessed(state.iterations() * DrawingsPerFrame);
}

const std::vector<Vector3<float>> SmallTriangle = {{1.0f, 1.0f, 0.0f}, {3.0f, 1.0f, 0.0f}, {1.0f, 3.0f, 0.0f}};

void circleOurs(benchmark::State& state)
{
    openWindow();
    Circle circle;
    circle.setCircle(2.0, 3);
    measureFixedCost(state, [&] { circle.render(); });
}

void circleLimit(benchmark::State& state)
{
    openWindow();
    const BareDrawable circle(2);
    circle.upload(
        {{0.0f, 0.0f, 0.0f}, {0.0f, 2.0f, 0.0f}, {1.7f, -1.0f, 0.0f}, {-1.7f, -1.0f, 0.0f}, {0.0f, 2.0f, 0.0f}});
    const GLint color = circle.location("color");
    measureFixedCost(state, [&] {
        circle.draw([&] { glUniform4f(color, 1.0f, 1.0f, 1.0f, 1.0f); }, [] { glDrawArrays(GL_TRIANGLE_FAN, 0, 5); });
    });
}

void linesOurs(benchmark::State& state)
{
    openWindow();
    Lines lines;
    lines.addVertex(SmallTriangle[0]);
    lines.addVertex(SmallTriangle[1]);
    measureFixedCost(state, [&] { lines.render(); });
}

void linesLimit(benchmark::State& state)
{
    openWindow();
    const BareDrawable lines(8);
    lines.upload(SmallTriangle);
    const GLint color = lines.location("color");
    const GLint width = lines.location("lineWidth");
    const GLint viewPort = lines.location("viewPort");
    const GLint antiAlias = lines.location("antialias");
    const GLint stipple = lines.location("lineStipple");
    measureFixedCost(state, [&] {
        lines.draw(
            [&] {
                glUniform1f(width, 1.0f);
                glUniform4f(color, 1.0f, 1.0f, 1.0f, 1.0f);
                glUniform1i(antiAlias, 1);
                glUniform1i(stipple, 0);
                glUniform2f(viewPort, WidthPixels, HeightPixels);
                glEnable(GL_LINE_SMOOTH);
            },
            [] {
                glDrawArrays(GL_LINES, 0, 2);
                glDisable(GL_LINE_SMOOTH);
            });
    });
}

BENCHMARK(circleOurs)->Name("circle_fixed_cost/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(circleLimit)->Name("circle_fixed_cost/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(linesOurs)->Name("lines_fixed_cost/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(linesLimit)->Name("lines_fixed_cost/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(tesselateOurs)->Name("tesselate_200/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(tesselateLimit)->Name("tesselate_200/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(polygonsOurs)->Name("polygons_50/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(polygonsLimit)->Name("polygons_50/limit")->Unit(benchmark::kMicrosecond);

} // namespace
