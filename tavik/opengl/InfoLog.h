#pragma once

#include <cstdio>
#include <string>

namespace Tavik::OpenGL {

/// Prints the log of a shader or program, and a newline, to standard output; nothing when its length is 0.
/// @param length  as OpenGL reports it
/// @param fetch  called with (size, buffer) to fill the buffer
template <typename Fetch>
void printInfoLog(int length, Fetch fetch)
{
    if (length < 1) {
        return;
    }
    std::string log(static_cast<std::size_t>(length) + 1, '\0');
    fetch(length, log.data());
    std::printf("%s\n", log.c_str());
}

} // namespace Tavik::OpenGL
