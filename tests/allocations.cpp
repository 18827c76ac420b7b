#include "allocations.h"

#include <cstdlib>
#include <new>

thread_local std::size_t gAllocations = 0;
thread_local std::size_t gFailAt = 0;

[[gnu::noinline]] void * operator new(std::size_t size) // if new and delete are inlined, gcc warns that they do not match
{
    ++gAllocations;
    bool const fails = gFailAt > 0 && --gFailAt == 0;
    void * const memory = fails ? nullptr : std::malloc(size + (size == 0));
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void * memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void * memory, std::size_t) noexcept
{
    std::free(memory);
}

bool runs_out_of_memory(std::function<void()> const & work)
{
    try {
        work();
        return false;
    } catch (std::bad_alloc const &) {
        return true;
    }
}

bool fails_at_allocation(std::size_t nth, std::function<void()> const & work)
{
    gFailAt = kAllocationsFail ? nth : 0;
    bool const failed = runs_out_of_memory(work);
    gFailAt = 0;
    return failed;
}
