#pragma once

#include <tavik/Export.h>

#include <cstdint>

/// @file
/// Character sets of the stroke font VectorFont.

namespace Tavik::OpenGL {

/// One record of a glyph. A set is one packed stream of them, glyph after glyph in the order of the character codes,
/// without an index; a stroke is drawn as straight lines from point to point.
struct CHARDEF_STRUCT
{
    float x; ///< font units, from the left end of the glyph's baseline
    float y; ///< font units, up from the baseline

    /// 1 a point of the stroke, 2 its last point, 3 the last point of stroke and glyph; records of any other value are
    /// skipped.
    std::int32_t operation;
};

/// A character set.
struct CHARSET_STRUCT
{
    std::int32_t identifier;      ///< for the set's maker; not read
    std::uint32_t characterCount; ///< glyphs, for the codes from 0; those beyond 128 are not read
    float metrics[6];             ///< for the set's maker; not read
    float advance;                ///< font units from one character to the next
    const CHARDEF_STRUCT* data;   ///< the first record of the first glyph; null for no glyphs
};

static_assert(sizeof(CHARDEF_STRUCT) == 12, "records are packed");

/// The set that VectorFont draws with where it is given no other: ASCII in the codes 32 to 127, and the map symbols and
/// signs of VectorSymbol below.
///
/// Capitals stand on the baseline, 13.69 high and 8.92 wide with bevelled corners; small letters are 9.13 high, and
/// descenders reach down to −4.56. All characters advance by 13.12016.
///
/// Safe from any thread.
TAVIK_API const CHARSET_STRUCT& builtinCharset();

} // namespace Tavik::OpenGL
