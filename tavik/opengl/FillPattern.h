#pragma once

#include <tavik/Export.h>

#include <array>
#include <cstdint>

namespace Tavik::OpenGL {

/// The 32 × 32 pattern through which a filled drawable draws, fixed to the window; set through the drawable's
/// setPattern().
class TAVIK_API FillPattern
{
public:
    /// Takes a pattern.
    /// @param pattern  128 bytes, which are copied: 32 rows, the lowest of the window first, each a 32-bit word in the
    ///                 machine's byte order whose lowest bit is the leftmost column; bits that are set are drawn. Null
    ///                 for no pattern.
    void set(const unsigned char* pattern);

    /// Whether there is a pattern.
    bool isUsed() const { return mIsUsed; }

    /// Hands itself to the active program, which is number 11.
    void activate() const;

private:
    static constexpr std::size_t RowCount = 32;

    bool mIsUsed = false;
    std::array<std::int32_t, RowCount> mRows = {};
};

} // namespace Tavik::OpenGL
