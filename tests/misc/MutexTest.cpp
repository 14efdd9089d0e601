#include <tavik/misc/Mutex.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <new>

using Tavik::Misc::Mutex;

TEST(Mutex, OnlyConstructionStartsAfresh)
{
    alignas(Mutex) unsigned char storage[sizeof(Mutex)];
    Mutex* mutex = new (storage) Mutex;
    pthread_mutex_t* raw = mutex->rawMutex();
    mutex->lock();
    mutex->init();
    EXPECT_EQ(pthread_mutex_trylock(raw), EBUSY);
    mutex->~Mutex();
    EXPECT_EQ(pthread_mutex_trylock(raw), EBUSY);
    mutex = new (storage) Mutex;
    EXPECT_EQ(pthread_mutex_trylock(mutex->rawMutex()), 0);
    mutex->unlock();
    EXPECT_EQ(pthread_mutex_trylock(raw), 0);
}
