#pragma once

#include <string>
#include <vector>

namespace Accuracy {

/// A table of text with columns of one width, printed to standard output.
///
///     Table table("range", {"equator", "pole"});
///     table.add("1 km", {0.5, 1.25});
///     table.print();
class Table
{
public:
    Table(const std::string& corner, const std::vector<std::string>& columns);

    /// A row of numbers, with three digits that count.
    void add(const std::string& name, const std::vector<double>& values);

    void print() const;

private:
    std::vector<std::vector<std::string>> mRows;
};

} // namespace Accuracy
