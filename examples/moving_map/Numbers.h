#pragma once

#include <string>

namespace MovingMap {

/// Takes the whole text as a decimal number, such as "-31.5".
/// @return false, with value left alone, for anything else and for a number outside [lowest, highest]
bool parseNumber(const std::string& text, double lowest, double highest, double& value);

/// The same for a whole number.
bool parseNumber(const std::string& text, int lowest, int highest, int& value);

} // namespace MovingMap
