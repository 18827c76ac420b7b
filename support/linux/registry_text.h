#pragma once
#include <odbomodule/host/kelp_string.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

using RegistryValue = std::variant<KelpString, std::uint32_t>;

// Looks up the value `name` under `key` in the text of a settings file. `key` starts with the name of the root. If
// several lines give the value, the last one wins. A line that starts with "[" but has no "]" at its end is a key
// that matches nothing. Other lines that cannot be read are skipped.
std::optional<RegistryValue> find_registry_value(
    std::u16string_view text, std::u16string_view key, std::u16string_view name);
