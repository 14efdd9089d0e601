#include <tavik/image/PngDecoder.h>

#include <csetjmp>
#include <cstdint>
#include <cstdlib>

namespace Tavik::Image {

namespace {

constexpr int SignatureSize = 8;
constexpr unsigned int OpaqueAlpha = 255;
constexpr std::size_t ChannelCount = 4;

// 1 GiB of RGBA: as much as the largest texture of most graphics cards, 16384 pixels square.
constexpr std::uint64_t MaximumPixels = std::uint64_t{1} << 28;

// libpng only compares the release series, 1.6.
constexpr const char* ExpectedVersion = "1.6.48";

// Not to be chatty on standard error, as libpng is by itself.
[[noreturn]] void onError(png_structp png, png_const_charp /*message*/)
{
    png_longjmp(png, 1);
}

void onWarning(png_structp /*png*/, png_const_charp /*message*/) {}

png_structp createReadStructure()
{
    png_structp png = png_create_read_struct(ExpectedVersion, nullptr, onError, onWarning);
    if (png == nullptr) {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    }
    return png;
}

void requestRgba(png_structp png, png_infop info)
{
    const int type = png_get_color_type(png, info);
    if (type == PNG_COLOR_TYPE_PALETTE) {
        png_set_palette_to_rgb(png);
        png_set_strip_alpha(png); // otherwise transparent entries would bring an alpha channel along
    }
    png_set_scale_16(png);
    if ((type & PNG_COLOR_MASK_ALPHA) == 0) {
        png_set_filler(png, OpaqueAlpha, PNG_FILLER_AFTER);
    }
}

int colorTypeWithoutPalette(int type)
{
    return type == PNG_COLOR_TYPE_PALETTE ? PNG_COLOR_TYPE_RGB : type;
}

// Every step of libpng's before the pixels; fails through longjmp.
void readHeader(PngDecoder& decoder)
{
    png_init_io(decoder.png, decoder.file);
    png_set_sig_bytes(decoder.png, SignatureSize);
    // Only what tells pixels is read; for comments, profiles and the like libpng would allocate any length they claim.
    png_set_keep_unknown_chunks(decoder.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_read_info(decoder.png, decoder.info);
    decoder.width = png_get_image_width(decoder.png, decoder.info);
    decoder.height = png_get_image_height(decoder.png, decoder.info);
    if (std::uint64_t{decoder.width} * decoder.height > MaximumPixels) {
        png_error(decoder.png, "too large");
    }
    decoder.colorType = colorTypeWithoutPalette(png_get_color_type(decoder.png, decoder.info));
    requestRgba(decoder.png, decoder.info);
    decoder.passCount = png_set_interlace_handling(decoder.png);
    png_read_update_info(decoder.png, decoder.info);
}

} // namespace

PngSetUp setUpPngDecoder(PngDecoder& decoder)
{
    decoder.png = createReadStructure();
    if (decoder.png == nullptr) {
        return PngSetUp::NoReadStructure;
    }
    decoder.info = png_create_info_struct(decoder.png);
    if (decoder.info == nullptr) {
        return PngSetUp::NoInfoStructure;
    }
    if (setjmp(png_jmpbuf(decoder.png)) != 0) {
        return PngSetUp::Failed;
    }
    readHeader(decoder);
    return PngSetUp::Done;
}

bool readPngPixels(PngDecoder& decoder)
{
    const std::size_t rowSize = std::size_t{decoder.width} * ChannelCount;
    if (png_get_rowbytes(decoder.png, decoder.info) != rowSize) {
        return false;
    }
    decoder.pixels = static_cast<unsigned char*>(std::malloc(rowSize * decoder.height));
    if (decoder.pixels == nullptr) {
        return false;
    }
    if (setjmp(png_jmpbuf(decoder.png)) != 0) {
        return false;
    }
    for (int pass = 0; pass < decoder.passCount; ++pass) {
        for (std::size_t row = 0; row < decoder.height; ++row) {
            png_read_row(decoder.png, decoder.pixels + row * rowSize, nullptr);
        }
    }
    png_read_end(decoder.png, nullptr); // a file that lacks its end has been cut
    return true;
}

void releasePngDecoder(PngDecoder& decoder)
{
    png_destroy_read_struct(&decoder.png, &decoder.info, nullptr);
    std::free(decoder.pixels);
    decoder.pixels = nullptr;
}

} // namespace Tavik::Image
