#include <tavik/xml/XmlFile.h>

#include <tavik/filesystem/ReplaceFile.h>
#include <tavik/xml/Utf8.h>
#include <tavik/xml/XmlLimits.h>
#include <tavik/xml/XmlScan.h>

#include <tinyxml.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace Tavik::XML {

namespace {

constexpr std::size_t SmallestRoom = 4096;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF"; // of UTF-8
constexpr int TabSize = 4;                                 // TinyXML's own, for columns

/// Reads until the end, but not much beyond the largest size allowed, since some files have no end. The size that the
/// system tells only saves room: devices and pipes have none.
bool readFile(const std::string& file, std::string& text)
{
    std::FILE* stream = std::fopen(file.c_str(), "rb");
    if (stream == nullptr) {
        return false;
    }
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    std::size_t room = error ? SmallestRoom : std::clamp<std::uintmax_t>(size + 1, SmallestRoom, MaximumFileSize + 1);
    std::size_t length = 0;
    do {
        text.resize(room);
        length += std::fread(text.data() + length, 1, room - length, stream);
        room *= 2;
    } while (length == text.size() && length <= MaximumFileSize);
    text.resize(length);
    const bool good = std::ferror(stream) == 0;
    std::fclose(stream);
    return good;
}

/// Line ends of any kind as "\n", as an XML parser has to hand them on.
void normalizeLineEnds(std::string& text)
{
    std::size_t out = std::min(text.find('\r'), text.size());
    for (std::size_t in = out; in < text.size(); ++in) {
        if (text[in] != '\r') {
            text[out++] = text[in];
        } else if (in + 1 == text.size() || text[in + 1] != '\n') {
            text[out++] = '\n';
        }
    }
    text.resize(out);
}

void printError(const std::string& file, std::ptrdiff_t row, std::ptrdiff_t column, const char* reason)
{
    std::printf("Error reading <%s> :\nRow %d Col %d Error %s\n", file.c_str(), static_cast<int>(row),
                static_cast<int>(column), reason);
}

void printRefusal(const std::string& file, const std::string& text, const XmlRefusal& refusal)
{
    const auto place = text.begin() + static_cast<std::ptrdiff_t>(refusal.offset);
    const auto lineStart = std::find(std::make_reverse_iterator(place), text.rend(), '\n').base();
    printError(file, 1 + std::count(text.begin(), place, '\n'), 1 + (place - lineStart), refusal.reason);
}

/// An error that TinyXML would find before parsing.
bool fail(const std::string& file, TiXmlDocument& document, int error)
{
    document.SetError(error, nullptr, nullptr, TIXML_ENCODING_UNKNOWN);
    printError(file, document.ErrorRow(), document.ErrorCol(), document.ErrorDesc());
    return false;
}

bool parse(const std::string& text, TiXmlEncoding encoding, int tabSize, TiXmlDocument& document)
{
    document.SetTabSize(tabSize);
    document.Parse(text.c_str(), nullptr, encoding);
    return !document.Error();
}

} // namespace

bool readDocument(const std::string& file, TiXmlDocument& document, Locations locations)
{
    std::string text;
    if (!readFile(file, text)) {
        return fail(file, document, TiXmlBase::TIXML_ERROR_OPENING_FILE);
    }
    if (text.empty()) {
        return fail(file, document, TiXmlBase::TIXML_ERROR_DOCUMENT_EMPTY);
    }
    if (text.size() > MaximumFileSize) {
        printError(file, 0, 0, "File too large.");
        return false;
    }
    if (text.compare(0, ByteOrderMark.size(), ByteOrderMark) == 0) {
        text.erase(0, ByteOrderMark.size());
    }
    normalizeLineEnds(text);
    // TinyXML has to know of UTF-8 only for numeric character references, and is faster without. In broken UTF-8 it
    // would skip over quotes, tags and the end of the text.
    const bool utf8 = text.find("&#") != std::string::npos && isUtf8(text);
    if (const auto refusal = scanXml(text, utf8)) {
        printRefusal(file, text, *refusal);
        return false;
    }
    const TiXmlEncoding encoding = utf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY;
    if (locations == Locations::Skip && parse(text, encoding, 0, document)) {
        return true;
    }
    document.Clear(); // a failure without locations is parsed again for its place
    if (!parse(text, encoding, TabSize, document)) {
        printError(file, document.ErrorRow(), document.ErrorCol(), document.ErrorDesc());
        return false;
    }
    return true;
}

bool writeDocument(const std::string& file, const TiXmlDocument& document)
{
    return FileSystem::replaceFile(file, printed(document));
}

std::string printed(const TiXmlNode& node)
{
    TiXmlPrinter printer; // its own settings are four blanks and "\n"
    node.Accept(&printer);
    return printer.Str();
}

} // namespace Tavik::XML
