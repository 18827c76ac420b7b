#pragma once
#include <cstddef>
#include <functional>

// The operator new of this program counts the allocations of a thread, and lets one fail. The libraries use it too, except on Windows,
// where a DLL has its own.
extern thread_local std::size_t gAllocations;
extern thread_local std::size_t gFailAt; // 1 is the next allocation, 0 is none
#if defined(_WIN32)
inline constexpr bool kAllocationsFail = false;
#else
inline constexpr bool kAllocationsFail = true;
#endif

// Both run `work` and return whether it threw std::bad_alloc. fails_at_allocation() makes the nth allocation fail.
bool runs_out_of_memory(std::function<void()> const & work);
bool fails_at_allocation(std::size_t nth, std::function<void()> const & work);
