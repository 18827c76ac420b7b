#pragma once
#include <cstdint>

// The message of an error code; null for an unknown code. "%1" to "%9" are placeholders for the error's inserts. A
// message has no other "%".
char const * error_message(std::uint32_t code) noexcept;
