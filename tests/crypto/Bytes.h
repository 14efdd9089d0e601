#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

using Bytes = std::vector<unsigned char>;

inline Bytes fromHex(const std::string& digits)
{
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

inline Bytes randomBytes(std::size_t count, std::mt19937& generator)
{
    Bytes bytes(count);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(generator());
    }
    return bytes;
}
