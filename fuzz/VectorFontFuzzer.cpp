// Foreign character sets of the stroke font: reads the set and adds a text to a batch.
//
// Input: character count and advance, four bytes each, then the records of the glyphs, 12 bytes each, then the text.

#include <fuzz/Require.h>
#include <tavik/opengl/VectorFont.h>

#include <cstring>
#include <string>
#include <vector>

using namespace Tavik::OpenGL;
using Tavik::Fuzz::require;

namespace {

constexpr std::size_t HeadSize = 8;

// The batch must be strips of existing points.
void checkBatch(const VectorFont& font)
{
    const std::size_t count = font.indexCount();
    require((count == 0) == (font.vertexCount() == 0));
    require(count == 0 || font.indices()[count - 1] == VectorFont::StripSeparator);
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < count; ++i) {
        require(font.indices()[i] == VectorFont::StripSeparator || font.indices()[i] == next++);
    }
    require(next == font.vertexCount());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < HeadSize) {
        return 0;
    }
    CHARSET_STRUCT charset = {};
    std::memcpy(&charset.characterCount, data, sizeof(charset.characterCount));
    std::memcpy(&charset.advance, data + 4, sizeof(charset.advance));
    const std::size_t recordCount = (size - HeadSize) / sizeof(CHARDEF_STRUCT);
    // As many more as a glyph without an end reads; one byte beyond them must not be touched.
    std::vector<CHARDEF_STRUCT> records(recordCount + VectorFont::MaximumRecordsPerGlyph);
    if (recordCount > 0) {
        std::memcpy(records.data(), data + HeadSize, recordCount * sizeof(CHARDEF_STRUCT));
    }
    charset.data = records.data();

    VectorFont font;
    font.vectorFontInit(&charset);
    const std::size_t textStart = HeadSize + recordCount * sizeof(CHARDEF_STRUCT);
    std::string text(data + textStart, data + size);
    for (int code = 0; code < 256; ++code) {
        text += static_cast<char>(code);
    }
    Tavik::Math::Matrix4<float> place;
    place.translate(10.0f, 20.0f, 0.0f);
    font.addText(text, place, 14.0, VectorFont::MiddleCenter);
    checkBatch(font);
    font.drawChar(static_cast<int>(charset.characterCount), records.data());
    font.addText(text, place, static_cast<double>(charset.advance), static_cast<VectorFont::Alignment>(size % 9));
    checkBatch(font);
    font.clear();
    font.clearVertex();
    return 0;
}
