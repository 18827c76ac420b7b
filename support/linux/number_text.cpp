#include "number_text.h"

#include "../common/narrow_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>

namespace {

bool is_blank(char16_t character)
{
    constexpr std::u16string_view kBlanks =
        u"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A"
        u"\u2028\u2029\u202F\u205F\u3000";
    return kBlanks.find(character) != kBlanks.npos;
}

bool is_digit(char16_t character)
{
    return character >= u'0' && character <= u'9';
}

// Reads what follows an "&", as a signed 32-bit number: "H1F" is hexadecimal, "O17" is octal.
HRESULT parse_bits(std::u16string_view text, double & out)
{
    char16_t const mark = text.size() < 2 ? u'\0' : ascii_lower(text.front());
    if (mark != u'h' && mark != u'o')
        return DISP_E_TYPEMISMATCH;
    unsigned const shift = mark == u'h' ? 4 : 3;
    std::u16string_view const digits = std::u16string_view(u"0123456789abcdef").substr(0, 1u << shift);
    std::uint32_t bits = 0;
    bool fits = true;
    for (char16_t const digit : text.substr(1)) {
        std::size_t const place = digits.find(ascii_lower(digit));
        if (place == digits.npos)
            return DISP_E_TYPEMISMATCH;
        fits = fits && bits >> (32 - shift) == 0;
        bits = bits << shift | static_cast<std::uint32_t>(place);
    }
    if (!fits)
        return DISP_E_OVERFLOW;
    out = static_cast<std::int32_t>(bits);
    return S_OK;
}

// Reads a number without sign and blanks: "12,345.6e7".
HRESULT parse_magnitude(std::u16string_view text, double & out)
{
    std::string plain;      // the number as from_chars reads it
    std::int64_t order = 0; // its decimal exponent: 2 for 12.5, 0 for 0.12, -1 for 0.05
    bool digits = false;
    bool point = false;
    bool nonzero = false;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
        char16_t const character = text[i];
        if (is_digit(character)) {
            digits = true;
            nonzero = nonzero || character != u'0';
            order += point ? (nonzero ? 0 : -1) : (nonzero ? 1 : 0);
        } else if (character == u'.' && !point) {
            point = true;
        } else if (character == u',' && digits) {
            continue;
        } else {
            break;
        }
        plain += static_cast<char>(character);
    }
    if (!digits)
        return DISP_E_TYPEMISMATCH;

    if (i < text.size()) {
        char16_t const mark = ascii_lower(text[i++]);
        bool const negative = i < text.size() && text[i] == u'-';
        if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
            ++i;
        if ((mark != u'e' && mark != u'd') || i == text.size())
            return DISP_E_TYPEMISMATCH;
        std::int64_t exponent = 0;
        for (; i < text.size(); ++i) {
            if (!is_digit(text[i]))
                return DISP_E_TYPEMISMATCH;
            exponent = std::min<std::int64_t>(exponent * 10 + (text[i] - u'0'), 1'000'000'000);
        }
        exponent = negative ? -exponent : exponent;
        plain += 'e' + std::to_string(exponent);
        order += exponent;
    }
    std::errc const failure = std::from_chars(plain.data(), plain.data() + plain.size(), out).ec;
    if (failure == std::errc::result_out_of_range) {
        if (order > 0)
            return DISP_E_OVERFLOW;
        out = 0; // too small for a double
    }
    return S_OK;
}

}

HRESULT parse_number(std::u16string_view text, double & out)
{
    bool sign = false;
    bool negative = false;
    bool currency = false;
    bool open = false;
    bool closed = false;
    auto const take_sign = [&](char16_t character) {
        if (sign || (character != u'-' && character != u'+'))
            return false;
        sign = true;
        negative = character == u'-';
        return true;
    };
    for (; !text.empty(); text.remove_prefix(1)) {
        char16_t const character = text.front();
        if (character == u'$' && !currency)
            currency = true;
        else if (character == u'(' && !sign)
            sign = negative = open = true;
        else if (!is_blank(character) && !take_sign(character))
            break;
    }
    if (!text.empty() && text.front() == u'&' && !sign && !currency) {
        while (is_blank(text.back()))
            text.remove_suffix(1);
        return parse_bits(text.substr(1), out);
    }
    for (; !text.empty(); text.remove_suffix(1)) {
        char16_t const character = text.back();
        if (character == u'$' && !currency)
            currency = true;
        else if (character == u')' && open && !closed)
            closed = true;
        else if (!is_blank(character) && !take_sign(character))
            break;
    }
    if (open != closed)
        return DISP_E_TYPEMISMATCH;
    double magnitude = 0;
    HRESULT const code = parse_magnitude(text, magnitude);
    if (code == S_OK)
        out = negative ? -magnitude : magnitude;
    return code;
}
