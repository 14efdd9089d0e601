#include <tavik/network/SocketWait.h>

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>

namespace Tavik::Network {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::nanoseconds;

/// One wait, which a signal may end.
/// @param limit  negative for none
int waitOnce(int fd, Readiness readiness, nanoseconds limit)
{
    pollfd entry{};
    entry.fd = fd;
    entry.events = readiness == Readiness::Readable ? POLLIN : POLLOUT;
    int result = 0;
    if (limit.count() > 0) {
        timespec timeout{};
        timeout.tv_sec = static_cast<time_t>(limit.count() / 1'000'000'000);
        timeout.tv_nsec = static_cast<long>(limit.count() % 1'000'000'000);
        result = ppoll(&entry, 1, &timeout, nullptr);
    } else { // the cheaper call where no fraction of a millisecond counts, which every message needs
        result = poll(&entry, 1, limit.count() < 0 ? -1 : 0);
    }
    if (result > 0 && (entry.revents & POLLNVAL) != 0) {
        errno = EBADF;
        return -1;
    }
    return result;
}

} // namespace

int waitFor(int fd, Readiness readiness, std::int64_t microseconds)
{
    if (fd < 0) { // poll would leave it out and wait
        errno = EBADF;
        return -1;
    }
    nanoseconds limit = std::chrono::microseconds(microseconds);
    const bool isTimed = microseconds > 0; // where not, there is no need of the clock
    const Clock::time_point end = isTimed ? Clock::now() + limit : Clock::time_point();
    for (;;) {
        const int result = waitOnce(fd, readiness, limit);
        if (result >= 0 || errno != EINTR) {
            return result;
        }
        if (isTimed) {
            limit = std::max(nanoseconds(end - Clock::now()), nanoseconds::zero());
        }
    }
}

} // namespace Tavik::Network
