#pragma once
#include "export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// One argument of a printf-style format. It knows its type, so a conversion for another type cannot misread it.
/// Texts are not copied.
class FormatArgument {
public:
    enum Kind : std::uint8_t { Signed, Unsigned, Real, Wide, Narrow };

    template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
    FormatArgument(Number number) noexcept
    {
        if constexpr (std::is_floating_point_v<Number>) {
            fKind = Real;
            fReal = static_cast<double>(number);
        } else if constexpr (std::is_signed_v<Number> || std::is_same_v<Number, char>) {
            fKind = Signed;
            fSigned = static_cast<std::make_signed_t<Number>>(number); // a char is unsigned on some processors
            fBits = 8 * sizeof(Number);
        } else {
            fKind = Unsigned;
            fUnsigned = number;
        }
    }
    FormatArgument(void const * address) noexcept
        : fKind(Unsigned), fUnsigned(reinterpret_cast<std::uintptr_t>(address))
    {}
    FormatArgument(char const * text) noexcept : fKind(Narrow), fNarrow(text == nullptr ? "" : text) {}
    FormatArgument(char16_t const * text) noexcept : fKind(Wide), fWide(text == nullptr ? u"" : text) {}
    FormatArgument(std::u16string const & text) noexcept : fKind(Wide), fWide(text) {}

    Kind fKind;
    unsigned fBits = 64; ///< the width of a signed number, for its unsigned and hexadecimal forms
    union {
        std::int64_t fSigned;
        std::uint64_t fUnsigned;
        double fReal;
    };
    std::string_view fNarrow{};
    std::u16string_view fWide{};
};

/// Formats as printf does, the same in every locale: %d %i %u %x %X %c %s %f %%, with the flags "-" and "0", a
/// width and a precision, both capped at 4096. Length modifiers are skipped. A conversion that does not fit its
/// argument acts as %d, %f or %s, whichever fits: "%.3f" of the integer 5 gives "005". Only a conversion written as
/// %s cuts a text to the precision. Unlike with printf, "%.0d" of 0 gives "0", and %c of a number that is not a
/// 16-bit character, or of a char that is not ASCII, gives U+FFFD. A conversion that is unknown or has no argument
/// is copied to the text. Narrow texts are UTF-8; a null text counts as empty.
SUPPORT_API std::u16string format_text(char const * format, FormatArgument const * arguments, std::size_t count);

template <class... Arguments>
std::u16string format_text(char const * format, Arguments const &... arguments)
{
    FormatArgument const list[] = { FormatArgument(arguments)..., FormatArgument(0) };
    return format_text(format, list, sizeof...(arguments));
}

/// Formats as format_text does and writes the text and a closing zero to `buffer`, which has room for `size`
/// characters. A longer text is cut. Returns the number of characters written, without the zero. Writes nothing and
/// returns 0 if `buffer` is null or `size` is 0; writes an empty text if memory runs out.
SUPPORT_API std::int32_t format_cut(char16_t * buffer, std::size_t size, char const * format,
    FormatArgument const * arguments, std::size_t count) noexcept;

template <class... Arguments>
std::int32_t suprintf(
    char16_t * buffer, std::size_t size, char const * format, Arguments const &... arguments) noexcept
{
    FormatArgument const list[] = { FormatArgument(arguments)..., FormatArgument(0) };
    return format_cut(buffer, size, format, list, sizeof...(arguments));
}
