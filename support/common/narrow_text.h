#pragma once
#include <algorithm>
#include <string>
#include <string_view>

// Appends UTF-8. Each ill-formed sequence becomes U+FFFD.
void append_narrow(std::u16string & out, std::string_view text);

// Converts to UTF-8. A lone surrogate becomes U+FFFD.
std::string to_narrow(std::u16string_view text);

// Reads UTF-8 as 16-bit characters, one at a time.
class NarrowReader {
public:
    explicit NarrowReader(std::string_view text) noexcept : fText(text) {}

    bool at_end() const noexcept { return fText.empty() && fLow == u'\0'; }
    char16_t take() noexcept;

private:
    std::string_view fText;
    char16_t fLow = u'\0'; // the second half of a surrogate pair, if that is next
};

// Converts an ASCII letter to lower case. Returns any other character unchanged.
constexpr char16_t ascii_lower(char16_t character) noexcept
{
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 32) : character;
}

// Whether two texts are equal, ignoring the case of ASCII letters.
inline bool equal_ignoring_case(std::u16string_view one, std::u16string_view other) noexcept
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
        [](char16_t a, char16_t b) { return ascii_lower(a) == ascii_lower(b); });
}
