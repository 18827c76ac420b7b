#pragma once
#include <unistd.h>

// The number of an open file, which is closed at the end of a scope, or a number below 0.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) noexcept : fNumber(number) {}
    ~Descriptor()
    {
        if (fNumber >= 0)
            ::close(fNumber);
    }
    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;

    // Takes over what was opened. It had no open file before.
    void take(int number) noexcept { fNumber = number; }

    int number() const noexcept { return fNumber; }

private:
    int fNumber = -1;
};
