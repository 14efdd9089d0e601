#include <tavik/misc/Mutex.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <thread>

using Tavik::Misc::Mutex;

TEST(Mutex, KeepsOtherThreadsOutUntilItIsUnlocked)
{
    Mutex mutex;
    mutex.lock();
    mutex.init(); // again: must not replace the mutex, which would unlock it
    int tried = -1;
    std::thread([&] { tried = pthread_mutex_trylock(mutex.rawMutex()); }).join();
    EXPECT_EQ(tried, EBUSY);

    bool entered = false;
    std::thread waiting([&] {
        mutex.lock();
        entered = true;
        mutex.unlock();
    });
    EXPECT_FALSE(entered); // read under the lock
    mutex.unlock();
    waiting.join();
    EXPECT_TRUE(entered);
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
