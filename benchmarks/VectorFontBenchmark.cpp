// 500 labels of 12 characters in the stroke font: their layout, and drawing them.
//
// The limit of the layout does the least work that it needs: for each character a table look-up, for each point of its
// strokes a transform and a write, into arrays that are kept. The limit of drawing makes the same OpenGL calls by hand.
// HarfBuzz, where installed, shapes the same labels in an outline font.
//
// A software driver spreads drawing over threads of its own, whose time is not ours; it is told to have none.

#include "BenchmarkWindow.h"

#include <support/Window.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/VectorFont.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_HARFBUZZ
#include <support/Fonts.h>

#include <hb.h>
#endif

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Math::Vector3;
using Tavik::Support::Window;

namespace {

constexpr int WidthPixels = 1280;
constexpr int HeightPixels = 800;
constexpr int LabelCount = 500;
constexpr std::size_t LabelLength = 12;
constexpr double SizePixels = 12.0;
constexpr std::uint32_t Separator = VectorFont::StripSeparator;

struct Label
{
    std::string text;
    Matrix4<float> place;
};

std::vector<Label> makeLabels()
{
    std::vector<Label> labels;
    for (int i = 0; i < LabelCount; ++i) {
        char text[32];
        std::snprintf(text, sizeof(text), "%c%cKJ %03d.%02d%c", 'A' + i % 26, 'A' + i % 23, 100 + i, i % 100,
                      'a' + i % 26);
        const int row = i / 10;
        Label label = {text, {}};
        label.place.translate(static_cast<float>(30 + i % 10 * 125), static_cast<float>(10 + row * 15), 0.0f);
        labels.push_back(label);
    }
    return labels;
}

const std::vector<Label>& labels()
{
    static const std::vector<Label> all = makeLabels();
    return all;
}

void fill(VectorFont& font)
{
    font.clearVertex();
    for (const Label& label : labels()) {
        font.addText(label.text, label.place, SizePixels, VectorFont::MiddleCenter);
    }
}

class BareLabels
{
public:
    BareLabels()
    {
        const CHARDEF_STRUCT* record = builtinCharset().data;
        for (Glyph& glyph : mGlyphs) {
            glyph.first = record;
            do {
                ++glyph.count;
            } while (record++->operation != 3);
        }
    }

    void layOut()
    {
        mVertices.resize(MaximumPoints);
        mIndices.resize(2 * MaximumPoints);
        Vector3<float>* vertex = mVertices.data();
        std::uint32_t* index = mIndices.data();
        std::uint32_t next = 0;
        const float scale = static_cast<float>(SizePixels / 15.97);
        const float advance = builtinCharset().advance;
        for (const Label& label : labels()) {
            const Matrix4<float>& m = label.place;
            float penX = -0.5f * advance * static_cast<float>(label.text.size());
            const float penY = -7.985f;
            for (const char character : label.text) {
                const Glyph& glyph = mGlyphs[static_cast<unsigned char>(character)];
                for (std::uint32_t i = 0; i < glyph.count; ++i) {
                    const CHARDEF_STRUCT& record = glyph.first[i];
                    *vertex++ = m * Vector3<float>(scale * (record.x + penX), scale * (record.y + penY), 0.0f);
                    index[0] = next++;
                    index[1] = Separator; // kept behind the last point of a stroke only
                    index += record.operation == 1 ? 1 : 2;
                }
                penX += advance;
            }
        }
        mVertexCount = next;
        mIndexCount = static_cast<std::size_t>(index - mIndices.data());
    }

    void upload()
    {
        glGenVertexArrays(1, &mVertexArray);
        glGenBuffers(2, mBuffers.data());
        glBindVertexArray(mVertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffers[0]);
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(mVertexCount * sizeof(mVertices[0])), mVertices.data(),
                     GL_STATIC_DRAW);
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mBuffers[1]);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(mIndexCount * sizeof(mIndices[0])),
                     mIndices.data(), GL_STATIC_DRAW);
        GlHandler& gl = GlHandler::instance();
        gl.activateShader(7);
        mProgram = gl.activeShaderHandle();
        gl.deactivateShader();
        glUseProgram(mProgram);
        glUniform4f(glGetUniformLocation(mProgram, "color"), 1.0f, 1.0f, 1.0f, 1.0f);
        glUniform3f(glGetUniformLocation(mProgram, "offset"), 0.0f, 0.0f, 0.0f);
        glUniformMatrix4fv(glGetUniformLocation(mProgram, "mvp"), 1, GL_FALSE, MatrixGet().data());
        glUseProgram(0);
        glBindVertexArray(0);
    }

    void draw() const
    {
        glUseProgram(mProgram);
        glBindVertexArray(mVertexArray);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_BLEND);
        glEnable(GL_LINE_SMOOTH);
        glPrimitiveRestartIndex(Separator);
        glEnable(GL_PRIMITIVE_RESTART);
        glDrawElements(GL_LINE_STRIP, static_cast<GLsizei>(mIndexCount), GL_UNSIGNED_INT, nullptr);
        glDisable(GL_PRIMITIVE_RESTART);
        glDisable(GL_LINE_SMOOTH);
        glBindVertexArray(0);
        glUseProgram(0);
    }

    const std::vector<Vector3<float>>& vertices() const { return mVertices; }
    std::size_t vertexCount() const { return mVertexCount; }

private:
    static constexpr std::size_t MaximumPoints = LabelCount * LabelLength * 19; // of the largest glyph

    struct Glyph
    {
        const CHARDEF_STRUCT* first = nullptr;
        std::uint32_t count = 0;
    };

    std::array<Glyph, VectorFont::CharacterCount> mGlyphs;
    std::vector<Vector3<float>> mVertices;
    std::vector<std::uint32_t> mIndices;
    std::size_t mVertexCount = 0;
    std::size_t mIndexCount = 0;
    GLuint mProgram = 0;
    GLuint mVertexArray = 0;
    std::array<GLuint, 2> mBuffers = {};
};

void layoutOurs(benchmark::State& state)
{
    VectorFont font;
    for ([[maybe_unused]] auto _ : state) {
        fill(font);
        benchmark::DoNotOptimize(font.vertices());
        benchmark::ClobberMemory();
    }
    state.counters["points"] = static_cast<double>(font.vertexCount());
}

void layoutLimit(benchmark::State& state)
{
    BareLabels bare;
    for ([[maybe_unused]] auto _ : state) {
        bare.layOut();
        benchmark::DoNotOptimize(bare.vertices().data());
        benchmark::ClobberMemory();
    }
    state.counters["points"] = static_cast<double>(bare.vertexCount());
}

#ifdef TAVIK_PEER_HARFBUZZ
void layoutHarfBuzz(benchmark::State& state)
{
    hb_blob_t* file = hb_blob_create_from_file_or_fail(Tavik::Support::sansFontPath());
    if (file == nullptr) {
        state.SkipWithError("no font");
        return;
    }
    hb_face_t* face = hb_face_create(file, 0);
    hb_font_t* font = hb_font_create(face);
    hb_buffer_t* buffer = hb_buffer_create();
    for ([[maybe_unused]] auto _ : state) {
        for (const Label& label : labels()) {
            hb_buffer_clear_contents(buffer);
            hb_buffer_add_latin1(buffer, reinterpret_cast<const std::uint8_t*>(label.text.data()), LabelLength, 0,
                                 LabelLength);
            hb_buffer_set_direction(buffer, HB_DIRECTION_LTR);
            hb_buffer_set_script(buffer, HB_SCRIPT_LATIN);
            hb_shape(font, buffer, nullptr, 0);
            benchmark::DoNotOptimize(hb_buffer_get_glyph_positions(buffer, nullptr));
        }
    }
    hb_buffer_destroy(buffer);
    hb_font_destroy(font);
    hb_face_destroy(face);
    hb_blob_destroy(file);
}
#endif

bool openWindow()
{
    if (!openBenchmarkWindow(WidthPixels, HeightPixels)) {
        return false;
    }
    glLineWidth(1.5f);
    return true;
}

// Runs draw() in an open window.
template <typename Draw>
void measureFrames(benchmark::State& state, Draw draw)
{
    for ([[maybe_unused]] auto _ : state) {
        draw();
        glFinish();
        glClear(GL_COLOR_BUFFER_BIT);
    }
    if (Window::takeGlError() != 0) {
        state.SkipWithError("an OpenGL error");
    }
}

void drawOurs(benchmark::State& state)
{
    if (!openWindow()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    VectorFont font;
    fill(font);
    measureFrames(state, [&font] { font.render(); });
}

void drawLimit(benchmark::State& state)
{
    if (!openWindow()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    BareLabels bare;
    bare.layOut();
    bare.upload();
    measureFrames(state, [&bare] { bare.draw(); });
}

BENCHMARK(layoutOurs)->Name("vector_font_layout/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(layoutLimit)->Name("vector_font_layout/limit")->Unit(benchmark::kMicrosecond);
#ifdef TAVIK_PEER_HARFBUZZ
BENCHMARK(layoutHarfBuzz)->Name("vector_font_layout/peer_harfbuzz")->Unit(benchmark::kMicrosecond);
#endif
BENCHMARK(drawOurs)->Name("vector_font_draw/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(drawLimit)->Name("vector_font_draw/limit")->Unit(benchmark::kMillisecond);

} // namespace
