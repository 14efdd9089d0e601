#pragma once

#include <cstddef>

/// What bounds an XML document, so that no file and no caller can exhaust the stack, the memory or the day.
namespace Tavik::XML {

/// Elements inside each other, the root being the first. TinyXML parses, prints and frees by recursion, with about
/// 250 bytes of stack for each level.
constexpr std::size_t MaximumLevels = 1000;

/// Bytes of the names of all elements around one place, with a separator each. A property has that many in its key.
constexpr std::size_t MaximumPathLength = 16384;

/// Attributes of one element. TinyXML compares each one with all before it.
constexpr std::size_t MaximumAttributes = 1000;

/// Bytes of a file. TinyXML takes up to fifty times as much memory.
constexpr std::size_t MaximumFileSize = 64u << 20;

} // namespace Tavik::XML
