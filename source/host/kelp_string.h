#pragma once
#include "export.h"
#include "format.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

// The string type of the module and its host: text in 16-bit characters, UTF-16 by convention, never checked.
// Narrow text is UTF-8; what is ill-formed in it becomes U+FFFD, and so does a single `char` beyond ASCII. A null
// pointer counts as the empty text.
class SUPPORT_TYPE KelpString : public std::u16string {
public:
    using Base = std::u16string;

    KelpString() noexcept = default;
    KelpString(KelpString const &) = default;
    KelpString(KelpString &&) noexcept = default;
    KelpString(Base const & text) : Base(text) {}
    KelpString(Base && text) noexcept : Base(std::move(text)) {}
    SUPPORT_API KelpString(char const * text);
    // From a char16_t const *. A template, so that a bare 0 or nullptr does not fit both.
    template <class Character, std::enable_if_t<std::is_same_v<Character, char16_t>, int> = 0>
    KelpString(Character const * text) : Base(text == nullptr ? u"" : text)
    {}

    KelpString & operator=(KelpString const &) = default;
    KelpString & operator=(KelpString &&) noexcept = default;
    SUPPORT_API KelpString & operator=(Base const & text);
    SUPPORT_API KelpString & operator=(Base && text) noexcept;
    SUPPORT_API KelpString & operator=(char const * text);
    SUPPORT_API KelpString & operator=(char16_t const * text);

    SUPPORT_API KelpString & operator+=(KelpString const & text);
    SUPPORT_API KelpString & operator+=(char const * text);
    SUPPORT_API KelpString & operator+=(char16_t const * text);
    SUPPORT_API KelpString & operator+=(char16_t character);
    // From a char. A template, so that a number fits a char16_t alone.
    template <class Character, std::enable_if_t<std::is_same_v<Character, char>, int> = 0>
    KelpString & operator+=(Character character)
    {
        auto const value = static_cast<unsigned char>(character);
        return *this += value < 0x80 ? char16_t{ value } : u'\uFFFD';
    }

    using Base::find;
    // The index of the first `character` from `position` on, or npos, as for a `character` beyond ASCII.
    SUPPORT_API size_type find(char character, size_type position = 0) const noexcept;

    // Compares with narrow text: 0 on a match, below 0 if this text sorts before the other by its 16-bit characters,
    // above 0 if it sorts after it. With `ignoreCase`, ASCII letters match in either case.
    SUPPORT_API std::int32_t strcmp(char const * text, bool ignoreCase) const noexcept;

    // Sets the text to `format` with its arguments put in, as format_text does.
    template <class... Arguments>
    void build(char const * format, Arguments const &... arguments)
    {
        *this = format_text(format, arguments...);
    }

    // From and to UTF-8. Ill-formed UTF-8 and lone surrogates become U+FFFD.
    SUPPORT_API static KelpString fromUTF8(std::string_view text);
    SUPPORT_API std::string toUTF8() const;
};

// Writes the text as UTF-8.
SUPPORT_API std::ostream & operator<<(std::ostream & out, KelpString const & text);
