#pragma once

#include <memory>
#include <string>

class TiXmlDocument;
class TiXmlElement;
class TiXmlNode;

namespace Tavik::XML {

/// Keeps the nodes of one tree alive: of a document, or of an element that stands alone.
///
/// Every wrapper shares the tree of its element. When an element is appended elsewhere, its tree hands it over and from
/// then on keeps the tree alive that it has gone to, so that wrappers made before need not be told. Trees that came
/// from outside are never freed here.
class XmlTree
{
public:
    ~XmlTree();

    XmlTree(const XmlTree&) = delete;
    XmlTree& operator=(const XmlTree&) = delete;

    static std::shared_ptr<XmlTree> ofNewElement(const std::string& name);
    static std::shared_ptr<XmlTree> ofNewDocument();

    /// The tree that has the node; a fresh one that frees nothing where the node is not from this library.
    static std::shared_ptr<XmlTree> ofNode(TiXmlNode& node);

    TiXmlElement* topElement() const;
    TiXmlDocument* document() const;

    /// Links a child that stands alone behind the parent's children, and its tree to the parent's.
    /// @return whether that was done: not where the child has a parent, is the parent or one around it, or the levels
    ///         of the two would be too many
    static bool append(TiXmlNode& parent, const std::shared_ptr<XmlTree>& parentTree, TiXmlElement& child,
                       XmlTree& childTree);

private:
    XmlTree() = default;

    template <typename Node>
    static std::shared_ptr<XmlTree> owning(std::unique_ptr<Node> top);

    std::unique_ptr<TiXmlNode> mTop; // null for a tree from outside, and after being appended
    std::shared_ptr<XmlTree> mHost;  // the tree that this one was appended to
};

} // namespace Tavik::XML
