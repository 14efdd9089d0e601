// XML documents and property files: reads, walks and prints a document, and writes its properties, which have to come
// back as they were.

#include <fuzz/InputFile.h>
#include <fuzz/Require.h>
#include <tavik/misc/PropertyElements.h>
#include <tavik/xml/XmlDocument.h>
#include <tavik/xml/XmlFile.h>
#include <tavik/xml/XmlLimits.h>

#include <tinyxml.h>

#include <algorithm>
#include <map>

using namespace Tavik;
using Fuzz::require;

namespace {

using Properties = std::map<std::string, std::string>;

constexpr std::size_t LongestText = 255; // of a key or value that is read whole

void walk(const XML::XmlElement& element, std::size_t level)
{
    require(level <= XML::MaximumLevels && !element.name().empty());
    for (const char* name : {"a", "key", "width"}) {
        const std::string text = element.getAttributeString(name, 100);
        require(text.size() < 100);
        element.getAttributeInt(name, 1);
        element.getAttributeDouble(name, 1.0);
        require(element.getAttributeBool(name, true) || text != "true");
    }
    element.value();
    for (XML::XmlElement child = element.firstElement(); child.valid(); child = child.nextElement()) {
        walk(child, level + 1);
    }
}

Properties propertiesOf(const TiXmlDocument& document)
{
    Properties properties;
    const TiXmlElement* root = document.RootElement();
    const TiXmlElement* child = root != nullptr ? root->FirstChildElement() : nullptr;
    for (; child != nullptr; child = child->NextSiblingElement()) {
        Misc::forEachProperty(*child, "", [&](const std::string& key, const std::string& value) {
            require(value.size() <= LongestText);
            properties[key] = value;
        });
    }
    return properties;
}

std::string written(const Properties& properties)
{
    TiXmlDocument document;
    Misc::PropertyElements elements(document);
    for (const auto& [key, value] : properties) {
        elements.add(key, value);
    }
    return XML::printed(document);
}

bool comesBackWhole(const Properties::value_type& property)
{
    return property.first.size() <= LongestText; // a longer one may lose groups that no XML name can be
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Fuzz::InputFile file;
    file.write(data, size);

    XML::XmlDocument wrapped;
    TiXmlDocument document;
    const bool isRead = wrapped.read(file.path());
    require(isRead == XML::readDocument(file.path(), document, XML::Locations::Skip));
    if (!isRead) {
        require(!wrapped.root().valid());
        return 0;
    }
    if (wrapped.root().valid()) {
        walk(wrapped.root(), 1);
    }
    std::string text;
    wrapped.print(wrapped.root(), text);

    const Properties properties = propertiesOf(document);
    const std::string output = written(properties);
    if (std::all_of(properties.begin(), properties.end(), comesBackWhole)) {
        file.write(reinterpret_cast<const std::uint8_t*>(output.data()), output.size());
        TiXmlDocument again;
        require(XML::readDocument(file.path(), again, XML::Locations::Skip));
        require(propertiesOf(again) == properties);
    }
    return 0;
}
