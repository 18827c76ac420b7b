#pragma once
#include <cstddef>

// Every allocation that the test makes on this thread goes through here, so that it can be counted or fail: also those
// of the libraries, except on Windows, where a DLL brings its own.
extern thread_local std::size_t gAllocations;
extern thread_local std::size_t gFailAt; // 1 fails the next one; 0 none

#if defined(_WIN32)
constexpr bool kCountsLibraries = false;
#else
constexpr bool kCountsLibraries = true;
#endif
