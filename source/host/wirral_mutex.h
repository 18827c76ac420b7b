#pragma once
#include "export.h"

#include <mutex>

// A plain mutex. It is not recursive; the thread that locked it unlocks it.
class WirralMutex {
public:
    void lock() { fMutex.lock(); }
    void unlock() { fMutex.unlock(); }

private:
    std::mutex fMutex;
};

// Holds a mutex for the length of a scope.
class WirralSynchronized {
public:
    explicit WirralSynchronized(WirralMutex & mutex) : fGuard(mutex) {}

private:
    std::lock_guard<WirralMutex> fGuard;
};
