#pragma once
#include <algorithm>
#include <string>
#include <string_view>

// Appends narrow text, which is UTF-8, as KelpString does.
void append_narrow(std::u16string & out, std::string_view text);

// A capital ASCII letter made small; any other character as it is.
constexpr char16_t ascii_lower(char16_t character) noexcept
{
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 32) : character;
}

// Whether two texts are the same; ASCII letters match in either case.
inline bool equal_ignoring_case(std::u16string_view one, std::u16string_view other) noexcept
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
        [](char16_t a, char16_t b) { return ascii_lower(a) == ascii_lower(b); });
}
