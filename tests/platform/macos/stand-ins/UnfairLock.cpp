#include <os/lock.h>

#include <cstdint>
#include <cstdlib>
#include <thread>

namespace {
unsigned int thisThread()
{
    static thread_local char mark;
    return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(&mark));
}
} // namespace

// Like the lock of macOS, it knows which thread holds it, and ends the program if that thread locks
// it again or another one unlocks it.
void os_unfair_lock_lock(os_unfair_lock_t lock)
{
    unsigned int* const holder = &lock->_os_unfair_lock_opaque;
    unsigned int free = 0;
    while (!__atomic_compare_exchange_n(
        holder, &free, thisThread(), false, __ATOMIC_ACQUIRE, __ATOMIC_RELAXED)) {
        if (free == thisThread())
            std::abort();
        free = 0;
        std::this_thread::yield();
    }
}

void os_unfair_lock_unlock(os_unfair_lock_t lock)
{
    if (__atomic_exchange_n(&lock->_os_unfair_lock_opaque, 0U, __ATOMIC_RELEASE) != thisThread())
        std::abort();
}
