#include <tavik/misc/PropertyElements.h>

#include <tavik/xml/Utf8.h>
#include <tavik/xml/XmlLimits.h>

#include <tinyxml.h>

#include <algorithm>
#include <iterator>

namespace Tavik::Misc {

namespace {

constexpr char RootName[] = "Properties";
constexpr char PropertyName[] = "Property";
constexpr char KeyName[] = "key";
constexpr char ValueName[] = "value";
constexpr char EncodingName[] = "encoding";
constexpr char PercentEncoding[] = "percent";
constexpr std::size_t MaximumTextLength = 255;

// Around and in the groups of a property stand the root and the property itself.
constexpr std::size_t MaximumGroups = XML::MaximumLevels - 2;
constexpr std::size_t MaximumPrefix = XML::MaximumPathLength - sizeof RootName - (sizeof PropertyName - 1);

struct Range
{
    char32_t first;
    char32_t last;
};

// Extensible Markup Language 1.0, fifth edition, section 2.3, without the colon of name spaces and without the byte
// order mark U+FEFF, which TinyXML takes for space.
constexpr Range NameStarts[] = {{'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},
                                {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},
                                {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xD7FF},
                                {0xF900, 0xFDCF}, {0xFDF0, 0xFEFE}, {0xFF00, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range FurtherNameCharacters[] = {{'-', '-'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

// The same, section 2.2.
constexpr Range Characters[] = {{'\t', '\n'}, {'\r', '\r'}, {' ', 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t character)
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [=](const Range& range) { return character >= range.first && character <= range.last; });
}

bool isGroupName(std::string_view section)
{
    std::size_t position = 0;
    while (position < section.size()) {
        const bool first = position == 0;
        const char32_t character = XML::decodeUtf8(section, position);
        if (!isIn(NameStarts, character) && (first || !isIn(FurtherNameCharacters, character))) {
            return false;
        }
    }
    return !section.empty() && section != PropertyName;
}

/// Whether XML can hold the text.
bool isXmlText(std::string_view text)
{
    std::size_t position = 0;
    while (position < text.size()) {
        if (!isIn(Characters, XML::decodeUtf8(text, position))) {
            return false;
        }
    }
    return true;
}

/// Every byte outside of printable ASCII as %XX, and the percent sign itself.
std::string percentEncoded(std::string_view text)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        if (c >= ' ' && c <= '~' && c != '%') {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded += {'%', Digits[byte >> 4], Digits[byte & 15]};
        }
    }
    return encoded;
}

int hexDigit(char c)
{
    constexpr std::string_view Digits = "0123456789ABCDEFabcdef";
    const std::size_t found = Digits.find(c);
    return found == std::string_view::npos ? -1 : static_cast<int>(found < 16 ? found : found - 6);
}

/// A percent sign without two digits stands for itself.
std::string percentDecoded(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low >= 0) {
            decoded += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

/// Appends as much of an attribute as is stored; nothing where it is absent.
void appendText(std::string& text, const std::string* attribute, bool percent)
{
    if (attribute != nullptr && percent) {
        text.append(percentDecoded(*attribute), 0, MaximumTextLength);
    } else if (attribute != nullptr) {
        text.append(*attribute, 0, MaximumTextLength);
    }
}

TiXmlElement* appendNew(TiXmlNode& parent, const std::string& name)
{
    auto* element = new TiXmlElement(name);
    parent.LinkEndChild(element);
    return element;
}

/// And no group.
bool isProperty(const TiXmlElement& element)
{
    return std::string_view(element.ValueStr()) == PropertyName;
}

/// Appends a property's key, and tells its value, each cut to what is stored of it.
void readProperty(const TiXmlElement& element, std::string& key, std::string& value)
{
    const std::string* keyText = nullptr;
    const std::string* valueText = nullptr;
    bool percent = false;
    for (const TiXmlAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
        const std::string_view name = a->NameTStr();
        if (name == KeyName) {
            keyText = &a->ValueStr();
        } else if (name == ValueName) {
            valueText = &a->ValueStr();
        } else if (name == EncodingName) {
            percent = a->ValueStr() == PercentEncoding;
        }
    }
    value.clear();
    appendText(key, keyText, percent);
    appendText(value, valueText, percent);
}

} // namespace

void forEachProperty(const TiXmlElement& top, const std::string& prefix,
                     const std::function<void(const std::string& key, const std::string& value)>& take)
{
    std::string key = prefix; // of the groups around the element
    std::string value;
    const TiXmlElement* element = &top;
    for (;;) {
        if (isProperty(*element)) {
            const std::size_t prefixLength = key.size();
            readProperty(*element, key, value);
            take(key, value);
            key.resize(prefixLength);
        } else if (const TiXmlElement* child = element->FirstChildElement()) {
            key.append(element->ValueStr()).append(1, '.');
            element = child;
            continue;
        }
        while (element != &top && element->NextSiblingElement() == nullptr) {
            element = element->Parent()->ToElement();
            key.resize(key.size() - element->ValueStr().size() - 1);
        }
        if (element == &top) {
            return;
        }
        element = element->NextSiblingElement();
    }
}

PropertyElements::PropertyElements(TiXmlDocument& document) : mRoot(appendNew(document, RootName)) {}

void PropertyElements::add(std::string_view key, std::string_view value)
{
    TiXmlElement* parent = mRoot;
    std::size_t start = 0;
    for (std::size_t groups = 0; groups < MaximumGroups; ++groups) {
        const std::size_t dot = key.find('.', start); // npos is beyond every limit
        if (dot >= MaximumPrefix || !isGroupName(key.substr(start, dot - start))) {
            break;
        }
        TiXmlElement*& group = mGroups[key.substr(0, dot + 1)];
        if (group == nullptr) {
            group = appendNew(*parent, std::string(key.substr(start, dot - start)));
        }
        parent = group;
        start = dot + 1;
    }
    key.remove_prefix(start);
    const bool plain = isXmlText(key) && isXmlText(value);
    TiXmlElement* property = appendNew(*parent, PropertyName);
    property->SetAttribute(KeyName, plain ? std::string(key) : percentEncoded(key));
    property->SetAttribute(ValueName, plain ? std::string(value) : percentEncoded(value));
    if (!plain) {
        property->SetAttribute(EncodingName, PercentEncoding);
    }
}

} // namespace Tavik::Misc
