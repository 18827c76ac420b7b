#pragma once
#include <unistd.h>
#include <utility>

// Owns a file descriptor. A negative number means that there is none.
class Descriptor {
public:
    explicit Descriptor(int number) noexcept : fNumber(number) {}
    Descriptor(Descriptor && other) noexcept : fNumber(std::exchange(other.fNumber, -1)) {}
    ~Descriptor()
    {
        if (fNumber >= 0)
            ::close(fNumber);
    }

    int number() const noexcept { return fNumber; }

private:
    int fNumber;
};
