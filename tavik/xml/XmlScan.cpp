#include <tavik/xml/XmlScan.h>

#include <tavik/xml/XmlLimits.h>

#include <cctype>
#include <cstring>
#include <strings.h>

namespace Tavik::XML {

namespace {

/// What TinyXML takes a byte for: from 127 on they count as letters, below the locale decides.
class ByteKinds
{
public:
    ByteKinds()
    {
        for (int byte = 0; byte < 256; ++byte) {
            const bool letter = byte >= 127 || std::isalpha(byte) != 0 || byte == '_';
            const bool name = letter || std::isdigit(byte) != 0 || byte == '-' || byte == '.' || byte == ':';
            mKinds[byte] = static_cast<unsigned char>((letter ? NameStart : 0) | (name ? NameCharacter : 0) |
                                                      (std::isspace(byte) != 0 ? Space : 0));
        }
    }

    bool isNameStart(char c) const { return has(c, NameStart); }
    bool isNameCharacter(char c) const { return has(c, NameCharacter); }
    bool isSpace(char c) const { return has(c, Space); }

private:
    enum Kind
    {
        NameStart = 1,
        NameCharacter = 2,
        Space = 4
    };

    bool has(char c, Kind kind) const { return (mKinds[static_cast<unsigned char>(c)] & kind) != 0; }

    unsigned char mKinds[256];
};

bool isQuote(char c)
{
    return c == '"' || c == '\'';
}

/// Walks over one text. Each step returns whether to go on; it ends where TinyXML ends, or with a refusal. A null byte
/// ends the text, and every comparison stops at it.
class Scanner
{
public:
    Scanner(const std::string& text, bool utf8) : mStart(text.c_str()), mPosition(text.c_str()), mUtf8(utf8) {}

    std::optional<XmlRefusal> run()
    {
        bool more = true;
        while (more) {
            skipSpace();
            more = *mPosition == '<' ? markup() : *mPosition != '\0' && mLevels > 0 && content();
        }
        return mRefusal;
    }

private:
    bool markup()
    {
        if (mLevels > 0 && startsWith("</")) {
            return endTag();
        }
        if (startsWithAnyCase("<?xml")) {
            return declaration();
        }
        if (startsWith("<!--")) {
            return skipPast("-->", 4);
        }
        if (startsWith("<![CDATA[")) {
            return skipPast("]]>", 9);
        }
        return mKinds.isNameStart(mPosition[1]) ? startTag() : skipPast(">", 1);
    }

    /// Text up to the next markup.
    bool content()
    {
        while (*mPosition != '<' && *mPosition != '\0') {
            if (!character()) {
                return false;
            }
        }
        return *mPosition != '\0';
    }

    bool startTag()
    {
        const char* const start = mPosition++;
        skipSpace(); // TinyXML takes a byte order mark here for space
        const std::size_t nameLength = name();
        if (nameLength == 0) {
            return false;
        }
        if (mLevels == MaximumLevels || mPathLength + nameLength > MaximumPathLength) {
            return refuse(start, "Elements nested too deeply.");
        }
        for (std::size_t attributes = 0; attributes <= MaximumAttributes; ++attributes) {
            skipSpace();
            if (*mPosition == '/') {
                mPosition += 2;
                return mPosition[-1] == '>';
            }
            if (*mPosition == '>') {
                ++mPosition;
                ++mLevels;
                mPathLength += nameLength + 1;
                return true;
            }
            if (!attribute()) {
                return false;
            }
        }
        return refuse(start, "Too many attributes.");
    }

    /// TinyXML stops where the name is not that of the start tag, so that the lengths are the same.
    bool endTag()
    {
        mPosition += 2;
        const std::size_t length = name() + 1;
        if (length > mPathLength) {
            return false;
        }
        --mLevels;
        mPathLength -= length;
        return skipPast(">", 0);
    }

    bool attribute()
    {
        if (name() == 0) {
            return false;
        }
        skipSpace();
        if (*mPosition != '=') {
            return false;
        }
        ++mPosition;
        skipSpace();
        return isQuote(*mPosition) ? quotedValue() : unquotedValue();
    }

    bool quotedValue()
    {
        const char quote = *mPosition++;
        while (*mPosition != quote) {
            if (*mPosition == '\0' || !character()) {
                return false;
            }
        }
        ++mPosition;
        return true;
    }

    bool unquotedValue()
    {
        while (*mPosition != '\0' && *mPosition != '/' && *mPosition != '>' && !mKinds.isSpace(*mPosition)) {
            if (isQuote(*mPosition++)) {
                return false;
            }
        }
        return true;
    }

    /// One byte or a numeric character reference. TinyXML searches a reference's digits backwards from the next
    /// semicolon, however far, and takes everything between for part of it: only digits may stand there.
    bool character()
    {
        if (*mPosition != '&' || mPosition[1] != '#') {
            ++mPosition;
            return true;
        }
        const bool hexadecimal = mPosition[2] == 'x';
        const char* digit = mPosition + (hexadecimal ? 3 : 2);
        const char* const first = digit;
        while (hexadecimal ? std::isxdigit(static_cast<unsigned char>(*digit)) != 0 : *digit >= '0' && *digit <= '9') {
            ++digit;
        }
        if (digit == first || *digit != ';') {
            return refuse(mPosition, "Error in a character reference.");
        }
        mPosition = digit + 1;
        return true;
    }

    /// TinyXML honours quotes only behind these three names, and ends at the first other '>'.
    bool declaration()
    {
        mPosition += 5;
        while (*mPosition != '>') {
            skipSpace();
            if (startsWithAnyCase("version") || startsWithAnyCase("encoding") || startsWithAnyCase("standalone")) {
                if (!attribute()) {
                    return false;
                }
            } else {
                while (*mPosition != '>' && *mPosition != '\0' && !mKinds.isSpace(*mPosition)) {
                    ++mPosition;
                }
            }
            if (*mPosition == '\0') {
                return false;
            }
        }
        ++mPosition;
        return true;
    }

    bool startsWith(const char* expected) const
    {
        return std::strncmp(mPosition, expected, std::strlen(expected)) == 0;
    }

    bool startsWithAnyCase(const char* expected) const
    {
        return strncasecmp(mPosition, expected, std::strlen(expected)) == 0;
    }

    bool skipPast(const char* end, std::size_t from)
    {
        const char* const found = std::strstr(mPosition + from, end);
        if (found == nullptr) {
            return false;
        }
        mPosition = found + std::strlen(end);
        return true;
    }

    /// TinyXML takes byte order marks and U+FFFE and U+FFFF in UTF-8 for space.
    void skipSpace()
    {
        for (;;) {
            if (mKinds.isSpace(*mPosition)) {
                ++mPosition;
            } else if (mUtf8 &&
                       (startsWith("\xEF\xBB\xBF") || startsWith("\xEF\xBF\xBE") || startsWith("\xEF\xBF\xBF"))) {
                mPosition += 3;
            } else {
                return;
            }
        }
    }

    /// Skips a name and tells its length, 0 where there is none.
    std::size_t name()
    {
        const char* const start = mPosition;
        if (mKinds.isNameStart(*start)) {
            while (mKinds.isNameCharacter(*mPosition)) {
                ++mPosition;
            }
        }
        return static_cast<std::size_t>(mPosition - start);
    }

    bool refuse(const char* position, const char* reason)
    {
        mRefusal = {static_cast<std::size_t>(position - mStart), reason};
        return false;
    }

    const char* mStart;
    const char* mPosition;
    bool mUtf8;
    ByteKinds mKinds;
    std::size_t mLevels = 0;
    std::size_t mPathLength = 0; // of the open elements
    std::optional<XmlRefusal> mRefusal;
};

} // namespace

std::optional<XmlRefusal> scanXml(const std::string& text, bool utf8)
{
    return Scanner(text, utf8).run();
}

} // namespace Tavik::XML
