#include <odbomodule/host/automation.h>

#include <odbomodule/host/string_converters.h>
#include "../common/narrow_text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
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

// The size of a value of that type, beyond the type itself. 0 for a type without values, for one that is not copied
// here, and for an unknown type. A decimal lies over its type and has another way.
std::size_t size_of(unsigned type)
{
    switch (type) {
    case VT_I1:
    case VT_UI1: return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR: return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE: return 8;
    case VT_BSTR: return sizeof(BSTR);
    default: return 0;
    }
}

bool is_object(unsigned type)
{
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

bool is_type(unsigned type)
{
    unsigned const base = type & ~unsigned{ VT_ARRAY | VT_BYREF };
    if (size_of(base) != 0 || is_object(base) || base == VT_DECIMAL || base == VT_RECORD)
        return true;
    return base == VT_VARIANT ? type != base : type == VT_EMPTY || type == VT_NULL;
}

// The value that `source` is or points to. A text is borrowed.
HRESULT dereference(VARIANT const & source, VARIANT & out)
{
    if (!is_type(source.vt))
        return DISP_E_BADVARTYPE;
    if ((source.vt & VT_BYREF) == 0) {
        out = source;
        return S_OK;
    }
    if (source.byref == nullptr)
        return DISP_E_TYPEMISMATCH;
    if (source.vt == (VT_BYREF | VT_VARIANT)) {
        VARIANT const & inner = *static_cast<VARIANT const *>(source.byref);
        return inner.vt == source.vt ? E_INVALIDARG : dereference(inner, out);
    }
    if (source.vt == (VT_BYREF | VT_DECIMAL))
        std::memcpy(&out.decVal, source.byref, sizeof out.decVal);
    else
        std::memcpy(&out.llVal, source.byref, size_of(source.vt & ~unsigned{ VT_BYREF }));
    out.vt = static_cast<VARTYPE>(source.vt & ~VT_BYREF);
    return S_OK;
}

// Reads "H1F" or "O17", the text after an "&": 32 bits, of which the first is the sign.
HRESULT parse_bits(std::u16string_view text, double & out)
{
    if (text.size() < 2)
        return DISP_E_TYPEMISMATCH;
    char16_t const mark = ascii_lower(text.front());
    unsigned const shift = mark == u'h' ? 4 : mark == u'o' ? 3 : 0;
    std::u16string_view const digits =
        std::u16string_view(u"0123456789abcdef").substr(0, shift == 0 ? 0 : 1u << shift);
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

// Reads "12,345.6e7", without sign and blanks.
HRESULT parse_magnitude(std::u16string_view text, double & out)
{
    std::string plain;      // the number in the form that from_chars reads
    std::int64_t order = 0; // the power of ten above the first digit that is not 0
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
            continue; // anywhere after the first digit
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
        out = 0; // the number is too small to differ from it
    }
    return S_OK;
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

// A text is read up to its first zero character.
std::u16string_view read_text(VARIANT const & value)
{
    std::u16string_view const text(value.bstrVal, SysStringLen(value.bstrVal));
    return text.substr(0, text.find(u'\0'));
}

constexpr std::size_t kLargestScale = 28;

// Writes all digits of a decimal, as in "-12.5": no zeros at the end of the fraction, and no sign before 0.
HRESULT write_digits(DECIMAL const & value, std::string & out)
{
    if (value.scale > kLargestScale || (value.sign != 0 && value.sign != DECIMAL_NEG))
        return E_INVALIDARG;
    std::uint32_t parts[] = { value.Hi32, static_cast<std::uint32_t>(value.Lo64 >> 32),
        static_cast<std::uint32_t>(value.Lo64) };
    for (std::size_t count = 0; count <= value.scale || (parts[0] | parts[1] | parts[2]) != 0; ++count) {
        std::uint64_t rest = 0; // of a division of all parts by ten, which is the next digit from the right
        for (std::uint32_t & part : parts) {
            std::uint64_t const dividend = rest << 32 | part;
            part = static_cast<std::uint32_t>(dividend / 10);
            rest = dividend % 10;
        }
        if (count == value.scale)
            out += '.';
        out += static_cast<char>('0' + rest);
    }
    std::reverse(out.begin(), out.end());
    out.erase(out.find_last_not_of('0') + 1); // up to the point, which a whole number has too
    if (out.back() == '.')
        out.pop_back();
    if (value.sign != 0 && out != "0")
        out.insert(0, 1, '-');
    return S_OK;
}

// Reads a decimal with so many places after the point. What follows them counts as one more, a 1.
HRESULT read_decimal(DECIMAL const & value, std::size_t places, double & out)
{
    std::string digits;
    if (HRESULT const code = write_digits(value, digits); code != S_OK)
        return code;
    std::size_t const point = digits.find('.');
    if (point != digits.npos && point + places + 1 < digits.size())
        digits.replace(point + places + 1, digits.npos, "1");
    std::from_chars(digits.data(), digits.data() + digits.size(), out);
    return S_OK;
}

// Why a value has no number and no text.
HRESULT unreadable(VARIANT const & value)
{
    return value.vt == VT_DISPATCH && value.byref == nullptr ? DISP_E_BADVARTYPE : DISP_E_TYPEMISMATCH;
}

HRESULT real_of(VARIANT const & value, double & out)
{
    switch (value.vt) {
    case VT_EMPTY: out = 0; return S_OK;
    case VT_I1: out = value.cVal; return S_OK;
    case VT_UI1: out = value.bVal; return S_OK;
    case VT_I2: out = value.iVal; return S_OK;
    case VT_UI2: out = value.uiVal; return S_OK;
    case VT_I4:
    case VT_INT: out = value.lVal; return S_OK;
    case VT_UI4:
    case VT_UINT: out = value.ulVal; return S_OK;
    case VT_I8: out = static_cast<double>(value.llVal); return S_OK;
    case VT_UI8: out = static_cast<double>(value.ullVal); return S_OK;
    case VT_R4: out = static_cast<double>(value.fltVal); return S_OK;
    case VT_R8: out = value.dblVal; return S_OK;
    case VT_CY: out = static_cast<double>(value.cyVal.int64) / 10000; return S_OK;
    case VT_DATE: out = value.date; return S_OK;
    case VT_BOOL: out = value.boolVal; return S_OK;
    case VT_BSTR: return parse_number(read_text(value), out);
    case VT_DECIMAL: return read_decimal(value.decVal, kLargestScale, out);
    default: return unreadable(value);
    }
}

HRESULT whole_of(VARIANT const & value, std::int32_t & out)
{
    double real = 0;
    // The real that is nearest to a decimal may be a half that the decimal itself is not.
    HRESULT const code = value.vt == VT_DECIMAL ? read_decimal(value.decVal, 1, real) : real_of(value, real);
    if (code != S_OK)
        return code;
    double whole = std::floor(real);
    double const rest = real - whole;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0))
        whole += 1;
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(whole >= Limits::min() && whole <= Limits::max())) // also true of not-a-number
        return DISP_E_OVERFLOW;
    out = static_cast<std::int32_t>(whole);
    return S_OK;
}

HRESULT bool_of(VARIANT const & value, VARIANT_BOOL & out)
{
    if (value.vt == VT_BSTR) {
        std::u16string_view const text = read_text(value);
        bool const yes = equal_ignoring_case(text, u"true") || text == u"#TRUE#";
        if (yes || equal_ignoring_case(text, u"false") || text == u"#FALSE#") {
            out = yes ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        }
    }
    double real = 0;
    HRESULT const code = real_of(value, real);
    if (code == S_OK)
        out = real != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return code;
}

KelpString real_text(double value, int digits)
{
    if (std::isnan(value))
        return "1.#QNAN";
    if (std::isinf(value))
        return value < 0 ? "-1.#INF" : "1.#INF";
    char buffer[40];
    value = value == 0 ? 0 : value; // so that there is no "-0"
    char * const end = std::to_chars(buffer, std::end(buffer), value, std::chars_format::general, digits).ptr;
    std::replace(buffer, end, 'e', 'E');
    KelpString text;
    append_narrow(text, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
    return text;
}

KelpString currency_text(std::int64_t amount)
{
    auto const bits = static_cast<std::uint64_t>(amount);
    std::uint64_t const magnitude = amount < 0 ? 0 - bits : bits;
    KelpString text = format_text("%s%u", amount < 0 ? "-" : "", magnitude / 10000);
    if (magnitude % 10000 != 0) {
        text += format_text(".%04u", magnitude % 10000);
        text.erase(text.find_last_not_of(u'0') + 1);
    }
    return text;
}

// "11/24/2026 3:04:05 PM". At midnight without the time, on day 0 without the date.
HRESULT date_text(DATE date, KelpString & out)
{
    constexpr double kFirstDay = -657434; // of the year 100
    constexpr double kLastDay = 2958465;  // of the year 9999
    if (!(date > kFirstDay - 1 && date < kLastDay + 1))
        return E_INVALIDARG;
    double day = std::trunc(date);
    auto seconds = static_cast<int>(std::round(std::fabs(date - day) * 86400)); // forwards before day 0 too
    if (seconds == 86400) {
        day += 1;
        seconds = 0;
    }
    if (day > kLastDay)
        return E_INVALIDARG;

    if (day != 0) {
        using namespace std::chrono;
        year_month_day const parts = sys_days{ year{ 1899 } / December / 30 } + days{ static_cast<int>(day) };
        out.build("%u/%u/%d", static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()),
            static_cast<int>(parts.year()));
    }
    if (day == 0 || seconds != 0) {
        int const hour = seconds / 3600;
        out += format_text("%s%d:%02d:%02d %s", out.empty() ? "" : " ", hour % 12 == 0 ? 12 : hour % 12,
            seconds / 60 % 60, seconds % 60, hour < 12 ? "AM" : "PM");
    }
    return S_OK;
}

HRESULT text_of(VARIANT const & value, std::uint16_t flags, KelpString & out)
{
    switch (value.vt) {
    case VT_EMPTY: return S_OK;
    case VT_I1: out.build("%d", std::int32_t{ value.cVal }); return S_OK;
    case VT_UI1: out.build("%u", value.bVal); return S_OK;
    case VT_I2: out.build("%d", value.iVal); return S_OK;
    case VT_UI2: out.build("%u", value.uiVal); return S_OK;
    case VT_I4:
    case VT_INT: StringConverters::convertIntegerToString(value.lVal, out, 10); return S_OK;
    case VT_UI4:
    case VT_UINT: out.build("%u", value.ulVal); return S_OK;
    case VT_I8: out.build("%d", value.llVal); return S_OK;
    case VT_UI8: out.build("%u", value.ullVal); return S_OK;
    case VT_R4: out = real_text(static_cast<double>(value.fltVal), 7); return S_OK;
    case VT_R8: out = real_text(value.dblVal, 15); return S_OK;
    case VT_CY: out = currency_text(value.cyVal.int64); return S_OK;
    case VT_DATE: return date_text(value.date, out);
    case VT_DECIMAL: {
        std::string digits;
        HRESULT const code = write_digits(value.decVal, digits);
        append_narrow(out, digits);
        return code;
    }
    case VT_BOOL:
        if ((flags & VARIANT_ALPHABOOL) != 0)
            out = value.boolVal != 0 ? "True" : "False";
        else
            out.build("%d", value.boolVal);
        return S_OK;
    default: return unreadable(value);
    }
}

HRESULT store_text(VARIANT & out, std::u16string_view text)
{
    out.bstrVal = SysAllocStringLen(text.data(), static_cast<unsigned>(text.size()));
    return out.bstrVal == nullptr ? E_OUTOFMEMORY : S_OK;
}

// Converts to the type of `out`, which has no value yet.
HRESULT convert(VARIANT const & source, std::uint16_t flags, VARIANT & out)
{
    if (source.vt == out.vt) {
        if (source.vt == VT_BSTR)
            return store_text(out, std::u16string_view(source.bstrVal, SysStringLen(source.bstrVal)));
        if (size_of(source.vt) == 0 && source.vt != VT_EMPTY && source.vt != VT_NULL && source.vt != VT_DECIMAL &&
            !(is_object(source.vt) && source.byref == nullptr))
            return DISP_E_TYPEMISMATCH; // objects are not copied here
        out = source;
        return S_OK;
    }
    switch (out.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return source.vt == VT_NULL || source.vt == VT_ERROR || (source.vt & VT_ARRAY) != 0 ? DISP_E_TYPEMISMATCH
                                                                                            : S_OK;
    case VT_I4: return whole_of(source, out.lVal);
    case VT_R8: return real_of(source, out.dblVal);
    case VT_BOOL: return bool_of(source, out.boolVal);
    case VT_BSTR: {
        KelpString text;
        HRESULT const code = text_of(source, flags, text);
        return code == S_OK ? store_text(out, text) : code;
    }
    default: return DISP_E_TYPEMISMATCH;
    }
}

}

BSTR SysAllocString(char16_t const * text)
{
    if (text == nullptr)
        return nullptr;
    std::size_t const length = std::char_traits<char16_t>::length(text);
    return length > std::numeric_limits<unsigned>::max() ? nullptr
                                                         : SysAllocStringLen(text, static_cast<unsigned>(length));
}

BSTR SysAllocStringLen(char16_t const * text, unsigned length)
{
    // The length in bytes stands before the characters, as a number of 32 bits.
    constexpr unsigned kLongest = std::numeric_limits<std::uint32_t>::max() / sizeof(char16_t) - 4;
    if (length > kLongest)
        return nullptr;
    auto const bytes = static_cast<std::uint32_t>(length * sizeof(char16_t));
    auto * const block = static_cast<char *>(std::calloc(1, sizeof bytes + bytes + sizeof(char16_t)));
    if (block == nullptr)
        return nullptr;
    std::memcpy(block, &bytes, sizeof bytes);
    if (text != nullptr && length > 0)
        std::memcpy(block + sizeof bytes, text, bytes);
    return reinterpret_cast<BSTR>(block + sizeof bytes);
}

void SysFreeString(BSTR text)
{
    if (text != nullptr)
        std::free(reinterpret_cast<char *>(text) - sizeof(std::uint32_t));
}

unsigned SysStringLen(BSTR text)
{
    if (text == nullptr)
        return 0;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<char const *>(text) - sizeof bytes, sizeof bytes);
    return static_cast<unsigned>(bytes / sizeof(char16_t));
}

void VariantInit(VARIANT * value)
{
    std::memset(value, 0, sizeof *value);
}

HRESULT VariantClear(VARIANT * value)
{
    if (value == nullptr)
        return E_INVALIDARG;
    if (!is_type(value->vt))
        return DISP_E_BADVARTYPE;
    if (value->vt == VT_BSTR)
        SysFreeString(value->bstrVal);
    VariantInit(value);
    return S_OK;
}

HRESULT VariantChangeType(VARIANT * destination, VARIANT const * source, std::uint16_t flags, VARTYPE type)
{
    if (destination == nullptr || source == nullptr)
        return E_INVALIDARG;
    if (!is_type(type) && type != VT_VARIANT)
        return DISP_E_BADVARTYPE;
    VARIANT value;
    VARIANT result;
    VariantInit(&value);
    VariantInit(&result);
    HRESULT code = dereference(*source, value);
    if (code != S_OK)
        return code;
    result.vt = type;
    try {
        code = convert(value, flags, result);
    } catch (...) {
        return E_OUTOFMEMORY; // only lack of memory is thrown here
    }
    if (code != S_OK)
        return code;
    code = VariantClear(destination);
    if (code == S_OK)
        *destination = result;
    else
        VariantClear(&result);
    return code;
}
