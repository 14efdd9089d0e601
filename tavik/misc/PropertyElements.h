#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

class TiXmlDocument;
class TiXmlElement;

/// Properties as elements of an XML document.
namespace Tavik::Misc {

/// Tells the full keys and the values of one element, in the order of the document: itself where it is a property, else
/// those in it at any depth. Without recursion, since a caller's element may nest as deep as it likes.
/// @param prefix  what the keys begin with, its dot included; empty for none
void forEachProperty(const TiXmlElement& top, const std::string& prefix,
                     const std::function<void(const std::string& key, const std::string& value)>& take);

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
