#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace Feeds {

/// The fields of a line, between commas.
class Fields
{
public:
    static constexpr std::size_t Most = 32;

    explicit Fields(std::string_view line);

    /// How many there are, one more than commas; may be more than Most.
    std::size_t size() const { return mSize; }

    /// A field; empty behind the last one, and for those from Most on.
    std::string_view operator[](std::size_t index) const { return index < Most ? mFields[index] : std::string_view(); }

private:
    std::array<std::string_view, Most> mFields;
    std::size_t mSize = 0;
};

/// Takes optional values from fields, and notes whether one of them was not what it should be.
///
/// An empty field is an absent value and no fault; anything else must be wholly what is asked for.
class FieldReader
{
public:
    /// Decimal digits with an optional point and an optional minus.
    std::optional<double> number(std::string_view field, double lowest, double highest);

    /// Decimal digits with an optional minus.
    std::optional<int> integer(std::string_view field, int lowest, int highest);

    /// Notes a fault unless the condition holds.
    void require(bool condition) { mIsGood = mIsGood && condition; }

    bool isGood() const { return mIsGood; }

private:
    bool mIsGood = true;
};

} // namespace Feeds
