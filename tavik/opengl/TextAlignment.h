#pragma once

namespace Tavik::OpenGL {

/// From a text's anchor to the left end of its baseline.
struct TextOffset
{
    double horizontal;
    double vertical;
};

/// Where a text starts that is aligned to its anchor.
/// @param alignment  0 to 2 left aligned, 3 to 5 centred, 6 to 8 right aligned, and within each three top, middle and
///                   baseline; any other value leaves the baseline's left end at the anchor
/// @param width  of the text, in the unit of the result
/// @param topDrop,middleDrop  how far the baseline lies below the anchor of a text aligned by its top or its middle
/// Safe from any thread.
TextOffset textOffset(int alignment, double width, double topDrop, double middleDrop);

} // namespace Tavik::OpenGL
