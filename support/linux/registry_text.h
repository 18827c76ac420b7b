#pragma once
#include <odbomodule/host/kelp_string.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

// What a file says of a value: that it is a text or a number, or that it is removed.
struct RemovedValue {
    bool operator==(RemovedValue) const { return true; }
};
using RegistryValue = std::variant<KelpString, std::uint32_t, RemovedValue>;

// The bytes of an export file as text. With a byte order mark of UTF-16 they are UTF-16 in that order, else UTF-8,
// with or without its mark.
KelpString decode_registry_text(std::string_view bytes);

// Looks up the value `name` under `key`, which begins with the root's name, in the text of an export file. If the
// text speaks of it several times, the last one counts. A line `"name"=-` removes the value; `[-key]` removes all
// values of the key and of the keys below it, whether the text has any or not. Values of other types than text and
// dword are skipped, and so are broken lines. Nothing when the text does not speak of the value.
std::optional<RegistryValue> find_registry_value(
    std::u16string_view text, std::u16string_view key, std::u16string_view name);
