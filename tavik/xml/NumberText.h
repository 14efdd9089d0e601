#pragma once

#include <string>

/// Numbers as text, with a decimal point whatever the locale of the process.
namespace Tavik::XML {

/// Six significant digits, the shorter of fixed and exponent notation: a default-formatted stream's in the C locale.
std::string doubleText(double value);

/// strtod's in the C locale; 0 where the text does not begin with a number.
double doubleFromText(const std::string& text);

/// strtol's, reduced to the low bits where int is narrower, so that "0xffffffff" is -1.
int intFromText(const std::string& text, int base);

/// "true" or "false".
const char* boolText(bool value);

} // namespace Tavik::XML
