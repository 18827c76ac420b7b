#pragma once
#include <cstdint>

// Throws MDX_ERR_BAD_ENUM for a value that is none of the enumeration's.
[[noreturn]] void raise_bad_enum(std::int32_t value, char const * enumeration);
