#include <tavik/xml/XmlElement.h>

#include <tavik/xml/NumberText.h>
#include <tavik/xml/XmlTree.h>

#include <tinyxml.h>

#include <cstdio>

namespace Tavik::XML {

XmlElement::XmlElement(const std::string& name) : mTree(XmlTree::ofNewElement(name))
{
    mElement = mTree->topElement();
}

XmlElement::XmlElement(TiXmlElement* element)
    : mElement(element), mTree(element != nullptr ? XmlTree::ofNode(*element) : nullptr)
{}

XmlElement::XmlElement(TiXmlElement* element, const std::shared_ptr<XmlTree>& tree)
    : mElement(element), mTree(element != nullptr ? tree : nullptr)
{}

void XmlElement::setAttributeString(const std::string& name, const std::string& value)
{
    if (valid()) {
        mElement->SetAttribute(name, value);
    }
}

void XmlElement::setAttributeInt(const std::string& name, int value)
{
    setAttributeString(name, std::to_string(value));
}

void XmlElement::setAttributeHex(const std::string& name, int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned int>(value));
    setAttributeString(name, text);
}

void XmlElement::setAttributeDouble(const std::string& name, double value)
{
    setAttributeString(name, doubleText(value));
}

void XmlElement::setAttributeBool(const std::string& name, bool value)
{
    setAttributeString(name, boolText(value));
}

int XmlElement::getAttributeInt(const std::string& name, int defaultValue) const
{
    const std::string* text = attribute(name);
    return text != nullptr ? intFromText(*text, 0) : defaultValue;
}

double XmlElement::getAttributeDouble(const std::string& name, double defaultValue) const
{
    const std::string* text = attribute(name);
    return text != nullptr ? doubleFromText(*text) : defaultValue;
}

bool XmlElement::getAttributeBool(const std::string& name, bool defaultValue) const
{
    const std::string* text = attribute(name);
    return text != nullptr ? *text == boolText(true) : defaultValue;
}

std::string XmlElement::getAttributeString(const std::string& name, unsigned int maxLength) const
{
    const std::string* text = attribute(name);
    return text != nullptr && maxLength > 0 ? text->substr(0, maxLength - 1) : std::string();
}

std::string XmlElement::name() const
{
    return valid() ? mElement->ValueStr() : std::string();
}

std::string XmlElement::value() const
{
    const char* text = valid() ? mElement->GetText() : nullptr;
    return text != nullptr ? text : "";
}

bool XmlElement::valid() const
{
    return mElement != nullptr;
}

TiXmlElement* XmlElement::data() const
{
    return mElement;
}

bool XmlElement::appendElement(const XmlElement& element)
{
    return valid() && element.valid() && XmlTree::append(*mElement, mTree, *element.mElement, *element.mTree);
}

XmlElement XmlElement::firstElement() const
{
    return {valid() ? mElement->FirstChildElement() : nullptr, mTree};
}

XmlElement XmlElement::nextElement() const
{
    return {valid() ? mElement->NextSiblingElement() : nullptr, mTree};
}

const std::string* XmlElement::attribute(const std::string& name) const
{
    return valid() ? mElement->Attribute(name) : nullptr;
}

} // namespace Tavik::XML
