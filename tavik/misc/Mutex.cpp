#include <tavik/misc/Mutex.h>

namespace Tavik::Misc {

Mutex::Mutex()
{
    init();
}

Mutex::~Mutex() = default;

void Mutex::init()
{
    if (mInitialized) {
        return;
    }
    pthread_mutex_init(&mMutex, nullptr);
    mInitialized = true;
}

void Mutex::lock()
{
    pthread_mutex_lock(&mMutex);
}

void Mutex::unlock()
{
    pthread_mutex_unlock(&mMutex);
}

pthread_mutex_t* Mutex::rawMutex()
{
    return &mMutex;
}

} // namespace Tavik::Misc
