#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

class TiXmlDocument;
class TiXmlElement;

/// Properties as elements of an XML document.
namespace Tavik::Misc {

/// Whether this is a property and no group.
bool isProperty(const TiXmlElement& element);

/// Appends a property's key, and tells its value, each cut to what is stored of it.
void readProperty(const TiXmlElement& element, std::string& key, std::string& value);

/// Builds the document of all properties.
class PropertyElements
{
public:
    /// Gives the document its root.
    explicit PropertyElements(TiXmlDocument& document);

    /// Appends a property to its group. The key must stay where it is as long as this object lives.
    void add(std::string_view key, std::string_view value);

private:
    TiXmlElement* mRoot;
    std::unordered_map<std::string_view, TiXmlElement*> mGroups; // by the part of the key up to their dot
};

} // namespace Tavik::Misc
