#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tavik::Fuzz {

/// The arguments of a program, one for each line of an input.
class Arguments
{
public:
    Arguments(const std::uint8_t* data, std::size_t size)
    {
        const std::uint8_t* end = data + size;
        while (data != end) {
            const std::uint8_t* lineEnd = std::find(data, end, '\n');
            mTexts.emplace_back(std::string(data, lineEnd).c_str()); // an argument ends with its first NUL
            data = lineEnd == end ? end : lineEnd + 1;
        }
        for (std::string& text : mTexts) {
            mValues.push_back(text.data());
        }
        mValues.push_back(nullptr);
    }

    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    /// As main receives them; valid as long as this object.
    int count() const { return static_cast<int>(mTexts.size()); }
    char** values() { return mValues.data(); }

    bool contains(const std::string& text) const
    {
        return std::find(mTexts.begin(), mTexts.end(), text) != mTexts.end();
    }

private:
    std::vector<std::string> mTexts;
    std::vector<char*> mValues;
};

} // namespace Tavik::Fuzz
