#include "allocations.h"

#include <cstdlib>
#include <new>

thread_local std::size_t gAllocations = 0;
thread_local std::size_t gFailAt = 0;

void * operator new(std::size_t size)
{
    ++gAllocations;
    if (gFailAt > 0 && --gFailAt == 0)
        throw std::bad_alloc();
    if (void * const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void * memory) noexcept
{
    std::free(memory);
}

void operator delete(void * memory, std::size_t) noexcept
{
    std::free(memory);
}
