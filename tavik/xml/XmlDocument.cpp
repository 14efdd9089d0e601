#include <tavik/xml/XmlDocument.h>

#include <tavik/xml/XmlFile.h>
#include <tavik/xml/XmlTree.h>

#include <tinyxml.h>

namespace Tavik::XML {

XmlDocument::XmlDocument() : mTree(XmlTree::ofNewDocument()) {}

XmlDocument::~XmlDocument() = default;

bool XmlDocument::appendElement(const XmlElement& element)
{
    return element.valid() && XmlTree::append(*mTree->document(), mTree, *element.mElement, *element.mTree);
}

XmlElement XmlDocument::root() const
{
    return {mTree->document()->RootElement(), mTree};
}

bool XmlDocument::write(const std::string& file) const
{
    return writeDocument(file, *mTree->document());
}

bool XmlDocument::read(const std::string& file)
{
    std::shared_ptr<XmlTree> tree = XmlTree::ofNewDocument();
    if (!readDocument(file, *tree->document(), Locations::Keep)) {
        return false;
    }
    mTree = std::move(tree);
    return true;
}

void XmlDocument::print(const XmlElement& element, std::string& out) const
{
    out = element.valid() ? printed(*element.data()) : std::string();
}

} // namespace Tavik::XML
