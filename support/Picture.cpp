#include <support/Picture.h>

#include <png.h>

#include <algorithm>
#include <cstdlib>

namespace Tavik::Support {

namespace {

constexpr std::size_t ChannelCount = 4;

std::size_t pixelCount(const Picture& picture)
{
    return static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height());
}

int largestDifference(Picture::Pixel a, Picture::Pixel b)
{
    int largest = 0;
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        largest = std::max(largest, std::abs(a[channel] - b[channel]));
    }
    return largest;
}

} // namespace

Picture::Picture(int widthPixels, int heightPixels, Pixel color)
    : mWidth(std::max(widthPixels, 0)), mHeight(std::max(heightPixels, 0)), mBytes(pixelCount(*this) * ChannelCount)
{
    for (std::size_t i = 0; i < mBytes.size(); ++i) {
        mBytes[i] = color[i % ChannelCount];
    }
}

Picture::Pixel Picture::pixel(int x, int y) const
{
    const std::uint8_t* bytes = &mBytes.at(offset(x, y));
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

void Picture::setPixel(int x, int y, Pixel color)
{
    std::copy(color.begin(), color.end(), &mBytes.at(offset(x, y)));
}

void Picture::flipRows()
{
    const auto rowBytes = static_cast<std::ptrdiff_t>(mWidth) * static_cast<std::ptrdiff_t>(ChannelCount);
    for (int row = 0; row < mHeight / 2; ++row) {
        const auto top = mBytes.begin() + row * rowBytes;
        const auto bottom = mBytes.begin() + (mHeight - 1 - row) * rowBytes;
        std::swap_ranges(top, top + rowBytes, bottom);
    }
}

bool Picture::writePng(const std::string& path) const
{
    if (mBytes.empty()) {
        return false;
    }
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(mWidth);
    image.height = static_cast<png_uint_32>(mHeight);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, path.c_str(), 0, mBytes.data(), 0, nullptr) != 0;
}

std::size_t Picture::offset(int x, int y) const
{
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) + static_cast<std::size_t>(x)) *
           ChannelCount;
}

PictureDifference comparePictures(const Picture& a, const Picture& b, int tolerance)
{
    PictureDifference difference;
    if (a.width() != b.width() || a.height() != b.height()) {
        difference.pixelsOver = std::max(pixelCount(a), pixelCount(b));
        difference.largest = 255;
        return difference;
    }
    difference.picture = Picture(a.width(), a.height());
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const int largest = largestDifference(a.pixel(x, y), b.pixel(x, y));
            difference.largest = std::max(difference.largest, largest);
            if (largest > tolerance) {
                ++difference.pixelsOver;
                difference.picture.setPixel(x, y, {255, 255, 255, 255});
            }
        }
    }
    return difference;
}

} // namespace Tavik::Support
