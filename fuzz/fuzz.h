#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Ends the run when something that must hold does not.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}
