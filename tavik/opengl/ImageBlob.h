#pragma once

#include <cstdint>
#include <cstring>

namespace Tavik::OpenGL {

/// A picture as it stands in one piece of memory: width and height as 32-bit numbers of this machine, 4 bytes that are
/// not read, and the pixels.
struct ImageBlob
{
    std::uint32_t width;
    std::uint32_t height;
    const unsigned char* pixels;
};

/// @param blob  of any alignment; null gives an empty picture without pixels
inline ImageBlob readImageBlob(const void* blob)
{
    constexpr std::size_t PixelOffset = 12;
    ImageBlob image = {0, 0, nullptr};
    if (blob != nullptr) {
        const auto* bytes = static_cast<const unsigned char*>(blob);
        std::memcpy(&image.width, bytes, sizeof(image.width));
        std::memcpy(&image.height, bytes + sizeof(image.width), sizeof(image.height));
        image.pixels = bytes + PixelOffset;
    }
    return image;
}

} // namespace Tavik::OpenGL
