#pragma once

#include <tavik/Export.h>

#include <array>
#include <cstdint>
#include <memory>

namespace Tavik::Network {

/// The data that a socket did not take yet, oldest first: at most 200 entries.
///
/// Memory is allocated for each entry's data, and for nothing else.
class TAVIK_API SendQueue
{
public:
    /// The most entries that wait.
    static constexpr std::uint32_t MostEntries = 200;

    /// Entries that wait.
    std::uint32_t size() const { return mCount; }
    /// Whether none waits.
    bool isEmpty() const { return mCount == 0; }

    /// Entries dropped since the last append that found room.
    std::uint32_t overflow() const { return mOverflow; }

    /// Appends an entry, which the caller fills. Where 200 entries wait, the oldest goes; but an oldest one of which
    /// the peer has already seen a part stays, since without its rest the peer would take what follows for it, and the
    /// second oldest goes.
    /// @param length  bytes
    /// @param isRest  whether the entry is the rest of a message whose begin has been sent
    /// @return its bytes; null without memory, and nothing is appended
    unsigned char* append(std::uint32_t length, bool isRest);

    /// @{
    /// The oldest entry's unsent bytes; only when there is one.
    const unsigned char* headData() const { return head().data.get() + head().sent; }
    std::uint32_t headLength() const { return head().length - head().sent; }
    /// @}

    /// Notes that so many bytes of the oldest entry have been sent, and removes it when those were all.
    void consume(std::uint32_t bytes);

    /// Removes everything; overflow() stays.
    void clear();

private:
    struct QueueEntry
    {
        std::unique_ptr<unsigned char[]> data;
        std::uint32_t length = 0;
        std::uint32_t sent = 0;
        bool isRest = false;
    };

    const QueueEntry& head() const { return mEntries[mFirst]; }
    QueueEntry& at(std::uint32_t index) { return mEntries[(mFirst + index) % mEntries.size()]; }
    void removeHead();
    void dropOldest();

    std::array<QueueEntry, MostEntries + 1> mEntries; // a ring
    std::uint32_t mFirst = 0;
    std::uint32_t mCount = 0;
    std::uint32_t mOverflow = 0;
};

} // namespace Tavik::Network
