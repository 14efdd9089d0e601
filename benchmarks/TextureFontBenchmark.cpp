// 500 labels of 12 characters: their layout alone, and the whole frame with labels that change.
//
// The limit of the layout looks each character up and writes its quad, for labels that are moved and not turned; its
// peer shapes the same labels with HarfBuzz. The limit of the frame adds bare OpenGL with the same program.
//
// A software driver spreads drawing over threads of its own, whose time is not ours; it is told to have none.

#include "BenchmarkWindow.h"

#include <support/Fonts.h>
#include <support/Window.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/MatrixStack.h>
#include <tavik/opengl/TextureFont.h>
#include <tavik/opengl/TextureFontSdf.h>

#include <GL/gl.h>
#include <GL/glext.h>
#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_HARFBUZZ
#include <hb.h>
#endif

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Math::Matrix4;
using Tavik::Math::Vector2;
using Tavik::Math::Vector3;
using Tavik::Support::Window;

namespace {

constexpr std::size_t LabelCount = 500;
constexpr int WidthPixels = 1280;
constexpr int HeightPixels = 800;
constexpr int TextSize = 16; // pixels
constexpr std::uint32_t Separator = 0xFFFFFFFF;

struct Label
{
    std::string text;
    Vector2<float> position;
};

const std::vector<Label>& labels()
{
    static const std::vector<Label> made = [] {
        const char* names[] = {"NORKU FL 245", "TUSKA124.850", "Elbe 14R/32L", "BAMAS VOR117"};
        std::vector<Label> result;
        for (std::size_t i = 0; i < LabelCount; ++i) {
            const std::size_t row = i / 10;
            result.push_back(
                {names[i % 4], {static_cast<float>(i % 10) * 125.0f + 5.0f, static_cast<float>(row) * 15.8f + 4.0f}});
        }
        return result;
    }();
    return made;
}

bool openWindow()
{
    return openBenchmarkWindow(WidthPixels, HeightPixels);
}

std::vector<char> fontData()
{
    std::ifstream file(Tavik::Support::sansFontPath(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <typename Font>
void fill(Font& font)
{
    font.clearVertex();
    Matrix4<float> m;
    for (const Label& label : labels()) {
        m[12] = label.position.x;
        m[13] = label.position.y;
        font.addText(label.text, m, Font::BottomLeft);
    }
}

// The least that is needed: quads of the glyphs in arrays that are kept, and the calls that draw them.
template <typename Font>
class BareText
{
public:
    explicit BareText(unsigned int program) : mProgramId(program)
    {
        Font font;
        const std::vector<char> data = fontData();
        font.setSize(TextSize);
        mTexture = font.createGlyphTexture(data.data(), static_cast<int>(data.size()), mType);
        mScale = static_cast<float>(TextSize) / static_cast<float>(std::max(mType.pixelSize, 1));
        mVertices.resize(LabelCount * 12 * 4);
        mTextureCoordinates.resize(mVertices.size());
        for (std::uint32_t i = 0; i < mVertices.size(); i += 4) {
            mIndices.insert(mIndices.end(), {i, i + 1, i + 2, i + 3, Separator});
        }
        createObjects();
    }

    ~BareText()
    {
        glDeleteTextures(1, &mTexture);
        glDeleteBuffers(3, mBuffers.data());
        glDeleteVertexArrays(1, &mVertexArray);
    }

    BareText(const BareText&) = delete;
    BareText& operator=(const BareText&) = delete;

    bool hasFont() const { return mTexture != 0; }

    void layOut()
    {
        Vector3<float>* vertex = mVertices.data();
        Vector2<float>* coordinate = mTextureCoordinates.data();
        for (const Label& label : labels()) {
            float x = label.position.x;
            const float y = label.position.y;
            for (const char c : label.text) {
                const GlyphRecord& glyph = mType.glyphs[static_cast<unsigned char>(c) - 32u];
                for (std::size_t i = 0; i < 4; ++i) {
                    vertex[i] = {x + glyph.corners[i].x * mScale, y + glyph.corners[i].y * mScale, 0.0f};
                }
                coordinate[0] = glyph.texture[0];
                coordinate[1] = {glyph.texture[1].x, glyph.texture[0].y};
                coordinate[2] = glyph.texture[1];
                coordinate[3] = {glyph.texture[0].x, glyph.texture[1].y};
                x += glyph.advance * mScale;
                const std::size_t written = glyph.hasInk() ? 4 : 0;
                vertex += written;
                coordinate += written;
            }
        }
        mVertexCount = static_cast<std::size_t>(vertex - mVertices.data());
    }

    void draw() const
    {
        glBindVertexArray(mVertexArray);
        upload(GL_ARRAY_BUFFER, mBuffers[0], mVertices.data(), mVertexCount * sizeof(mVertices[0]));
        upload(GL_ARRAY_BUFFER, mBuffers[1], mTextureCoordinates.data(), mVertexCount * sizeof(mTextureCoordinates[0]));
        glUseProgram(mProgram);
        glUniform4f(location("color"), 1.0f, 1.0f, 1.0f, 1.0f);
        glUniform3f(location("offset"), 0.0f, 0.0f, 0.0f);
        glUniformMatrix4fv(location("mvp"), 1, GL_FALSE, MatrixGet().data());
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_BLEND);
        glBindTexture(GL_TEXTURE_2D, mTexture);
        glPrimitiveRestartIndex(Separator);
        glEnable(GL_PRIMITIVE_RESTART);
        glDrawElements(GL_TRIANGLE_FAN, static_cast<GLsizei>(mVertexCount / 4 * 5), GL_UNSIGNED_INT, nullptr);
        glDisable(GL_PRIMITIVE_RESTART);
        glBindTexture(GL_TEXTURE_2D, 0);
        glBindVertexArray(0);
        glUseProgram(0);
    }

private:
    void createObjects()
    {
        glGenVertexArrays(1, &mVertexArray);
        glGenBuffers(3, mBuffers.data());
        glBindVertexArray(mVertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffers[0]);
        glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(0);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffers[1]);
        glVertexAttribPointer(2, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
        glEnableVertexAttribArray(2);
        upload(GL_ELEMENT_ARRAY_BUFFER, mBuffers[2], mIndices.data(), mIndices.size() * sizeof(mIndices[0]));
        glBindVertexArray(0);
        GlHandler& gl = GlHandler::instance();
        gl.activateShader(mProgramId);
        mProgram = gl.activeShaderHandle();
        gl.deactivateShader();
    }

    GLint location(const char* name) const { return glGetUniformLocation(mProgram, name); }

    static void upload(GLenum target, GLuint buffer, const void* data, std::size_t size)
    {
        glBindBuffer(target, buffer);
        glBufferData(target, static_cast<GLsizeiptr>(size), data, GL_STATIC_DRAW);
    }

    unsigned int mProgramId;
    GLuint mProgram = 0;
    GLuint mTexture = 0;
    GLuint mVertexArray = 0;
    std::array<GLuint, 3> mBuffers = {};
    FontType mType;
    float mScale = 1.0f;
    std::vector<Vector3<float>> mVertices;
    std::vector<Vector2<float>> mTextureCoordinates;
    std::vector<std::uint32_t> mIndices;
    std::size_t mVertexCount = 0;
};

template <typename Work>
void measure(benchmark::State& state, bool isReady, Work work)
{
    if (!isReady) {
        state.SkipWithError("no font");
        return;
    }
    work(); // buffers grow
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

template <typename Font>
void layoutOurs(benchmark::State& state)
{
    Font font;
    const bool isReady =
        openWindow() && GlHandler::instance().isLoaded() && font.load(Tavik::Support::sansFontPath(), TextSize);
    measure(state, isReady, [&font] { fill(font); });
}

template <typename Font, unsigned int Program>
void layoutLimit(benchmark::State& state)
{
    openWindow();
    BareText<Font> text(Program);
    measure(state, text.hasFont(), [&text] { text.layOut(); });
}

template <typename Font>
void frameOurs(benchmark::State& state)
{
    Font font;
    const bool isReady =
        openWindow() && GlHandler::instance().isLoaded() && font.load(Tavik::Support::sansFontPath(), TextSize);
    measure(state, isReady, [&font] {
        fill(font);
        font.render();
        finishFrame();
    });
}

template <typename Font, unsigned int Program>
void frameLimit(benchmark::State& state)
{
    openWindow();
    BareText<Font> text(Program);
    measure(state, text.hasFont(), [&text] {
        text.layOut();
        text.draw();
        finishFrame();
    });
}

#ifdef TAVIK_PEER_HARFBUZZ
void layoutHarfBuzz(benchmark::State& state)
{
    hb_blob_t* blob = hb_blob_create_from_file(Tavik::Support::sansFontPath());
    hb_face_t* face = hb_face_create(blob, 0);
    hb_font_t* font = hb_font_create(face);
    hb_font_set_scale(font, TextSize * 64, TextSize * 64);
    hb_buffer_t* buffer = hb_buffer_create();
    measure(state, hb_face_get_glyph_count(face) > 0, [&] {
        for (const Label& label : labels()) {
            hb_buffer_clear_contents(buffer);
            hb_buffer_add_latin1(buffer, reinterpret_cast<const std::uint8_t*>(label.text.data()),
                                 static_cast<int>(label.text.size()), 0, -1);
            hb_buffer_guess_segment_properties(buffer);
            hb_shape(font, buffer, nullptr, 0);
        }
    });
    hb_buffer_destroy(buffer);
    hb_font_destroy(font);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
}

BENCHMARK(layoutHarfBuzz)->Name("text_layout_coverage/peer_harfbuzz")->Unit(benchmark::kMicrosecond);
BENCHMARK(layoutHarfBuzz)->Name("text_layout_sdf/peer_harfbuzz")->Unit(benchmark::kMicrosecond);
#endif

BENCHMARK(layoutOurs<TextureFont>)->Name("text_layout_coverage/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(layoutLimit<TextureFont, 5>)->Name("text_layout_coverage/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(layoutOurs<TextureFontSdf>)->Name("text_layout_sdf/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(layoutLimit<TextureFontSdf, 6>)->Name("text_layout_sdf/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(frameOurs<TextureFont>)->Name("text_frame_coverage/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(frameLimit<TextureFont, 5>)->Name("text_frame_coverage/limit")->Unit(benchmark::kMillisecond);
BENCHMARK(frameOurs<TextureFontSdf>)->Name("text_frame_sdf/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(frameLimit<TextureFontSdf, 6>)->Name("text_frame_sdf/limit")->Unit(benchmark::kMillisecond);

} // namespace
