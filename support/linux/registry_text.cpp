#include "registry_text.h"

#include "../common/narrow_text.h"

namespace {

constexpr std::u16string_view kBlanks = u" \t";

std::u16string_view trim(std::u16string_view text)
{
    std::size_t const first = text.find_first_not_of(kBlanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

// Takes the next line off `text`, without its end.
std::u16string_view take_line(std::u16string_view & text)
{
    std::size_t const end = text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == u'\r')
        line.remove_suffix(1);
    return trim(line);
}

// Takes a text in quotes off `line`. Nothing for a text without an end or with an unknown escape.
std::optional<KelpString> take_quoted(std::u16string_view & line)
{
    if (line.empty() || line.front() != u'"')
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

std::optional<std::uint32_t> hexadecimal_number(std::u16string_view digits)
{
    if (digits.empty() || digits.size() > 8)
        return std::nullopt;
    constexpr std::u16string_view kDigits = u"0123456789abcdef";
    std::uint32_t number = 0;
    for (char16_t const digit : digits) {
        std::size_t const place = kDigits.find(ascii_lower(digit));
        if (place == kDigits.npos)
            return std::nullopt;
        number = number * 16 + static_cast<std::uint32_t>(place);
    }
    return number;
}

bool begins_ignoring_case(std::u16string_view text, std::u16string_view beginning)
{
    return equal_ignoring_case(text.substr(0, beginning.size()), beginning);
}

// Whether `key` is `other` or lies below it.
bool lies_in(std::u16string_view key, std::u16string_view other)
{
    return begins_ignoring_case(key, other) && (key.size() == other.size() || key[other.size()] == u'\\');
}

// Reads what comes after the "=".
std::optional<RegistryValue> parse_value(std::u16string_view text)
{
    if (text == u"-")
        return RemovedValue();
    if (std::optional<KelpString> quoted = take_quoted(text))
        return trim(text).empty() ? std::optional<RegistryValue>(std::move(*quoted)) : std::nullopt;
    constexpr std::u16string_view kNumber = u"dword:";
    if (!begins_ignoring_case(text, kNumber))
        return std::nullopt;
    if (std::optional<std::uint32_t> const number = hexadecimal_number(trim(text.substr(kNumber.size()))))
        return RegistryValue(*number);
    return std::nullopt;
}

// What comes after the "=" in a line `"name"=...`, and the name; empty for another line. "@" stands for a key's
// default value, which is never looked up: `name` is not set then.
std::u16string_view value_part(std::u16string_view line, KelpString & name)
{
    if (line.front() == u'@')
        line.remove_prefix(1);
    else if (std::optional<KelpString> quoted = take_quoted(line))
        name = std::move(*quoted);
    line = trim(line);
    return line.empty() || line.front() != u'=' ? std::u16string_view() : trim(line.substr(1));
}

}

KelpString decode_registry_text(std::string_view bytes)
{
    bool const little = bytes.substr(0, 2) == "\xFF\xFE";
    if (!little && bytes.substr(0, 2) != "\xFE\xFF")
        return KelpString::fromUTF8(bytes.substr(bytes.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0));

    KelpString result;
    result.reserve(bytes.size() / 2);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        auto const low = static_cast<unsigned char>(bytes[little ? i : i + 1]);
        auto const high = static_cast<unsigned char>(bytes[little ? i + 1 : i]);
        result += static_cast<char16_t>(high << 8 | low);
    }
    return result;
}

std::optional<RegistryValue> find_registry_value(
    std::u16string_view text, std::u16string_view key, std::u16string_view name)
{
    std::optional<RegistryValue> result;
    bool inKey = false;
    while (!text.empty()) {
        std::u16string_view const line = take_line(text);
        if (line.empty())
            continue;
        if (line.front() == u'[') {
            bool const whole = line.back() == u']';
            std::u16string_view const header = line.substr(1, line.size() - 2);
            inKey = whole && equal_ignoring_case(header, key);
            if (whole && header.substr(0, 1) == u"-" && lies_in(key, header.substr(1)))
                result = RemovedValue();
            continue;
        }
        KelpString found;
        std::u16string_view const value = value_part(line, found);
        if (!found.empty() && inKey && equal_ignoring_case(found, name))
            if (std::optional<RegistryValue> parsed = parse_value(value))
                result = std::move(parsed);
        // Bytes may take several lines. The lines after the first are not values themselves.
        if (begins_ignoring_case(value, u"hex"))
            for (std::u16string_view part = value; !part.empty() && part.back() == u'\\';)
                part = take_line(text);
    }
    return result;
}
