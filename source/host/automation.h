#pragma once
#include "export.h"
#include "variant.h"

// The values of OLE automation. On Windows the system defines them; on Linux this header and the support library
// do, with the same names, layout and result codes. On Windows this header brings the many macros of <windows.h>,
// so include it in a source that reads values, not in another header. Define WIN32_LEAN_AND_MEAN or NOMINMAX, if
// wanted, before the first header that includes <windows.h>.
#if defined(_WIN32)

#include <windows.h>

#include <oleauto.h>

/// Converts between char16_t and the system's type for 16-bit characters.
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
using BSTR = OLECHAR *; ///< a length precedes the characters and a zero follows them; null is the empty text
using HRESULT = std::int32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t; ///< -1 for true, 0 for false
using DATE = double;               ///< days since 1899-12-30; the fraction is the time of day

union CY {
    std::int64_t int64; ///< ten-thousandths
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

/// A whole number of 96 bits, divided by 10 to the power of `scale`.
struct DECIMAL {
    std::uint16_t wReserved; ///< in a VARIANT, the type
    std::uint8_t scale;      ///< 0 to 28
    std::uint8_t sign;       ///< 0 or DECIMAL_NEG
    std::uint32_t Hi32;
    std::uint64_t Lo64;
};

struct VARIANT {
    __extension__ union { // unnamed structures are an extension of the compilers
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
        DECIMAL decVal; // overlaps all of the above
    };
};
static_assert(sizeof(DECIMAL) == 16 && sizeof(VARIANT) == 8 + 2 * sizeof(void *));

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;
constexpr std::uint8_t DECIMAL_NEG = 0x80;

constexpr HRESULT S_OK = 0;
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);

extern "C" {

/// Copies a zero-terminated text. Null for a null text and if memory runs out. SysFreeString frees the copy.
SUPPORT_API BSTR SysAllocString(char16_t const * text);

/// Copies `length` characters; gives `length` zeros for a null text. Null if memory runs out.
SUPPORT_API BSTR SysAllocStringLen(char16_t const * text, unsigned length);

/// Frees a text. Does nothing for null.
SUPPORT_API void SysFreeString(BSTR text);

/// The length in characters; 0 for null.
SUPPORT_API unsigned SysStringLen(BSTR text);

/// Sets an uninitialised value to VT_EMPTY.
SUPPORT_API void VariantInit(VARIANT * value);

/// Frees the text of a VT_BSTR, but nothing of other types, and sets the value to VT_EMPTY. Does nothing for an
/// unknown type (DISP_E_BADVARTYPE) and for null (E_INVALIDARG).
SUPPORT_API HRESULT VariantClear(VARIANT * value);

/// Converts `source`, or the value that it points to, to `type`: VT_R8 or VT_BOOL, which conditions need. The
/// system's own function on Windows converts to more types. Texts are read by the conventions of US English;
/// docs/numbers.md has a table. The result replaces what `destination` held; `source` may be the same object.
/// `flags` is not used.
///
/// For any result but S_OK, `destination` is unchanged:
/// - DISP_E_TYPEMISMATCH: another `type`, a value that has no number, a VT_BYREF value whose pointer is null, or a
///   text that is not a number. For VT_BOOL, the words true and false convert too.
/// - DISP_E_OVERFLOW: a text whose number is too large.
/// - DISP_E_BADVARTYPE: an unknown type in `source` or `destination`.
/// - E_INVALIDARG: a null argument, a VT_BYREF | VT_VARIANT that points to another one, or a decimal with a scale
///   above 28 or an undefined sign.
/// - E_OUTOFMEMORY: memory ran out.
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
