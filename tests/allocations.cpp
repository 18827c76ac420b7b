#include "allocations.h"

#include <cstdlib>
#include <new>

thread_local std::size_t gAllocations = 0;
thread_local std::size_t gFailAt = 0;

void * operator new(std::size_t size)
{
    ++gAllocations;
    bool const fails = gFailAt > 0 && --gFailAt == 0;
    void * const memory = fails ? nullptr : std::malloc(size + (size == 0));
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void operator delete(void * memory) noexcept { std::free(memory); }

void operator delete(void * memory, std::size_t) noexcept { std::free(memory); }
