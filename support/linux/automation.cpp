#include <odbomodule/host/automation.h>

#include "number_text.h"
#include "../common/narrow_text.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace {

// The size of a value in bytes, without the type field. 0 for VT_DECIMAL, whose value overlaps the type field, and
// for all types that are not listed.
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
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN: return sizeof(void *);
    default: return 0;
    }
}

bool is_type(unsigned type)
{
    unsigned const base = type & ~unsigned{ VT_ARRAY | VT_BYREF };
    if (size_of(base) != 0 || base == VT_DECIMAL || base == VT_RECORD)
        return true;
    return base == VT_VARIANT ? type != base : type == VT_EMPTY || type == VT_NULL;
}

// Copies `source` or, if it is a pointer, the value it points to. The copy shares the characters of a text.
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

// The text up to its first zero character.
std::u16string_view text_of(VARIANT const & value)
{
    std::u16string_view const text(value.bstrVal, SysStringLen(value.bstrVal));
    return text.substr(0, text.find(u'\0'));
}

// The real that is nearest to a decimal. -0 becomes 0.
HRESULT real_of(DECIMAL const & value, double & out)
{
    constexpr unsigned kLargestScale = 28;
    if (value.scale > kLargestScale || (value.sign != 0 && value.sign != DECIMAL_NEG))
        return E_INVALIDARG;
    std::uint32_t parts[] = { value.Hi32, static_cast<std::uint32_t>(value.Lo64 >> 32),
        static_cast<std::uint32_t>(value.Lo64) };
    std::string digits;
    while ((parts[0] | parts[1] | parts[2]) != 0) {
        std::uint64_t rest = 0; // remainder of the division by ten: the next digit from the right
        for (std::uint32_t & part : parts) {
            std::uint64_t const dividend = rest << 32 | part;
            part = static_cast<std::uint32_t>(dividend / 10);
            rest = dividend % 10;
        }
        digits += static_cast<char>('0' + rest);
    }
    if (digits.empty()) {
        out = 0;
        return S_OK;
    }
    if (value.sign != 0)
        digits += '-';
    std::reverse(digits.begin(), digits.end());
    digits += "e-" + std::to_string(value.scale);
    std::from_chars(digits.data(), digits.data() + digits.size(), out);
    return S_OK;
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
    case VT_BSTR: return parse_number(text_of(value), out);
    case VT_DECIMAL: return real_of(value.decVal, out);
    default: return DISP_E_TYPEMISMATCH;
    }
}

HRESULT bool_of(VARIANT const & value, VARIANT_BOOL & out)
{
    if (value.vt == VT_BOOL) {
        out = value.boolVal; // as on Windows, copies even values that are neither 0 nor -1
        return S_OK;
    }
    if (value.vt == VT_BSTR) {
        std::u16string_view const text = text_of(value);
        bool const yes = equal_ignoring_case(text, u"true") || text == u"#TRUE#";
        if (yes || equal_ignoring_case(text, u"false") || text == u"#FALSE#") {
            out = yes ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        }
    }
    double real = 0;
    HRESULT const code = real_of(value, real);
    out = real != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return code;
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
    // The length in bytes, a number of 32 bits, precedes the characters.
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

HRESULT VariantChangeType(VARIANT * destination, VARIANT const * source, std::uint16_t /*flags*/, VARTYPE type)
{
    if (destination == nullptr || source == nullptr)
        return E_INVALIDARG;
    if (type != VT_R8 && type != VT_BOOL)
        return DISP_E_TYPEMISMATCH;
    VARIANT value{};
    HRESULT code = dereference(*source, value);
    if (code != S_OK)
        return code;
    double real = 0;
    VARIANT_BOOL truth = VARIANT_FALSE;
    try {
        code = type == VT_R8 ? real_of(value, real) : bool_of(value, truth);
    } catch (...) {
        return E_OUTOFMEMORY; // nothing else is thrown
    }
    if (code != S_OK)
        return code;
    code = VariantClear(destination);
    if (code != S_OK)
        return code;
    destination->vt = type;
    if (type == VT_R8)
        destination->dblVal = real;
    else
        destination->boolVal = truth;
    return S_OK;
}
