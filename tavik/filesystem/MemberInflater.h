#pragma once

#include <tavik/filesystem/ArchiveFile.h>
#include <tavik/filesystem/ZipFile.h>

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace Tavik::FileSystem {

/// Inflates one member of an archive piece by piece, so that the pieces can be used while they are in the cache. For
/// the library's own sources only.
///
///     MemberInflater inflater(path, archive.members().front());
///     while (const std::size_t length = inflater.read(piece, sizeof piece)) { ... }
///     if (!inflater.finish()) { ... } // what came was not the whole member
///
/// Each piece costs a copy of 32 KiB, the history that deflate refers to, so pieces should be a good deal larger.
class MemberInflater
{
public:
    /// Opens the archive; on failure prints as openArchive does.
    MemberInflater(const std::string& archivePath, const ZipFile::FileData& member);
    ~MemberInflater();

    MemberInflater(const MemberInflater&) = delete;
    MemberInflater& operator=(const MemberInflater&) = delete;

    /// Whether the member's data lie inside the archive and can become as large as the archive promises. Without that
    /// nothing is read, and nobody should allocate the promised size.
    bool isOpen() const { return mState != State::Failed; }

    /// The next bytes of the member.
    /// @param output  room for length bytes
    /// @return number of bytes written; less than length once the data end, are corrupt or reach the size that the
    ///         archive promises
    std::size_t read(unsigned char* output, std::size_t length);

    /// Call when all that was promised has been read, or read has returned less than asked for.
    /// @return whether the data came to their proper end and held no more than promised; the bytes read are good
    ///         only then
    bool finish();

private:
    enum class State
    {
        Failed,
        Running,
        Ended
    };

    bool refill();
    void step();

    std::unique_ptr<unsigned char[]> mInput;
    ArchiveFile mFile;
    std::uint64_t mInputLeft;  // compressed bytes still in the file
    std::uint64_t mOutputLeft; // of what the archive promises
    z_stream mStream = {};
    State mState = State::Failed;
};

} // namespace Tavik::FileSystem
