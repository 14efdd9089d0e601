#include <tavik/misc/StringFields.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace Tavik::Misc {

namespace {

/// Calls visit(index, field) for each field in order, and tells their number, which is at least one.
template <typename Visit>
std::int64_t forEachField(std::string_view text, std::string_view delimiters, Visit visit)
{
    std::int64_t index = 0;
    std::size_t hit = delimiters.empty() ? std::string_view::npos : text.find_first_of(delimiters);
    while (hit != std::string_view::npos) {
        visit(index++, text.substr(0, hit));
        text.remove_prefix(std::min(hit + delimiters.size(), text.size()));
        hit = text.find_first_of(delimiters);
    }
    visit(index, text);
    return index + 1;
}

std::int64_t fieldCount(const std::string& text, const std::string& delimiters)
{
    return forEachField(text, delimiters, [](std::int64_t, std::string_view) {});
}

} // namespace

int StringCount(const std::string& text, const std::string& delimiters)
{
    constexpr std::int64_t Maximum = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(fieldCount(text, delimiters) - 1, Maximum));
}

std::string StringSection(const std::string& text, const std::string& delimiters, int first, int last)
{
    const std::int64_t count = first < 0 || last < 0 ? fieldCount(text, delimiters) : 0;
    const std::int64_t from = std::max<std::int64_t>(first < 0 ? first + count : first, 0);
    const std::int64_t to = last < 0 ? last + count : last;
    std::string section;
    forEachField(text, delimiters, [&](std::int64_t index, std::string_view field) {
        if (index == from) {
            section = field;
        } else if (index > from && index <= to) {
            section += delimiters;
            section += field;
        }
    });
    return section;
}

} // namespace Tavik::Misc
