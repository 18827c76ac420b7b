#pragma once
#include <cstdint>

// The message of an error code, with %1 to %9 in the places of its inserts and no other "%". Null for an unknown
// code.
char const * error_message(std::uint32_t code) noexcept;
