#include <odbomodule/host/format.h>

#include "narrow_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <exception>
#include <iterator>

namespace {

// One conversion of a format, such as "%-08.3f".
struct Conversion {
    bool left = false;
    bool zeros = false;
    std::size_t width = 0;
    int precision = -1; // negative if there is none
    char type = '\0';   // zero for an unknown conversion
};

constexpr std::size_t kWidest = 4096;

bool is_digit(char character)
{
    return character >= '0' && character <= '9';
}

std::size_t take_number(char const *& at)
{
    std::size_t number = 0;
    for (; is_digit(*at); ++at)
        number = std::min(kWidest, number * 10 + static_cast<std::size_t>(*at - '0'));
    return number;
}

// Reads what follows a "%" and moves `at` past it.
Conversion take_conversion(char const *& at)
{
    Conversion result;
    for (; *at == '-' || *at == '0'; ++at) {
        result.left = result.left || *at == '-';
        result.zeros = result.zeros || *at == '0';
    }
    result.width = take_number(at);
    if (*at == '.') {
        ++at;
        result.precision = static_cast<int>(take_number(at));
    }
    while (*at != '\0' && std::string_view("hlLqjzt").find(*at) != std::string_view::npos)
        ++at;
    if (*at != '\0' && std::string_view("diuxXcsf%").find(*at) != std::string_view::npos)
        result.type = *at++;
    return result;
}

// The text of a number in two parts. Zeros can be inserted between them.
struct Number {
    std::string_view sign;
    std::string digits;
    bool zerosAllowed;
};

Number real_number(double value, int precision)
{
    Number result{ std::signbit(value) && !std::isnan(value) ? "-" : "", "", std::isfinite(value) };
    if (!std::isfinite(value)) {
        result.digits = std::isnan(value) ? "nan" : "inf";
        return result;
    }
    int const places = precision < 0 ? 6 : precision;
    result.digits.resize(320 + static_cast<std::size_t>(places)); // the largest real has 309 digits
    char * const begin = result.digits.data();
    char const * const end =
        std::to_chars(begin, begin + result.digits.size(), std::fabs(value), std::chars_format::fixed, places).ptr;
    result.digits.resize(static_cast<std::size_t>(end - begin));
    return result;
}

Number whole_number(FormatArgument const & argument, Conversion const & conversion)
{
    bool const hexadecimal = conversion.type == 'x' || conversion.type == 'X';
    bool const plain = !hexadecimal && conversion.type != 'u';
    bool const negative = argument.fKind == FormatArgument::Signed && argument.fSigned < 0;
    std::uint64_t bits = argument.fKind == FormatArgument::Signed ? static_cast<std::uint64_t>(argument.fSigned)
                                                                  : argument.fUnsigned;
    if (negative)
        bits = plain ? 0 - bits : bits & (~std::uint64_t{ 0 } >> (64 - argument.fBits));

    char buffer[24];
    char * const end = std::to_chars(buffer, std::end(buffer), bits, hexadecimal ? 16 : 10).ptr;
    Number result{ negative && plain ? "-" : "", std::string(buffer, end), conversion.precision < 0 };
    if (conversion.type == 'X')
        std::transform(result.digits.begin(), result.digits.end(), result.digits.begin(),
            [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 32) : digit; });
    auto const least = static_cast<std::size_t>(std::max(conversion.precision, 0));
    if (result.digits.size() < least)
        result.digits.insert(0, least - result.digits.size(), '0');
    return result;
}

void append_padded(std::u16string & out, Conversion const & conversion, Number const & number)
{
    std::size_t const size = number.sign.size() + number.digits.size();
    std::size_t const padding = conversion.width > size ? conversion.width - size : 0;
    bool const zeros = conversion.zeros && !conversion.left && number.zerosAllowed;
    if (!conversion.left && !zeros)
        out.append(padding, u' ');
    append_narrow(out, number.sign);
    if (zeros)
        out.append(padding, u'0');
    append_narrow(out, number.digits);
    if (conversion.left)
        out.append(padding, u' ');
}

void append_padded(std::u16string & out, Conversion const & conversion, std::u16string_view text)
{
    if (conversion.type == 's' && conversion.precision >= 0)
        text = text.substr(0, static_cast<std::size_t>(conversion.precision));
    std::size_t const padding = conversion.width > text.size() ? conversion.width - text.size() : 0;
    if (!conversion.left)
        out.append(padding, u' ');
    out.append(text);
    if (conversion.left)
        out.append(padding, u' ');
}

void append_argument(std::u16string & out, Conversion const & conversion, FormatArgument const & argument)
{
    switch (argument.fKind) {
    case FormatArgument::Wide: append_padded(out, conversion, argument.fWide); return;
    case FormatArgument::Narrow: {
        std::u16string wide;
        append_narrow(wide, argument.fNarrow);
        append_padded(out, conversion, wide);
        return;
    }
    case FormatArgument::Real:
        append_padded(out, conversion, real_number(argument.fReal, conversion.precision));
        return;
    case FormatArgument::Signed:
    case FormatArgument::Unsigned:
        if (conversion.type == 'c') {
            bool const fits = argument.fUnsigned <= 0xFFFF; // a negative number does not
            char16_t const character = fits ? static_cast<char16_t>(argument.fUnsigned) : u'\uFFFD';
            append_padded(out, conversion, std::u16string_view(&character, 1));
        } else {
            append_padded(out, conversion, whole_number(argument, conversion));
        }
    }
}

}

std::u16string format_text(char const * format, FormatArgument const * arguments, std::size_t count)
{
    std::u16string result;
    char const * at = format == nullptr ? "" : format;
    std::size_t next = 0;
    for (;;) {
        char const * percent = at;
        while (*percent != '\0' && *percent != '%')
            ++percent;
        append_narrow(result, std::string_view(at, percent));
        if (*percent == '\0')
            return result;
        at = percent + 1;
        Conversion const conversion = take_conversion(at);
        if (conversion.type == '%')
            result.push_back(u'%');
        else if (conversion.type == '\0' || next == count)
            append_narrow(result, std::string_view(percent, at));
        else
            append_argument(result, conversion, arguments[next++]);
    }
}

std::int32_t format_cut(char16_t * buffer, std::size_t size, char const * format, FormatArgument const * arguments,
    std::size_t count) noexcept
{
    if (buffer == nullptr || size == 0)
        return 0;
    std::size_t length = 0;
    try {
        length = format_text(format, arguments, count).copy(buffer, size - 1);
    } catch (std::exception const &) { // no memory for the whole text
    }
    buffer[length] = u'\0';
    return static_cast<std::int32_t>(length);
}
