#include "Table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Accuracy {

namespace {

/// Below this there is nothing but rounding.
constexpr double Smallest = 1e-6;

std::string numberText(double number)
{
    const double value = std::abs(number) < Smallest ? 0.0 : number;
    const double size = std::abs(value);
    const char* format = size >= 99.95 ? "%.0f" : size >= 9.995 ? "%.1f" : "%.2f";
    if (value != 0.0 && size < 0.995) {
        format = size < 0.000995 ? "%.0e" : size < 0.0995 ? "%.2g" : "%.2f";
    }
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

Table::Table(const std::string& corner, const std::vector<std::string>& columns)
{
    mRows.push_back({corner});
    mRows.back().insert(mRows.back().end(), columns.begin(), columns.end());
}

void Table::add(const std::string& name, const std::vector<double>& values)
{
    mRows.push_back({name});
    for (const double value : values) {
        mRows.back().push_back(numberText(value));
    }
}

void Table::print() const
{
    std::size_t nameWidth = 0;
    std::size_t width = 8;
    for (const auto& row : mRows) {
        nameWidth = std::max(nameWidth, row.front().size());
        for (std::size_t i = 1; i < row.size(); ++i) {
            width = std::max(width, row[i].size());
        }
    }
    for (const auto& row : mRows) {
        std::printf("%-*s", static_cast<int>(nameWidth), row.front().c_str());
        for (std::size_t i = 1; i < row.size(); ++i) {
            std::printf("  %*s", static_cast<int>(width), row[i].c_str());
        }
        std::printf("\n");
    }
}

} // namespace Accuracy
