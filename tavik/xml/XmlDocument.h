#pragma once

#include <tavik/Export.h>
#include <tavik/xml/XmlElement.h>

#include <memory>
#include <string>

namespace Tavik::XML {

/// An XML document in memory, from and to files.
///
///     XmlDocument document;
///     if (document.read("layout.xml")) {
///         const int width = document.root().getAttributeInt("width", 1280);
///     }
///
/// Limits that keep hostile files from exhausting stack, memory and time: 64 MiB for a file, 1000 elements inside each
/// other, 16384 bytes for the names of the elements around one place together, 1000 attributes for an element. read
/// refuses what is beyond, and what nests too deeply is not appended either. One thread at a time.
class TAVIK_API XmlDocument
{
public:
    /// An empty document.
    XmlDocument();
    ~XmlDocument();

    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    /// Appends an element that stands alone. The first one is the root; a well-formed document has no other.
    /// @return as XmlElement::appendElement
    bool appendElement(const XmlElement& element);

    /// The root element; invalid where there is none.
    XmlElement root() const;

    /// Replaces the file by this document: its texts byte for byte, so in UTF-8 unless a file in another encoding was
    /// read; without an XML declaration unless one was read.
    ///
    /// The old file stands there whole until the new one does, even if the program is killed or the disk is full:
    /// the new content is written beside it, flushed to the disk and renamed. Symbolic links are followed, permission
    /// bits kept; devices and pipes are written directly. Needs write permission for the file and its folder; a program
    /// killed half-way leaves a file ".tavik-<process>-<number>" there.
    /// @return false where that failed; the old file is unchanged then, and nothing left beside it
    bool write(const std::string& file) const;

    /// Replaces this document by the file. Wrappers of elements of the old content keep that alive.
    ///
    /// A text that is UTF-8 is taken as such; any other byte by byte, whatever encoding its declaration tells.
    /// @return false after printing "Error reading <file> :" and "Row r Col c Error reason" to standard output, row and
    ///         column from 1, or 0 where there is no place to tell; the document is unchanged then
    bool read(const std::string& file);

    /// Prints an element with all in it, in place of the text in out: four blanks for each level, "\n" as line end.
    /// Nothing for an invalid element. The element need not belong to this document.
    void print(const XmlElement& element, std::string& out) const;

private:
    std::shared_ptr<XmlTree> mTree;
};

} // namespace Tavik::XML
