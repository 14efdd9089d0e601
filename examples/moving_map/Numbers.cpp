#include <moving_map/Numbers.h>

#include <charconv>
#include <system_error>

namespace MovingMap {

namespace {

/// std::from_chars: no locale, no leading blanks, and no value that does not fit.
template <typename Number>
bool parse(const std::string& text, Number lowest, Number highest, Number& value)
{
    Number parsed{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, parsed);
    // Written so that NaN, which from_chars accepts, fails too.
    if (error != std::errc() || stop != end || !(parsed >= lowest && parsed <= highest)) {
        return false;
    }
    value = parsed;
    return true;
}

} // namespace

bool parseNumber(const std::string& text, double lowest, double highest, double& value)
{
    return parse(text, lowest, highest, value);
}

bool parseNumber(const std::string& text, int lowest, int highest, int& value)
{
    return parse(text, lowest, highest, value);
}

} // namespace MovingMap
