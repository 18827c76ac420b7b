#include "registry_text.h"

#include "../common/narrow_text.h"

#include <charconv>
#include <string>
#include <system_error>

namespace {

std::u16string_view trim(std::u16string_view text)
{
    constexpr std::u16string_view kBlanks = u" \t\r";
    std::size_t const first = text.find_first_not_of(kBlanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

// Removes the next line from `text` and returns it without the line end and surrounding blanks.
std::u16string_view take_line(std::u16string_view & text)
{
    std::size_t const end = text.find(u'\n');
    std::u16string_view const line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return trim(line);
}

// Removes a quoted text from the start of `line` and returns it without quotes and escapes. Returns nullopt if a
// quote is missing or an escape is unknown.
std::optional<KelpString> take_quoted(std::u16string_view & line)
{
    if (!line.starts_with(u'"'))
        return std::nullopt;
    KelpString result;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == u'"') {
            line.remove_prefix(i + 1);
            return result;
        }
        if (line[i] == u'\\' && (++i == line.size() || (line[i] != u'\\' && line[i] != u'"')))
            return std::nullopt;
        result += line[i];
    }
    return std::nullopt;
}

// Reads `dword:00000001`.
std::optional<std::uint32_t> number_of(std::u16string_view text)
{
    constexpr std::u16string_view kStart = u"dword:";
    if (!equal_ignoring_case(text.substr(0, kStart.size()), kStart))
        return std::nullopt;
    std::string const digits = to_narrow(text.substr(kStart.size()));
    char const * const last = digits.data() + digits.size();
    std::uint32_t number = 0;
    auto const [end, failure] = std::from_chars(digits.data(), last, number, 16);
    return end == last && failure == std::errc() ? std::optional(number) : std::nullopt;
}

// The value in the line `"name"=value`. Returns nullopt for another name, or if the value is neither a text nor a
// dword.
std::optional<RegistryValue> value_of(std::u16string_view line, std::u16string_view name)
{
    std::optional<KelpString> const found = take_quoted(line);
    line = trim(line);
    if (!found || !equal_ignoring_case(*found, name) || !line.starts_with(u'='))
        return std::nullopt;
    line = trim(line.substr(1));
    if (std::optional<KelpString> text = take_quoted(line))
        return line.empty() ? std::optional<RegistryValue>(std::move(*text)) : std::nullopt;
    if (std::optional<std::uint32_t> const number = number_of(line))
        return RegistryValue(*number);
    return std::nullopt;
}

}

std::optional<RegistryValue> find_registry_value(
    std::u16string_view text, std::u16string_view key, std::u16string_view name)
{
    std::optional<RegistryValue> result;
    bool inKey = false;
    while (!text.empty()) {
        std::u16string_view const line = take_line(text);
        if (line.starts_with(u'['))
            inKey = line.ends_with(u']') && equal_ignoring_case(line.substr(1, line.size() - 2), key);
        else if (inKey)
            if (std::optional<RegistryValue> value = value_of(line, name))
                result = std::move(value);
    }
    return result;
}
