#include <support/Fonts.h>

namespace Tavik::Support {

const char* sansFontPath()
{
    return TAVIK_SANS_FONT;
}

const char* sansBoldFontPath()
{
    return TAVIK_SANS_BOLD_FONT;
}

} // namespace Tavik::Support
