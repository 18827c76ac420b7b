#pragma once
#include "odbomodule/host/kelp_string.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

// A value of the registry: a text or a number.
using RegistryValue = std::variant<KelpString, std::uint32_t>;

// The bytes of an export file as text. With a byte order mark of UTF-16 they are UTF-16 in that order, else UTF-8,
// with or without its mark.
KelpString decode_registry_text(std::string_view bytes);

// Looks up the value `name` under `key`, which begins with the root's name, in the text of an export file. If there
// are several, the last one counts. Values of other types than text and dword are skipped, and so are broken lines.
std::optional<RegistryValue> find_registry_value(
    std::u16string_view text, std::u16string_view key, std::u16string_view name);
