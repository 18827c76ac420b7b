#pragma once
#include "odbomodule/host/export.h"
#include "odbomodule/host/variant.h"

// OLE automation values. On Windows the system's own; elsewhere a counterpart with the same names, layout
// and result codes for the types that a condition can hold. The system's headers bring many macros: include this
// where values are looked into, and in no header that others include.
#if defined(_WIN32)

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <oleauto.h>

#else

#include <cstdint>

using OLECHAR = char16_t;
using BSTR = OLECHAR *; // a length ahead of the characters and a zero behind them; null is the empty text
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

struct VARIANT {
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

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;
constexpr std::uint16_t VARIANT_ALPHABOOL = 0x02;

constexpr HRESULT S_OK = 0;
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);

extern "C" {

// Makes a copy of a zero-ended text, or of `length` characters. Null for a null text (the first) and when
// memory runs out. Given back by SysFreeString, which takes null too.
SUPPORT_API BSTR SysAllocString(char16_t const * text);
SUPPORT_API BSTR SysAllocStringLen(char16_t const * text, unsigned length);
SUPPORT_API void SysFreeString(BSTR text);
// Length in characters; 0 for null.
SUPPORT_API unsigned SysStringLen(BSTR text);

// Sets an uninitialised value to VT_EMPTY.
SUPPORT_API void VariantInit(VARIANT * value);

// Gives back what the value owns and sets it to VT_EMPTY. DISP_E_BADVARTYPE, and nothing done, for a type
// that is none.
SUPPORT_API HRESULT VariantClear(VARIANT * value);

// Converts `source` to `type` (VT_I4, VT_R8, VT_BOOL, VT_BSTR, VT_EMPTY, VT_NULL, or the source's own) and puts the
// result in the place of what `destination` held; the two may be one. Anything but S_OK leaves `destination` alone:
// DISP_E_TYPEMISMATCH for a null value, an object, a pointer to nothing, another type, or a text that does not read
// as the type; DISP_E_OVERFLOW for a number that does not fit; E_INVALIDARG for a null argument and for a date past
// the years 100 to 9999 as text; DISP_E_BADVARTYPE for a type that is none. Numbers become whole by rounding to the
// nearest, halves to the even one. Texts follow the conventions of US English.
// Flags: VARIANT_ALPHABOOL writes a bool as "True" or "False" in the place of its number.
SUPPORT_API HRESULT VariantChangeType(
    VARIANT * destination, VARIANT const * source, std::uint16_t flags, VARTYPE type);
}

#endif

// Windows has a type of its own for 16-bit characters. These two lead from one to the other and back.
inline OLECHAR const * ole_characters(char16_t const * text) noexcept
{
    return reinterpret_cast<OLECHAR const *>(text);
}
inline char16_t const * plain_characters(OLECHAR const * text) noexcept
{
    return reinterpret_cast<char16_t const *>(text);
}
