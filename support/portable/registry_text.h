#pragma once
#include "odbomodule/host/kelp_string.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

// A value of the registry: a text or a number.
using RegistryValue = std::variant<KelpString, std::uint32_t>;

// The bytes of an export file as text: UTF-16 by its mark, in either byte order; else UTF-8, with or without.
KelpString decode_registry_text(std::string_view bytes);

// Looks up the value `name` under `key` (from the root's name on) in the text of an export file; the last
// one counts. Values of other types than text and dword, and lines that are broken, are passed over.
std::optional<RegistryValue> find_registry_value(
    std::u16string_view text, std::u16string_view key, std::u16string_view name);
