#pragma once
#include <cstddef>

// Every allocation that a test makes on its thread can be counted and can fail: also those of the libraries, except on Windows,
// where a DLL brings its own.
extern thread_local std::size_t gAllocations;
extern thread_local std::size_t gFailAt; // 1 fails the next one, 0 none
#if defined(_WIN32)
inline constexpr bool kAllocationsFail = false;
#else
inline constexpr bool kAllocationsFail = true;
#endif
