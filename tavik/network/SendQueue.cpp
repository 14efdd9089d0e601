#include <tavik/network/SendQueue.h>

#include <algorithm>
#include <new>
#include <utility>

namespace Tavik::Network {

unsigned char* SendQueue::append(std::uint32_t length, bool isRest)
{
    QueueEntry entry;
    entry.data.reset(new (std::nothrow) unsigned char[length]);
    unsigned char* const data = entry.data.get();
    if (data == nullptr) {
        return nullptr;
    }
    entry.length = length;
    entry.isRest = isRest;
    at(mCount) = std::move(entry);
    ++mCount;
    if (mCount <= MostEntries) {
        mOverflow = 0;
    } else {
        dropOldest();
        ++mOverflow;
    }
    return data;
}

void SendQueue::consume(std::uint32_t bytes)
{
    QueueEntry& entry = at(0);
    entry.sent += std::min(bytes, entry.length - entry.sent);
    if (entry.sent == entry.length) {
        removeHead();
    }
}

void SendQueue::clear()
{
    while (mCount > 0) {
        removeHead();
    }
}

void SendQueue::removeHead()
{
    at(0) = QueueEntry();
    mFirst = (mFirst + 1) % static_cast<std::uint32_t>(mEntries.size());
    --mCount;
}

void SendQueue::dropOldest()
{
    if (head().isRest || head().sent > 0) {
        std::swap(at(0), at(1));
    }
    removeHead();
}

} // namespace Tavik::Network
