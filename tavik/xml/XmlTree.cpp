#include <tavik/xml/XmlTree.h>

#include <tavik/xml/XmlLimits.h>

#include <tinyxml.h>

#include <algorithm>

namespace Tavik::XML {

namespace {

/// Leads from the top node of a tree to what owns it.
struct TreeLink
{
    std::weak_ptr<XmlTree> tree;
};

struct OwnedElement : TiXmlElement, TreeLink
{
    explicit OwnedElement(const std::string& name) : TiXmlElement(name) {}
};

struct OwnedDocument : TiXmlDocument, TreeLink
{
};

/// Elements from the top down to the node, itself included; 0 for a document.
std::size_t levelOf(const TiXmlNode& node)
{
    std::size_t level = 0;
    for (const TiXmlNode* step = &node; step != nullptr && step->ToElement() != nullptr; step = step->Parent()) {
        ++level;
    }
    return level;
}

/// Elements from this one down to its deepest descendant.
std::size_t heightOf(const TiXmlElement& top)
{
    std::size_t height = 1;
    std::size_t level = 1;
    const TiXmlElement* element = &top;
    for (;;) {
        if (const TiXmlElement* child = element->FirstChildElement()) {
            element = child;
            height = std::max(height, ++level);
            continue;
        }
        while (element != &top && element->NextSiblingElement() == nullptr) {
            element = element->Parent()->ToElement();
            --level;
        }
        if (element == &top) {
            return height;
        }
        element = element->NextSiblingElement();
    }
}

bool isInside(const TiXmlNode& node, const TiXmlNode& other)
{
    const TiXmlNode* step = &node;
    while (step != nullptr && step != &other) {
        step = step->Parent();
    }
    return step != nullptr;
}

} // namespace

XmlTree::~XmlTree() = default;

template <typename Node>
std::shared_ptr<XmlTree> XmlTree::owning(std::unique_ptr<Node> top)
{
    std::shared_ptr<XmlTree> tree(new XmlTree);
    top->tree = tree;
    tree->mTop = std::move(top);
    return tree;
}

std::shared_ptr<XmlTree> XmlTree::ofNewElement(const std::string& name)
{
    return owning(std::make_unique<OwnedElement>(name));
}

std::shared_ptr<XmlTree> XmlTree::ofNewDocument()
{
    return owning(std::make_unique<OwnedDocument>());
}

std::shared_ptr<XmlTree> XmlTree::ofNode(TiXmlNode& node)
{
    TiXmlNode* top = &node;
    while (top->Parent() != nullptr) {
        top = top->Parent();
    }
    const auto* link = dynamic_cast<TreeLink*>(top);
    std::shared_ptr<XmlTree> tree = link != nullptr ? link->tree.lock() : nullptr;
    return tree ? tree : std::shared_ptr<XmlTree>(new XmlTree);
}

TiXmlElement* XmlTree::topElement() const
{
    return mTop ? mTop->ToElement() : nullptr;
}

TiXmlDocument* XmlTree::document() const
{
    return mTop ? mTop->ToDocument() : nullptr;
}

bool XmlTree::append(TiXmlNode& parent, const std::shared_ptr<XmlTree>& parentTree, TiXmlElement& child,
                     XmlTree& childTree)
{
    if (child.Parent() != nullptr || isInside(parent, child) || levelOf(parent) + heightOf(child) > MaximumLevels) {
        return false;
    }
    parent.LinkEndChild(&child);
    static_cast<void>(childTree.mTop.release()); // now freed by its parent
    childTree.mHost = parentTree;
    return true;
}

} // namespace Tavik::XML
