#pragma once

#include <tavik/Export.h>

/// CRC-32 as in ZIP, PNG and Ethernet: polynomial 0x04C11DB7 (ISO 3309), reflected, started with all bits set and
/// inverted at the end.
///
///     CCRC32 crc32;
///     unsigned int crc = crc32.FullCRC(data, length);
///
/// Of data that come in pieces:
///
///     unsigned int crc = 0xFFFFFFFF;
///     crc32.PartialCRC(&crc, piece, pieceLength); // for each piece
///     crc = ~crc;
///
/// Null pointers are harmless: no data count as none, and a result that nobody wants is not stored. Long data are
/// taken by carry-less multiplication where the processor has it (x86-64 with PCLMULQDQ), else 16 bytes at a time from
/// tables.
///
/// Threads: one object may be used by any number of threads at once, except for Initialize().
class TAVIK_API CCRC32
{
public:
    /// Builds the table.
    CCRC32();
    virtual ~CCRC32();

    /// Builds the table: the remainder of each of the 256 bytes. The constructor has done so already.
    void Initialize();

    /// CRC-32 of a whole file, read in binary mode.
    /// @param path        null counts as a file that cannot be opened
    /// @param out         the CRC; 0xFFFFFFFF when the answer is false
    /// @param bufferSize  bytes read at a time; the result does not depend on it
    /// @return false when the file cannot be opened or read to its end, when `bufferSize` is 0, or when there is no
    ///         memory for the buffer
    bool FileCRC(const char* path, unsigned int* out, unsigned int bufferSize) const;

    /// The same with a buffer of 1,048,576 bytes.
    bool FileCRC(const char* path, unsigned int* out) const;

    /// CRC-32 of `length` bytes; 0 for a length of 0.
    unsigned int FullCRC(const unsigned char* data, unsigned int length) const;

    /// The same, stored in `*out`.
    void FullCRC(const unsigned char* data, unsigned int length, unsigned int* out) const;

    /// Continues a running CRC over `length` bytes, without inversion before or after.
    /// @param crc          the running CRC, changed in place
    /// @param data,length  the bytes that follow
    void PartialCRC(unsigned int* crc, const unsigned char* data, unsigned int length) const;

private:
    static unsigned int Reflect(unsigned int value, char bits);

    unsigned int mTable[256];
};
