#pragma once

#include <tavik/Export.h>

#include <pthread.h>

namespace Tavik::Misc {

/// Plain non-recursive lock around a POSIX mutex, offered to applications.
///
///     Mutex mutex;
///     mutex.lock();
///     ...
///     mutex.unlock();
///
/// The same thread must not lock it twice. The destructor leaves the POSIX mutex alone, so that a thread that still
/// holds it at exit is never pulled the ground from under its feet; building another Mutex in the same storage
/// initialises it afresh.
class TAVIK_API Mutex
{
public:
    /// Creates the mutex with default attributes.
    Mutex();
    virtual ~Mutex();

    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    /// Creates the mutex unless that has been done; the constructor has, so this is normally without effect.
    void init();

    /// Waits until no other thread holds the mutex, and takes it.
    void lock();
    /// Gives it back; only by the thread that has taken it.
    void unlock();

    /// The POSIX mutex itself, for calls that need the native handle. It lives as long as this object.
    pthread_mutex_t* rawMutex();

private:
    pthread_mutex_t mMutex;
    bool mInitialized = false;
};

} // namespace Tavik::Misc
