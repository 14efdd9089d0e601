#pragma once

#include <tavik/Export.h>

#include <map>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

class TiXmlElement;

namespace Tavik::XML {
class XmlElement;
}

namespace Tavik::Misc {

/// The settings of the process: dotted keys with texts, kept in an XML file.
///
///     Property& settings = Property::instance();
///     settings.setConfigFile("display.xml");
///     const double range = settings.getDouble("display.range", 40.0);
///     ...
///     settings.setDouble("display.range", range);
///     settings.writeXmlFile();
///
/// All values are texts; typed setters format them, typed getters parse them. Numbers have a decimal point in every
/// locale. A getter never stores its default, so the file holds what was read or set, nothing else. A look-up costs
/// about as much as one in a hash table.
///
/// One thread at a time while anything is stored or read in; once filled, any number may call the getters.
///
/// The file:
///
///     <Properties>
///         <display>
///             <Property key="range" value="40" />         display.range is 40
///             <units>
///                 <Property key="altitude" value="ft" />  display.units.altitude is ft
///             </units>
///         </display>
///     </Properties>
///
/// Every element but "Property" is a group, its name a section of the key. The root's name does not matter when
/// reading. Keys and values may hold any bytes and come back as they were:
/// - Where a section cannot be a group (it is empty, is no XML name, contains a colon or is "Property"; or the groups
///   would stand more than 998 deep or have more than 16365 bytes of names), it and those behind it stand in the
///   attribute "key" with their dots: `<Property key="12 x.y" value="1" />`.
/// - Where a key or value has bytes that XML cannot hold (control characters other than tab and line ends, bytes that
///   are not UTF-8), its element has the attribute encoding="percent", and in key and value the bytes outside of
///   printable ASCII and '%' are written as %XX.
/// The attributes "key" and "value" are cut to 255 bytes when they are read. XmlDocument tells the limits of a file.
class TAVIK_API Property
{
public:
    /// The one store of the process, created by the first call.
    static Property& instance();

    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    /// Remembers the file's name and reads it at once.
    /// @return as readXmlFile
    bool setConfigFile(const std::string& file);

    /// @{
    /// Adds the entries of the configured or the given file, in place of those with the same keys, and prints
    /// "Property <key> <value>" for each to standard output.
    /// @return false after printing "Error reading XML file <file>!", and before it the reason as XmlDocument::read;
    ///         nothing is changed then
    bool readXmlFile();
    bool readXmlFile(const std::string& file);
    /// @}

    /// @{
    /// Replaces the configured or the given file by all entries, in the order of their keys; whole or not at all, as
    /// XmlDocument::write.
    /// @return false after printing "Error writing property file <file>!" to standard output
    bool writeXmlFile() const;
    bool writeXmlFile(const std::string& file) const;
    /// @}

    /// Each setter replaces the entry of that key or adds one.
    void setString(std::string_view key, std::string_view value);

    /// As decimal number.
    void setInt(std::string_view key, int value);

    /// With 6 significant digits, in fixed or exponent notation, whichever is shorter: a third becomes "0.333333".
    void setDouble(std::string_view key, double value);

    /// As "true" or "false".
    void setSwitch(std::string_view key, bool value);

    /// Each getter answers defaultValue where there is no such key.
    std::string getString(std::string_view key, std::string_view defaultValue) const;

    /// The decimal number at the beginning of the text, 0 where there is none. A number beyond 32 bits keeps its low
    /// ones.
    int getInt(std::string_view key, int defaultValue) const;

    /// The number at the beginning of the text, 0 where there is none.
    double getDouble(std::string_view key, double defaultValue) const;

    /// Whether the text is exactly "TRUE", "True" or "true"; all else, "yes" and "1" too, is false.
    bool getSwitch(std::string_view key, bool defaultValue) const;

    /// Adds the entries of one element: itself where it is a "Property", else those in it at any depth, with the
    /// element's name and a dot behind the prefix. Prints as readXmlFile.
    /// @param element  the element
    /// @param prefix  what the keys begin with, its dot included; empty for none
    /// @return true; false for an invalid element
    bool readElement(const XML::XmlElement& element, const std::string& prefix);

    /// Removes all leading and trailing characters of the text that occur in the second argument.
    static void strip(std::string& text, const std::string& characters);

private:
    struct Value
    {
        std::string text;
        double number = 0.0; // parsed ahead, which takes longer than finding it

        void assign(std::string_view newText);
    };

    Property() = default;

    using Values = std::pmr::map<std::string_view, Value>;

    Values::iterator entryOf(std::string_view key, Values::iterator expected);
    const Value* find(std::string_view key) const;
    Values::iterator readTree(Values::iterator expected, const TiXmlElement& top, const std::string& prefix);
    void indexAll();

    std::pmr::monotonic_buffer_resource mMemory; // for the keys and the map; nothing is ever removed
    Values mProperties{&mMemory};
    std::string mConfigFile;
    std::unordered_map<std::string_view, Values::iterator> mIndex;
};

} // namespace Tavik::Misc
