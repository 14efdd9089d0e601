#include <tavik/network/SendQueue.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace Tavik::Network {

void SendQueue::append(const void* data, std::uint32_t length, bool isRest)
{
    Entry entry;
    entry.data.reset(new (std::nothrow) unsigned char[length]);
    if (entry.data == nullptr) {
        return;
    }
    if (length > 0) {
        std::memcpy(entry.data.get(), data, length);
    }
    entry.length = length;
    entry.isRest = isRest;
    at(mCount) = std::move(entry);
    ++mCount;
    if (mCount <= MostEntries) {
        mOverflow = 0;
        return;
    }
    dropOldest();
    ++mOverflow;
}

void SendQueue::consume(std::uint32_t bytes)
{
    Entry& entry = at(0);
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
    at(0) = Entry();
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
