#pragma once

#include <tavik/Export.h>

#include <string>

/// @file
/// Texts of fields with separators between them: "a,b,c" with the delimiters "," has the fields a, b and c.
///
/// Each character of the delimiters ends a field, and the next one starts as many characters further on as there are
/// delimiters. With one delimiter this is the usual rule; with more, such as ", ", the whole separator is passed over.
/// Safe from any thread.
namespace Tavik::Misc {

/// Number of separators, one less than there are fields; 0 when either text is empty.
TAVIK_API int StringCount(const std::string& text, const std::string& delimiters);

/// The fields first to last, with all the delimiters between each two.
///
///     StringSection("/data/N47E011.DT1", "/", -1, -1) // "N47E011.DT1"
///     StringSection("a,b,c", ",", 1, 9)               // "b,c"
///
/// @param text,delimiters  see above
/// @param first,last  from 0; negative ones count from the end, -1 being the last field. A first before the beginning
///                    means field 0, a last behind the end the last field, a last before first means first alone.
/// @return empty when first is behind the last field
TAVIK_API std::string StringSection(const std::string& text, const std::string& delimiters, int first, int last);

} // namespace Tavik::Misc
