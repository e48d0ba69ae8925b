#include "tools/allocations/CountedAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> calls { 0 };
}

void* operator new(std::size_t size)
{
    calls.fetch_add(1, std::memory_order_relaxed);
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace kestrel {

long allocations()
{
    return calls;
}

} // namespace kestrel
