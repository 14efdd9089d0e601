#pragma once

#include <tavik/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <string>

/// MD5 message digest (RFC 1321), for checking that data arrived unchanged.
///
///     Md5 md5;
///     md5.update(header, headerLength);
///     md5.update(body, bodyLength);
///     md5.finalize();
///     std::string digest = md5.hex_digest(); // 32 lower-case hexadecimal digits
///
/// Of a whole file at once:
///
///     std::ifstream file("tile.dt1", std::ios::binary);
///     std::string digest = Md5(file).hex_digest();
///
/// Calls in the wrong order print one line on standard error and change nothing. MD5 protects against accidents, not
/// against forgers: two messages of one digest can be made at will.
///
/// Threads: each object belongs to one thread at a time; different objects are independent.
class TAVIK_API Md5
{
public:
    /// Ready for the first update().
    Md5();

    /// @{
    /// Digest of all that is left in the stream, finalized. See update() for the streams.
    explicit Md5(std::FILE* file);
    explicit Md5(std::istream& stream);
    explicit Md5(std::ifstream& stream);
    /// @}

    /// Starts over: forgets all bytes added so far, and a digest.
    void init();

    /// Adds bytes. The digest does not depend on how a message is divided into calls; a message may be of any size
    /// (its length is counted in bits modulo 2^64).
    /// @param data,length  the bytes and how many they are; null adds nothing
    ///
    /// After finalize() it prints "Md5::update:  Can't update a finalized digest!" and adds nothing.
    void update(const unsigned char* data, unsigned int length);

    /// @{
    /// Adds all that is left in a stream, which should be open in binary mode and stays open. Ends at the end of the
    /// stream or at the first read error; ask the stream which it was. A null or closed stream adds nothing. An
    /// exception that the stream throws on account of its `exceptions()` mask is not passed on. After finalize() it
    /// prints the same text as above and reads nothing.
    void update(std::FILE* file);
    void update(std::istream& stream);
    void update(std::ifstream& stream);
    /// @}

    /// Ends the message; the digest is there from now on.
    /// A second call prints "Md5::finalize:  Already finalized this digest!".
    void finalize();

    /// The digest as bytes.
    /// @return the 16 bytes of the digest in a new array, to be freed with `delete[]`; null when memory is short.
    /// Before finalize() it prints "Md5::raw_digest:  Can't get digest if you haven't finalized the digest!", and the
    /// array holds 16 zeros (an empty string), to be freed all the same.
    unsigned char* raw_digest() const;

    /// The digest as text.
    /// @return the digest as 32 lower-case hexadecimal digits.
    /// Before finalize() it prints "Md5::hex_digest:  Can't get digest if you haven't finalized the digest!" and
    /// returns an empty string.
    std::string hex_digest() const;

    /// Digest of one piece of memory in one call: init(), update(), finalize(). What was added before is forgotten.
    /// @return the 16 bytes of the digest
    std::array<unsigned char, 16> getMd5(const unsigned char* data, unsigned int length);

private:
    template <class Read>
    void updateFrom(Read read);
    bool refusesUpdate() const;
    void add(const unsigned char* data, std::size_t length);

    std::uint32_t mState[4];
    std::uint64_t mBitCount;
    unsigned char mBuffer[64]; // the bytes of an unfinished block: as many as the bit count says
    std::array<unsigned char, 16> mDigest;
    bool mFinalized;
};
