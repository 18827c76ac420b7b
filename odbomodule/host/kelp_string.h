#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/format.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

// The one string type: text in 16-bit characters, UTF-16 by convention, never checked. A narrow text is
// ASCII and is widened character by character; a null pointer counts as the empty text.
class SUPPORT_TYPE KelpString : public std::u16string {
public:
    using Base = std::u16string;

    KelpString() noexcept = default;
    KelpString(KelpString const &) = default;
    KelpString(KelpString &&) noexcept = default;
    KelpString(Base const & text) : Base(text) {}
    KelpString(Base && text) noexcept : Base(std::move(text)) {}
    SUPPORT_API KelpString(char const * text);

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

    using Base::find;
    // Index of the first `character` at or behind `position`, npos when there is none.
    SUPPORT_API size_type find(char character, size_type position = 0) const noexcept;

    // Compares with narrow text: 0 on a match, else below or above 0 as this text sorts before or behind.
    // With `ignoreCase`, ASCII letters match in either case.
    SUPPORT_API std::int32_t strcmp(char const * text, bool ignoreCase) const noexcept;

    // Replaces the text by a printf-style format with its arguments; see format_text for the conversions.
    template <class... Arguments>
    void build(char const * format, Arguments const &... arguments)
    {
        *this = format_text(format, arguments...);
    }

    // From and to UTF-8. What is no well-formed UTF-8, and a lone surrogate, becomes U+FFFD.
    SUPPORT_API static KelpString fromUTF8(std::string_view text);
    SUPPORT_API std::string toUTF8() const;
};

// Writes the text as UTF-8.
SUPPORT_API std::ostream & operator<<(std::ostream & out, KelpString const & text);
