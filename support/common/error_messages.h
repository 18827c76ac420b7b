#pragma once
#include <cstdint>

// The message of an error code, with %1, %2, ... where its inserts go. Null for an unknown code.
char const * error_message(std::uint32_t code) noexcept;
