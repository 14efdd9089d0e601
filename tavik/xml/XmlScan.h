#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace Tavik::XML {

/// Where a text breaks a limit, and how.
struct XmlRefusal
{
    std::size_t offset; // bytes
    const char* reason;
};

/// Looks whether TinyXML may be given a text: how deep it nests, and the other limits of XmlLimits.h.
///
/// Follows TinyXML's own steps through the text, not those of the XML standard, since what counts is where TinyXML
/// descends. Nothing is said of a text on which TinyXML stops by itself with an error. Character references in
/// which TinyXML would lose its way are refused too.
/// @param utf8  whether TinyXML will be told that the text is UTF-8, which it then has to be
std::optional<XmlRefusal> scanXml(const std::string& text, bool utf8);

} // namespace Tavik::XML
