#include <tavik/misc/Property.h>

#include <tavik/misc/PropertyElements.h>
#include <tavik/xml/NumberText.h>
#include <tavik/xml/XmlElement.h>
#include <tavik/xml/XmlFile.h>

#include <tinyxml.h>

#include <cstdio>
#include <iterator>

namespace Tavik::Misc {

namespace {

bool isTrue(std::string_view text)
{
    return text == "TRUE" || text == "True" || text == "true";
}

} // namespace

Property& Property::instance()
{
    static Property property;
    return property;
}

bool Property::setConfigFile(const std::string& file)
{
    mConfigFile = file;
    return readXmlFile();
}

bool Property::readXmlFile()
{
    return readXmlFile(mConfigFile);
}

bool Property::readXmlFile(const std::string& file)
{
    TiXmlDocument document;
    if (!XML::readDocument(file, document, XML::Locations::Skip)) {
        std::printf("Error reading XML file <%s>!\n", file.c_str());
        return false;
    }
    const TiXmlElement* root = document.RootElement();
    const TiXmlElement* child = root != nullptr ? root->FirstChildElement() : nullptr;
    auto expected = mProperties.begin();
    for (; child != nullptr; child = child->NextSiblingElement()) {
        expected = readTree(expected, *child, "");
    }
    document.Clear(); // its memory serves for the index
    indexAll();
    return true;
}

bool Property::writeXmlFile() const
{
    return writeXmlFile(mConfigFile);
}

bool Property::writeXmlFile(const std::string& file) const
{
    TiXmlDocument document;
    PropertyElements elements(document);
    for (const auto& [key, value] : mProperties) {
        elements.add(key, value.text);
    }
    if (!XML::writeDocument(file, document)) {
        std::printf("Error writing property file <%s>!\n", file.c_str());
        return false;
    }
    return true;
}

void Property::setString(std::string_view key, std::string_view value)
{
    auto found = mIndex.find(key);
    if (found == mIndex.end()) {
        const auto entry = entryOf(key, mProperties.end());
        found = mIndex.emplace(entry->first, entry).first;
    }
    found->second->second.assign(value);
}

void Property::setInt(std::string_view key, int value)
{
    setString(key, std::to_string(value));
}

void Property::setDouble(std::string_view key, double value)
{
    setString(key, XML::doubleText(value));
}

void Property::setSwitch(std::string_view key, bool value)
{
    setString(key, XML::boolText(value));
}

std::string Property::getString(std::string_view key, std::string_view defaultValue) const
{
    const Value* value = find(key);
    return value != nullptr ? value->text : std::string(defaultValue);
}

int Property::getInt(std::string_view key, int defaultValue) const
{
    const Value* value = find(key);
    return value != nullptr ? XML::intFromText(value->text, 10) : defaultValue;
}

double Property::getDouble(std::string_view key, double defaultValue) const
{
    const Value* value = find(key);
    return value != nullptr ? value->number : defaultValue;
}

bool Property::getSwitch(std::string_view key, bool defaultValue) const
{
    const Value* value = find(key);
    return value != nullptr ? isTrue(value->text) : defaultValue;
}

bool Property::readElement(const XML::XmlElement& element, const std::string& prefix)
{
    if (!element.valid()) {
        return false;
    }
    readTree(mProperties.begin(), *element.data(), prefix);
    indexAll();
    return true;
}

void Property::strip(std::string& text, const std::string& characters)
{
    text.erase(text.find_last_not_of(characters) + 1); // npos + 1 is 0
    text.erase(0, text.find_first_not_of(characters));
}

void Property::Value::assign(std::string_view newText)
{
    text = newText;
    number = XML::doubleFromText(text);
}

/// The entry of a key, which is added where there is none. Without a search where it is or belongs at the expected
/// place.
Property::Values::iterator Property::entryOf(std::string_view key, Values::iterator expected)
{
    const auto isAt = [&](Values::iterator entry) { return entry != mProperties.end() && entry->first == key; };
    const auto belongsBefore = [&](Values::iterator entry) {
        return (entry == mProperties.end() || key < entry->first) &&
               (entry == mProperties.begin() || std::prev(entry)->first < key);
    };
    if (!isAt(expected) && !belongsBefore(expected)) {
        expected = mProperties.lower_bound(key);
    }
    if (isAt(expected)) {
        return expected;
    }
    auto* kept = static_cast<char*>(mMemory.allocate(key.size(), 1));
    key.copy(kept, key.size());
    return mProperties.emplace_hint(expected, std::string_view(kept, key.size()), Value());
}

/// All at once after reading, which is faster than each by itself.
void Property::indexAll()
{
    if (mIndex.size() < mProperties.size()) {
        mIndex.reserve(mProperties.size());
        for (auto entry = mProperties.begin(); entry != mProperties.end(); ++entry) {
            mIndex.try_emplace(entry->first, entry);
        }
    }
}

const Property::Value* Property::find(std::string_view key) const
{
    const auto found = mIndex.find(key);
    return found != mIndex.end() ? &found->second->second : nullptr;
}

/// @param expected  where the first key may be; a file lists its keys in their order, each behind the last
/// @return the place behind the last entry stored
Property::Values::iterator Property::readTree(Values::iterator expected, const TiXmlElement& top,
                                              const std::string& prefix)
{
    std::string line;
    forEachProperty(top, prefix, [&](const std::string& key, const std::string& value) {
        const auto entry = entryOf(key, expected);
        entry->second.assign(value);
        const bool last = entry == std::prev(mProperties.end()); // from which std::next climbs through the tree
        expected = last ? mProperties.end() : std::next(entry);
        line.assign("Property <").append(key).append("> <").append(value).append(">\n");
        std::fwrite(line.data(), 1, line.size(), stdout);
    });
    return expected;
}

} // namespace Tavik::Misc
