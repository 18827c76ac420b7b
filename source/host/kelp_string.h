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

    /// From narrow text of another type, such as std::string.
    template <class Text, std::enable_if_t<std::is_convertible_v<Text const &, std::string_view> &&
                                               !std::is_convertible_v<Text const &, char const *>,
                              int> = 0>
    KelpString(Text const & text) : KelpString(fromUTF8(text))
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
    /// other does. With `ignoreCase`, the case of ASCII letters is ignored.
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

namespace support {

template <class Text>
inline constexpr bool is_kelp_string = std::is_base_of_v<KelpString, std::decay_t<Text>>;
template <class Text>
inline constexpr bool is_narrow_text = std::is_convertible_v<Text const &, std::string_view>;

/// A KelpString and narrow text, in either order.
template <class A, class B>
inline constexpr bool compare_by_kelp_string = (is_kelp_string<A> && is_narrow_text<B>) ||
                                               (is_narrow_text<A> && is_kelp_string<B>);
/// A KelpString and anything that converts to it, in either order.
template <class A, class B>
inline constexpr bool join_to_kelp_string = (is_kelp_string<A> && std::is_convertible_v<B, KelpString>) ||
                                            (is_kelp_string<B> && std::is_convertible_v<A, KelpString>);

}

/// Compare a KelpString with narrow text. The standard library has the operators for 16-bit text.
template <class A, class B, std::enable_if_t<support::compare_by_kelp_string<A, B>, int> = 0>
bool operator==(A const & a, B const & b)
{
    return KelpString(a).compare(KelpString(b)) == 0;
}
template <class A, class B, std::enable_if_t<support::compare_by_kelp_string<A, B>, int> = 0>
bool operator!=(A const & a, B const & b)
{
    return !(a == b);
}

/// Joins a KelpString with narrow or 16-bit text. The standard library's operator would return a std::u16string, to
/// which narrow text cannot be added.
template <class A, class B, std::enable_if_t<support::join_to_kelp_string<A, B>, int> = 0>
KelpString operator+(A && a, B && b)
{
    KelpString joined(std::forward<A>(a));
    joined += b;
    return joined;
}

/// Writes the text as UTF-8.
SUPPORT_API std::ostream & operator<<(std::ostream & out, KelpString const & text);
