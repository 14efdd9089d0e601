#pragma once

#include <string>

class TiXmlDocument;
class TiXmlNode;

/// TinyXML documents from and to files.
namespace Tavik::XML {

enum class Locations
{
    Skip, ///< nodes do not know their row and column; parses faster
    Keep
};

/// Fills an empty document from a file.
///
/// Text that is UTF-8 is read as such, any other byte by byte. What XmlLimits.h forbids is refused.
/// @return false after printing name, row, column and reason to standard output; the document's content is then
///         undefined
bool readDocument(const std::string& file, TiXmlDocument& document, Locations locations);

/// Replaces the file by the document, whole or not at all.
bool writeDocument(const std::string& file, const TiXmlDocument& document);

/// A node with all in it, indented by four blanks for each level, with "\n" as line end.
std::string printed(const TiXmlNode& node);

} // namespace Tavik::XML
