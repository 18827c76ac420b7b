#pragma once
#include "export.h"

#include <mutex>

/// A mutex that is not recursive. The thread that locked it must unlock it.
class WirralMutex {
public:
    void lock() { fMutex.lock(); }
    void unlock() { fMutex.unlock(); }

private:
    std::mutex fMutex;
};

/// Locks a mutex for the length of a scope.
class WirralSynchronized {
public:
    explicit WirralSynchronized(WirralMutex & mutex) : fGuard(mutex) {}

private:
    std::lock_guard<WirralMutex> fGuard;
};
