#pragma once

#include <tavik/Export.h>

#include <memory>
#include <string>

class TiXmlElement;

namespace Tavik::XML {

class XmlTree;

/// An element of an XML document, with typed attributes. It wraps an element of TinyXML.
///
///     XmlElement window("window");
///     window.setAttributeInt("width", 1280);
///     XmlDocument document;
///     document.appendElement(window);
///     document.write("layout.xml");
///
///     for (XmlElement child = document.root().firstElement(); child.valid(); child = child.nextElement()) ...
///
/// Copies share the element. An element that is never appended is freed with its last wrapper. An appended one belongs
/// to its document, or to the element that it was appended to; both stay in memory until the last wrapper of one of
/// their elements has gone as well, so a wrapper is safe to use after its document.
///
/// A wrapper without an element is invalid: setters and appendElement do nothing, getters answer as for an absent
/// attribute. Names and texts are UTF-8; a name must be an XML name, else the file written is no XML. Texts may contain
/// any character that XML allows; they are escaped. Numbers are written and read with a decimal point in every locale.
/// One thread at a time for all elements of a document.
class TAVIK_API XmlElement
{
public:
    /// An invalid wrapper.
    XmlElement() = default;

    /// A new element, which stands alone until it is appended.
    explicit XmlElement(const std::string& name);

    /// Shares an element; null makes an invalid wrapper. An element of this library is kept alive as by any other
    /// wrapper. One made with TinyXML alone is never freed by wrappers and must outlive them; appended here, it must
    /// have been created with new, and belongs to where it was appended.
    explicit XmlElement(TiXmlElement* element);

    /// @{
    /// A copy is the same element.
    XmlElement(const XmlElement&) = default;
    XmlElement& operator=(const XmlElement&) = default;
    /// @}
    ~XmlElement() = default;

    /// Each setter replaces the attribute of that name, or adds it as the last.
    void setAttributeString(const std::string& name, const std::string& value);

    /// As decimal number.
    void setAttributeInt(const std::string& name, int value);

    /// As "0x1f": lower case, no leading zeros; a negative value as its 32 bits.
    void setAttributeHex(const std::string& name, int value);

    /// With 6 significant digits, in fixed or exponent notation, whichever is shorter: 48.1234567 becomes "48.1235".
    void setAttributeDouble(const std::string& name, double value);

    /// As "true" or "false".
    void setAttributeBool(const std::string& name, bool value);

    /// A decimal, hexadecimal ("0x1F") or octal ("017") number, as strtol reads it with base 0: what follows the
    /// number is ignored, a text without one is 0. Above 32 bits the low ones count, so that "0xffffffff" is -1.
    /// @return defaultValue where the attribute is absent
    int getAttributeInt(const std::string& name, int defaultValue) const;

    /// A number as strtod reads it: what follows it is ignored, a text without one is 0.
    /// @return defaultValue where the attribute is absent
    double getAttributeDouble(const std::string& name, double defaultValue) const;

    /// Whether the text is exactly "true"; all else, "True" and "1" too, is false.
    /// @return defaultValue where the attribute is absent
    bool getAttributeBool(const std::string& name, bool defaultValue) const;

    /// The text, cut to its first maxLength - 1 bytes; empty where the attribute is absent or maxLength is 0.
    std::string getAttributeString(const std::string& name, unsigned int maxLength) const;

    /// The element's name, empty for an invalid wrapper.
    std::string name() const;

    /// The text between the tags, up to the first child element, without white space around it and with single blanks
    /// for that in it. Empty where something else comes first.
    std::string value() const;

    /// Whether there is an element.
    bool valid() const;

    /// The element of TinyXML, null for an invalid wrapper; <tinyxml.h> is needed to work with it. Do not delete it,
    /// nor link it into another tree except through appendElement.
    TiXmlElement* data() const;

    /// Appends an element that stands alone as last child.
    /// @return whether that was done. Not where one of the two is invalid, the other already stands in a document or an
    ///         element (append it once, then create the next), it is this element or one around it, or elements would
    ///         stand more than 1000 deep. Nothing is changed then.
    bool appendElement(const XmlElement& element);

    /// The first child element; invalid where there is none.
    XmlElement firstElement() const;

    /// The next element with the same parent; invalid behind the last.
    XmlElement nextElement() const;

private:
    friend class XmlDocument;

    XmlElement(TiXmlElement* element, const std::shared_ptr<XmlTree>& tree);
    const std::string* attribute(const std::string& name) const;

    TiXmlElement* mElement = nullptr;
    std::shared_ptr<XmlTree> mTree; // null for an invalid wrapper
};

} // namespace Tavik::XML
