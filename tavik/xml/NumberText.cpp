#include <tavik/xml/NumberText.h>

#include <charconv>
#include <clocale>
#include <cstdlib>

namespace Tavik::XML {

namespace {

constexpr int SignificantDigits = 6;

} // namespace

std::string doubleText(double value)
{
    char text[32]; // "-1.23457e-308" is the longest
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::general, SignificantDigits);
    return std::string(text, result.ptr);
}

// Both try the fast conversion first, which reads fewer forms than the C library's: no leading blanks or plus sign, no
// hexadecimal numbers, nothing out of range. What it has read to the end (a decimal integer: to its end) is the same.

double doubleFromText(const std::string& text)
{
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec == std::errc() && result.ptr == end) {
        return value;
    }
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr); // kept for the life of the process
    return strtod_l(text.c_str(), nullptr, cLocale);
}

int intFromText(const std::string& text, int base)
{
    int value = 0;
    if (base == 10 && std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc()) {
        return value;
    }
    return static_cast<int>(std::strtol(text.c_str(), nullptr, base));
}

const char* boolText(bool value)
{
    return value ? "true" : "false";
}

} // namespace Tavik::XML
