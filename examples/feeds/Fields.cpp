#include <feeds/Fields.h>

#include <charconv>

namespace Feeds {

namespace {

template <typename Number>
bool parse(std::string_view text, std::string_view characters, Number& value)
{
    // The conversion would take "inf" and "nan", too.
    if (text.find_first_not_of(characters) != std::string_view::npos) {
        return false;
    }
    const char* end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

Fields::Fields(std::string_view line)
{
    for (;;) {
        const std::size_t comma = line.find(',');
        if (mSize < Most) {
            mFields[mSize] = line.substr(0, comma);
        }
        ++mSize;
        if (comma == std::string_view::npos) {
            return;
        }
        line.remove_prefix(comma + 1);
    }
}

std::optional<double> FieldReader::number(std::string_view field, double lowest, double highest)
{
    if (field.empty()) {
        return std::nullopt;
    }
    double value = 0.0;
    require(parse(field, "-.0123456789", value) && value >= lowest && value <= highest);
    return value;
}

std::optional<int> FieldReader::integer(std::string_view field, int lowest, int highest)
{
    if (field.empty()) {
        return std::nullopt;
    }
    int value = 0;
    require(parse(field, "-0123456789", value) && value >= lowest && value <= highest);
    return value;
}

} // namespace Feeds
