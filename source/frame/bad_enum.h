#pragma once
#include <cstdint>

// Throws MDX_ERR_BAD_ENUM, with the value and the enumeration's name as inserts.
[[noreturn]] void raise_bad_enum(std::int32_t value, char const * enumeration);
