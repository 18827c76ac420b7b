#pragma once
#include "export.h"
#include "format.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// The string type of the module and its hosts: UTF-16 in 16-bit characters, which is never validated. Functions
/// that take `char const *` read UTF-8, in which each ill-formed sequence becomes U+FFFD. A null pointer counts as
/// the empty text.
class SUPPORT_TYPE KelpString : public std::u16string {
public:
    using Base = std::u16string;

    KelpString() noexcept = default;
    KelpString(KelpString const &) = default;
    KelpString(KelpString &&) noexcept = default;
    KelpString(Base const & text) : Base(text) {}
    KelpString(Base && text) noexcept : Base(std::move(text)) {}
    SUPPORT_API KelpString(char const * text);
    /// From a char16_t const *. It is a template so that 0 and nullptr are not ambiguous.
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
    /// Appends a char; U+FFFD if it is not ASCII. It is a template so that a number is taken as a char16_t.
    template <class Character, std::enable_if_t<std::is_same_v<Character, char>, int> = 0>
    KelpString & operator+=(Character character)
    {
        auto const value = static_cast<unsigned char>(character);
        return *this += value < 0x80 ? char16_t{ value } : u'\uFFFD';
    }

    using Base::find;
    /// The index of the first `character` at or after `position`; npos if there is none or `character` is not
    /// ASCII.
    SUPPORT_API size_type find(char character, size_type position = 0) const noexcept;

    /// Compares by 16-bit characters: 0 if the texts are equal, below 0 if this text sorts first, above 0 if the
    /// other does. With `ignoreCase`, ASCII letters match in either case.
    SUPPORT_API std::int32_t strcmp(char const * text, bool ignoreCase) const noexcept;

    /// Replaces the text with what format_text makes.
    template <class... Arguments>
    void build(char const * format, Arguments const &... arguments)
    {
        *this = format_text(format, arguments...);
    }

    /// Converts from and to UTF-8. Ill-formed sequences and lone surrogates become U+FFFD.
    SUPPORT_API static KelpString fromUTF8(std::string_view text);
    SUPPORT_API std::string toUTF8() const;
};

/// Writes the text as UTF-8.
SUPPORT_API std::ostream & operator<<(std::ostream & out, KelpString const & text);
