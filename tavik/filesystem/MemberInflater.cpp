#include <tavik/filesystem/MemberInflater.h>

#include <algorithm>
#include <limits>
#include <new>

namespace Tavik::FileSystem {

namespace {

// Each refill costs a copy of the history, as each piece of output does; less than this shows in the time.
constexpr std::size_t InputSize = std::size_t{256} * 1024;

// The shortest codes, one bit each for a length of 258 and its distance, give 258 bytes for two bits.
constexpr std::uint64_t MaximumExpansion = 1032;

constexpr int RawDeflate = -15; // no zlib header, history of 32 KiB

} // namespace

MemberInflater::MemberInflater(const std::string& archivePath, const ZipFile::FileData& member)
    : mInput(new (std::nothrow) unsigned char[InputSize]), mInputLeft(member.compressedSize),
      mOutputLeft(member.uncompressedSize)
{
    std::uint64_t archiveSize = 0;
    mFile = openArchive(archivePath, archiveSize);
    if (mFile == nullptr || mInput == nullptr || member.dataOffset + mInputLeft > archiveSize ||
        mOutputLeft > mInputLeft * MaximumExpansion) {
        return;
    }
    // The pieces read are larger than stdio's buffer, which would only cost a copy.
    std::setvbuf(mFile.get(), nullptr, _IONBF, 0);
    if (fseeko(mFile.get(), static_cast<off_t>(member.dataOffset), SEEK_SET) == 0 &&
        inflateInit2(&mStream, RawDeflate) == Z_OK) {
        mState = State::Running;
    }
}

MemberInflater::~MemberInflater()
{
    inflateEnd(&mStream); // answers an error, and does nothing, where the stream was never opened
}

std::size_t MemberInflater::read(unsigned char* output, std::size_t length)
{
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(length, mOutputLeft));
    std::size_t done = 0;
    while (done < wanted && mState == State::Running) {
        const auto piece = static_cast<uInt>(std::min<std::size_t>(wanted - done, std::numeric_limits<uInt>::max()));
        mStream.next_out = output + done;
        mStream.avail_out = piece;
        step();
        done += piece - mStream.avail_out;
    }
    mOutputLeft -= done;
    return done;
}

bool MemberInflater::finish()
{
    // The last code may stand behind the last byte of output. Without room for output all that can still be taken is
    // that code; data that go on make no progress, which is an error.
    unsigned char none = 0;
    while (mState == State::Running) {
        mStream.next_out = &none;
        mStream.avail_out = 0;
        step();
    }
    return mState == State::Ended;
}

/// One call of inflate, with input where there is any left; no progress ends in failure.
void MemberInflater::step()
{
    if (mStream.avail_in == 0 && mInputLeft > 0 && !refill()) {
        mState = State::Failed;
        return;
    }
    const int result = inflate(&mStream, Z_NO_FLUSH);
    if (result == Z_STREAM_END) {
        mState = State::Ended;
    } else if (result != Z_OK) {
        mState = State::Failed;
    }
}

bool MemberInflater::refill()
{
    const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(InputSize, mInputLeft));
    if (std::fread(mInput.get(), 1, length, mFile.get()) != length) {
        return false;
    }
    mInputLeft -= length;
    mStream.next_in = mInput.get();
    mStream.avail_in = static_cast<uInt>(length);
    return true;
}

} // namespace Tavik::FileSystem
