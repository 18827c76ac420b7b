#include <odbomodule/host/string_converters.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iterator>

namespace {

// The longest text is a 32-bit integer in radix 2, with its sign.
constexpr std::size_t kLongest = 40;

void assign(KelpString & out, char const * begin, char const * end)
{
    char16_t wide[kLongest];
    char16_t const * const wideEnd = std::copy(begin, end, wide);
    out.assign(wide, static_cast<std::size_t>(wideEnd - wide));
}

// The significant digits of a real, without trailing zeros, and the power of ten of the first digit.
struct Digits {
    char digits[24];
    int count = 0;
    int exponent = 0;
};

// Reads the scientific form of to_chars: "1.25e+20".
Digits digits_of(char const * at, char const * end)
{
    Digits result;
    for (; *at != 'e'; ++at)
        if (*at != '.')
            result.digits[result.count++] = *at;
    while (result.count > 1 && result.digits[result.count - 1] == '0')
        --result.count;
    at += at[1] == '+' ? 2 : 1; // from_chars reads a "-" but no "+"
    std::from_chars(at, end, result.exponent);
    return result;
}

Digits digits_of(double magnitude, int limit)
{
    char buffer[kLongest];
    char const * end = std::to_chars(buffer, std::end(buffer), magnitude, std::chars_format::scientific).ptr;
    Digits const shortest = digits_of(buffer, end);
    if (shortest.count <= limit)
        return shortest;
    end = std::to_chars(buffer, std::end(buffer), magnitude, std::chars_format::scientific, limit - 1).ptr;
    return digits_of(buffer, end);
}

// Writes to `out` and returns the end of what it wrote.
char * write_exponent_form(char * out, Digits const & number)
{
    *out++ = number.digits[0];
    if (number.count > 1)
        *out++ = '.';
    out = std::copy(number.digits + 1, number.digits + number.count, out);
    *out++ = 'e';
    *out++ = number.exponent < 0 ? '-' : '+';
    int const size = std::abs(number.exponent);
    if (size < 10)
        *out++ = '0';
    return std::to_chars(out, out + 3, size).ptr;
}

// Writes to `out` and returns the end of what it wrote.
char * write_fixed_form(char * out, Digits const & number)
{
    char const * const end = number.digits + number.count;
    if (number.exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -number.exponent - 1, '0');
        return std::copy(number.digits, end, out);
    }
    int const whole = number.exponent + 1;
    if (number.count <= whole)
        return std::fill_n(std::copy(number.digits, end, out), whole - number.count, '0');
    out = std::copy_n(number.digits, whole, out);
    *out++ = '.';
    return std::copy(number.digits + whole, end, out);
}

}

void StringConverters::convertIntegerToString(std::int32_t value, KelpString & out, std::int32_t radix)
{
    char buffer[kLongest];
    char const * const end =
        std::to_chars(buffer, std::end(buffer), value, radix < 2 || radix > 36 ? 10 : radix).ptr;
    assign(out, buffer, end);
}

void StringConverters::convertRealToString(
    double value, KelpString & out, std::int32_t /*radix*/, std::int32_t digits, bool alwaysExponent)
{
    if (!std::isfinite(value)) {
        out = std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
        return;
    }
    char buffer[kLongest];
    char * end = buffer;
    if (std::signbit(value))
        *end++ = '-';
    int const limit = std::clamp<int>(digits, 1, 17);
    Digits const number = digits_of(std::fabs(value), limit);
    if (alwaysExponent || number.exponent < -4 || number.exponent >= limit)
        end = write_exponent_form(end, number);
    else
        end = write_fixed_form(end, number);
    assign(out, buffer, end);
}
