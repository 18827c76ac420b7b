#pragma once
#include "export.h"
#include "variant.h"

// The values of OLE automation. On Windows they are the system's own. Elsewhere they are defined here, with the
// same names, layout and result codes, for the types that a condition can hold. The system's headers bring many
// macros: include this in a source that looks into values, not in a header that others include. WIN32_LEAN_AND_MEAN and
// NOMINMAX are the host's to define, before the first include that brings <windows.h>.
#if defined(_WIN32)

#include <windows.h>

#include <oleauto.h>

// Windows has a type of its own for 16-bit characters: from char16_t to it, and back.
inline OLECHAR const * ole_characters(char16_t const * text) noexcept
{
    return reinterpret_cast<OLECHAR const *>(text);
}
inline char16_t const * plain_characters(OLECHAR const * text) noexcept
{
    return reinterpret_cast<char16_t const *>(text);
}

#else

#include <cstdint>

using OLECHAR = char16_t;
using BSTR = OLECHAR *; // a length stands before the characters, a zero after them; null is the empty text
using HRESULT = std::int32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t; // -1 for true, 0 for false
using DATE = double;               // days since 1899-12-30; the fraction is the time of day

union CY {
    std::int64_t int64; // ten-thousandths
};

enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_RECORD = 36,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000
};

struct VARIANT_RECORD {
    void * pvRecord;
    void * pRecInfo;
};

// A whole number of 96 bits, divided by a power of ten: 10 to the `scale`, which is 0 to 28.
struct DECIMAL {
    std::uint16_t wReserved; // the type, in a VARIANT
    std::uint8_t scale;
    std::uint8_t sign; // 0 or DECIMAL_NEG
    std::uint32_t Hi32;
    std::uint64_t Lo64;
};

struct VARIANT {
    __extension__ union { // structures without a name are not in the language, but in its compilers
        struct {
            VARTYPE vt;
            std::uint16_t wReserved1;
            std::uint16_t wReserved2;
            std::uint16_t wReserved3;
            union {
                signed char cVal;
                std::uint8_t bVal;
                std::int16_t iVal;
                std::uint16_t uiVal;
                std::int32_t lVal;
                std::uint32_t ulVal;
                std::int32_t intVal;
                std::uint32_t uintVal;
                std::int64_t llVal;
                std::uint64_t ullVal;
                float fltVal;
                double dblVal;
                VARIANT_BOOL boolVal;
                std::int32_t scode;
                CY cyVal;
                DATE date;
                BSTR bstrVal;
                void * byref;
                VARIANT_RECORD brecVal;
            };
        };
        DECIMAL decVal; // which lies over all of the above
    };
};
static_assert(sizeof(DECIMAL) == 16 && sizeof(VARIANT) == 8 + 2 * sizeof(void *));

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;
constexpr std::uint8_t DECIMAL_NEG = 0x80;
constexpr std::uint16_t VARIANT_ALPHABOOL = 0x02;

constexpr HRESULT S_OK = 0;
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);

extern "C" {

// Copies a zero-ended text, or `length` characters. From a null text the first makes null, the second `length`
// zeros. Null when memory runs out. The caller gives the copy back by SysFreeString, which takes null too.
SUPPORT_API BSTR SysAllocString(char16_t const * text);
SUPPORT_API BSTR SysAllocStringLen(char16_t const * text, unsigned length);
SUPPORT_API void SysFreeString(BSTR text);
// The length in characters; 0 for null.
SUPPORT_API unsigned SysStringLen(BSTR text);

// Sets an uninitialised value to VT_EMPTY.
SUPPORT_API void VariantInit(VARIANT * value);

// Gives back what the value owns and sets it to VT_EMPTY. For an unknown type does nothing and returns
// DISP_E_BADVARTYPE.
SUPPORT_API HRESULT VariantClear(VARIANT * value);

// Converts `source` to `type`: VT_I4, VT_R8, VT_BOOL, VT_BSTR, VT_EMPTY, VT_NULL, or the type that it has already.
// The result replaces what `destination` held; the two may be one. Texts follow the conventions of US English. A
// real or a decimal is rounded to the nearest whole number, a half to the even one. With the flag
// VARIANT_ALPHABOOL, a bool as text is "True" or "False", not a number.
//
// A result other than S_OK leaves `destination` alone:
// - DISP_E_TYPEMISMATCH: a null value, an object, a null pointer, a `type` other than these, or a text that does
//   not read as `type`.
// - DISP_E_OVERFLOW: a number that does not fit.
// - DISP_E_BADVARTYPE: an unknown type.
// - E_INVALIDARG: a null argument, a date outside the years 100 to 9999 as text, or a decimal with a scale over 28
//   or another sign than the two.
// - E_OUTOFMEMORY: memory ran out.
SUPPORT_API HRESULT VariantChangeType(
    VARIANT * destination, VARIANT const * source, std::uint16_t flags, VARTYPE type);
}

inline OLECHAR const * ole_characters(char16_t const * text) noexcept
{
    return text;
}
inline char16_t const * plain_characters(OLECHAR const * text) noexcept
{
    return text;
}

#endif
