#pragma once
#include <algorithm>
#include <string>
#include <string_view>

// Appends narrow text, which is UTF-8, as KelpString does.
void append_narrow(std::u16string & out, std::string_view text);

// 16-bit text as narrow text. A lone surrogate becomes U+FFFD.
std::string to_narrow(std::u16string_view text);

// UTF-8 as 16-bit characters, one by one.
class Units {
public:
    explicit Units(std::string_view text) noexcept : fText(text) {}

    bool at_end() const noexcept { return fText.empty() && fLow == u'\0'; }
    char16_t take() noexcept;

private:
    std::string_view fText;
    char16_t fLow = u'\0'; // the second half of a pair, if it comes next
};

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
