#include <tavik/opengl/GlVersion.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace Tavik::OpenGL {

namespace {

// Keeps major × 100 + minor inside an int, whatever a driver says.
constexpr long LargestNumber = 1'000'000;

int leadingNumber(const char* text)
{
    return static_cast<int>(std::clamp(std::strtol(text, nullptr, 10), -LargestNumber, LargestNumber));
}

} // namespace

int parseGlVersion(const std::string& text)
{
    const int major = leadingNumber(text.c_str());
    const std::size_t dot = text.find('.');
    const int minor = dot == std::string::npos ? 0 : leadingNumber(text.c_str() + dot + 1);
    std::printf("GL version <%s> %d.%d\n", text.c_str(), major, minor);
    return major * 100 + minor;
}

} // namespace Tavik::OpenGL
