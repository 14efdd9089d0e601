#include <tavik/image/PngReader.h>

#include <tavik/image/PngDecoder.h>

#include <cstdio>

namespace Tavik::Image {

namespace {

// A file, and what libpng made of it, for as long as it is read.
class PngFile
{
public:
    explicit PngFile(const std::string& path) { mDecoder.file = std::fopen(path.c_str(), "rb"); }

    ~PngFile()
    {
        releasePngDecoder(mDecoder);
        if (mDecoder.file != nullptr) {
            std::fclose(mDecoder.file);
        }
    }

    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;

    bool isOpen() const { return mDecoder.file != nullptr; }

    bool readSignature()
    {
        png_byte signature[8];
        return std::fread(signature, 1, sizeof(signature), mDecoder.file) == sizeof(signature) &&
               png_sig_cmp(signature, 0, sizeof(signature)) == 0;
    }

    PngDecoder& decoder() { return mDecoder; }

    // Hands the pixels out, to be released by the caller.
    PngReader::ImageRGBA takeImage()
    {
        PngReader::ImageRGBA image;
        image.width = mDecoder.width;
        image.height = mDecoder.height;
        image.data = mDecoder.pixels;
        mDecoder.pixels = nullptr;
        return image;
    }

private:
    PngDecoder mDecoder = {};
};

// Prints why there is no picture to read.
// @return whether there is
bool setUp(PngDecoder& decoder)
{
    switch (setUpPngDecoder(decoder)) {
    case PngSetUp::NoReadStructure:
        std::printf("[read_png_file] png_create_read_struct failed");
        return false;
    case PngSetUp::NoInfoStructure:
        std::printf("[read_png_file] png_create_info_struct failed");
        return false;
    case PngSetUp::Failed:
        std::printf("[read_png_file] Error during init_io");
        return false;
    case PngSetUp::Done:
        break;
    }
    return true;
}

bool isColor(const PngDecoder& decoder)
{
    return (decoder.colorType & PNG_COLOR_MASK_COLOR) != 0;
}

} // namespace

bool PngReader::readFileRGBA(const std::string& path, ImageRGBA& image)
{
    PngFile file(path);
    if (!file.isOpen()) {
        return false;
    }
    if (!file.readSignature()) {
        std::printf("[read_png_file] File %s is not recognized as a PNG file\n", path.c_str());
        return false;
    }
    if (!setUp(file.decoder())) {
        return false;
    }
    if (!isColor(file.decoder())) {
        std::printf("wrong file format %d\n", file.decoder().colorType);
        return false;
    }
    if (!readPngPixels(file.decoder())) {
        std::printf("[read_png_file] Error during read_image %s\n", path.c_str());
        return false;
    }
    image = file.takeImage();
    return true;
}

bool PngReader::readDataRGBA(const unsigned char* /*data*/, ImageRGBA& image)
{
    std::printf("read PNG Data <%p>\n", static_cast<void*>(&image));
    return true;
}

} // namespace Tavik::Image
