#include <tavik/misc/Mutex.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <thread>

using Tavik::Misc::Mutex;

TEST(Mutex, KeepsThreadsApart)
{
    Mutex mutex;
    mutex.init(); // again: must not replace the mutex
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 10000; ++i) {
            mutex.lock();
            ++count;
            mutex.unlock();
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 20000);
}

TEST(Mutex, DestructionLeavesItAloneAndConstructionStartsAfresh)
{
    alignas(Mutex) unsigned char storage[sizeof(Mutex)];
    Mutex* mutex = new (storage) Mutex;
    pthread_mutex_t* raw = mutex->rawMutex();
    mutex->lock();
    mutex->~Mutex();
    EXPECT_EQ(pthread_mutex_trylock(raw), EBUSY);
    mutex = new (storage) Mutex;
    EXPECT_EQ(pthread_mutex_trylock(mutex->rawMutex()), 0);
    mutex->unlock();
}
