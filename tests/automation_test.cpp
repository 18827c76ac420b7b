#include "host/automation.h"
#include "host/kelp_string.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace {

VARIANT empty(VARTYPE type)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    return value;
}

template <class Field, class Value>
VARIANT make(VARTYPE type, Field VARIANT::*field, Value value)
{
    VARIANT result = empty(type);
    result.*field = static_cast<Field>(value);
    return result;
}

VARIANT text(std::u16string const & characters)
{
    return make(
        VT_BSTR, &VARIANT::bstrVal, SysAllocStringLen(characters.data(), static_cast<unsigned>(characters.size())));
}
VARIANT real(double value)
{
    return make(VT_R8, &VARIANT::dblVal, value);
}
VARIANT whole(std::int32_t value)
{
    return make(VT_I4, &VARIANT::lVal, value);
}
VARIANT date(double value)
{
    return make(VT_DATE, &VARIANT::date, value);
}
VARIANT boolean(VARIANT_BOOL value)
{
    return make(VT_BOOL, &VARIANT::boolVal, value);
}
VARIANT money(std::int64_t value)
{
    VARIANT result = empty(VT_CY);
    result.cyVal.int64 = value;
    return result;
}

std::int32_t gPointedWhole = -12;
BSTR gPointedText = nullptr;
VARIANT gPointedVariant = real(2.5);

VARIANT pointer(unsigned type, void * address)
{
    return make(static_cast<VARTYPE>(type | VT_BYREF), &VARIANT::byref, address);
}

// What the converted value holds, with its result code ahead when that is a failure.
std::string shown(HRESULT code, VARIANT const & value)
{
    switch (code) {
    case S_OK: break;
    case DISP_E_TYPEMISMATCH: return "mismatch";
    case DISP_E_OVERFLOW: return "overflow";
    case DISP_E_BADVARTYPE: return "bad type";
    case E_INVALIDARG: return "bad argument";
    default: return "code " + std::to_string(code);
    }
    switch (value.vt) {
    case VT_I4: return "I4 " + std::to_string(value.lVal);
    case VT_R8: return "R8 " + KelpString(format_text("%.4f", value.dblVal)).toUTF8();
    case VT_BOOL: return "BOOL " + std::to_string(value.boolVal);
    case VT_BSTR:
        return "|" + KelpString(std::u16string(value.bstrVal, SysStringLen(value.bstrVal))).toUTF8() + "|";
    default: return "type " + std::to_string(value.vt);
    }
}

struct ChangeRow {
    char const * name;
    VARIANT source;
    VARTYPE type;
    char const * want;
    std::uint16_t flags = 0;
};

// Each row is converted to another value, which holds a text before, and in place.
void check_rows(std::initializer_list<ChangeRow> rows)
{
    for (auto row : rows) {
        VARIANT other = text(u"old");
        HRESULT const code = VariantChangeType(&other, &row.source, row.flags, row.type);
        EXPECT_EQ(shown(code, other), row.want) << row.name;
        if (code != S_OK) {
            EXPECT_EQ(shown(S_OK, other), "|old|") << row.name;
        }
        HRESULT const inPlace = VariantChangeType(&row.source, &row.source, row.flags, row.type);
        EXPECT_EQ(shown(inPlace, row.source), row.want) << row.name << ", in place";
        EXPECT_EQ(VariantClear(&other), S_OK);
        VariantClear(&row.source);
    }
}

TEST(VariantChangeType, Numbers)
{
    using Limits = std::numeric_limits<std::int32_t>;
    check_rows({
        { "empty to whole", empty(VT_EMPTY), VT_I4, "I4 0" },
        { "empty to text", empty(VT_EMPTY), VT_BSTR, "||" },
        { "empty to bool", empty(VT_EMPTY), VT_BOOL, "BOOL 0" },
        { "signed byte", make(VT_I1, &VARIANT::cVal, -7), VT_BSTR, "|-7|" },
        { "byte", make(VT_UI1, &VARIANT::bVal, 200), VT_I4, "I4 200" },
        { "short", make(VT_I2, &VARIANT::iVal, -300), VT_R8, "R8 -300.0000" },
        { "unsigned short", make(VT_UI2, &VARIANT::uiVal, 65535), VT_BSTR, "|65535|" },
        { "smallest whole", whole(Limits::min()), VT_BSTR, "|-2147483648|" },
        { "unsigned too large", make(VT_UI4, &VARIANT::ulVal, 2147483648u), VT_I4, "overflow" },
        { "unsigned to text", make(VT_UINT, &VARIANT::uintVal, 4294967295u), VT_BSTR, "|4294967295|" },
        { "long", make(VT_I8, &VARIANT::llVal, std::numeric_limits<std::int64_t>::min()), VT_BSTR,
            "|-9223372036854775808|" },
        { "unsigned long", make(VT_UI8, &VARIANT::ullVal, ~0ull), VT_BSTR, "|18446744073709551615|" },
        { "long too large", make(VT_I8, &VARIANT::llVal, 1ll << 31), VT_I4, "overflow" },
        { "halves to even, down", real(2.5), VT_I4, "I4 2" },
        { "halves to even, up", real(-3.5), VT_I4, "I4 -4" },
        { "largest that rounds in", real(2147483647.4), VT_I4, "I4 2147483647" },
        { "half that rounds out", real(2147483647.5), VT_I4, "overflow" },
        { "half that rounds in", real(-2147483648.5), VT_I4, "I4 -2147483648" },
        { "no number", real(std::nan("")), VT_I4, "overflow" },
        { "15 digits", real(0.1 + 0.2), VT_BSTR, "|0.3|" },
        { "large real", real(-1e20), VT_BSTR, "|-1E+20|" },
        { "negative zero", real(-0.0), VT_BSTR, "|0|" },
        { "7 digits", make(VT_R4, &VARIANT::fltVal, 0.1f), VT_BSTR, "|0.1|" },
        { "single is widened as it is", make(VT_R4, &VARIANT::fltVal, 0.5f), VT_R8, "R8 0.5000" },
        { "money", money(-12345000), VT_BSTR, "|-1234.5|" },
        { "whole money", money(200000), VT_BSTR, "|20|" },
        { "small money", money(-1), VT_BSTR, "|-0.0001|" },
        { "most money", money(std::numeric_limits<std::int64_t>::min()), VT_BSTR, "|-922337203685477.5808|" },
        { "money, half", money(25000), VT_I4, "I4 2" },
        { "true", boolean(VARIANT_TRUE), VT_R8, "R8 -1.0000" },
        { "true as text", boolean(VARIANT_TRUE), VT_BSTR, "|-1|" },
        { "true as a word", boolean(VARIANT_TRUE), VT_BSTR, "|True|", VARIANT_ALPHABOOL },
        { "false as a word", boolean(VARIANT_FALSE), VT_BSTR, "|False|", VARIANT_ALPHABOOL },
        { "small real to bool", real(0.1), VT_BOOL, "BOOL -1" },
    });
}

TEST(VariantChangeType, Dates)
{
    check_rows({
        { "date and time", date(46350.0 + 54245.0 / 86400), VT_BSTR, "|11/24/2026 3:04:05 PM|" },
        { "midnight", date(46350), VT_BSTR, "|11/24/2026|" },
        { "day 0", date(0.5), VT_BSTR, "|12:00:00 PM|" },
        { "midnight of day 0", date(0), VT_BSTR, "|12:00:00 AM|" },
        { "before day 0 the time goes forwards", date(-1.25), VT_BSTR, "|12/29/1899 6:00:00 AM|" },
        { "rounded up into the next day", date(1.9999999), VT_BSTR, "|1/1/1900|" },
        { "leap day", date(36585), VT_BSTR, "|2/29/2000|" },
        { "first day", date(-657434), VT_BSTR, "|1/1/100|" },
        { "past the last day", date(2958466), VT_BSTR, "bad argument" },
        { "serial number", date(-1.25), VT_R8, "R8 -1.2500" },
    });
}

TEST(VariantChangeType, Texts)
{
    check_rows({
        { "blanks", text(u" \t12 "), VT_I4, "I4 12" },
        { "leading sign", text(u"-.5"), VT_R8, "R8 -0.5000" },
        { "trailing sign", text(u"12-"), VT_I4, "I4 -12" },
        { "two signs", text(u"-12-"), VT_I4, "mismatch" },
        { "parentheses", text(u"($1,234.50)"), VT_R8, "R8 -1234.5000" },
        { "open parenthesis", text(u"(12"), VT_R8, "mismatch" },
        { "sign in parentheses", text(u"(-12)"), VT_R8, "mismatch" },
        { "comma without a digit", text(u",5"), VT_R8, "mismatch" },
        { "exponent", text(u"1.5E+3"), VT_R8, "R8 1500.0000" },
        { "exponent of a double", text(u"15d-1"), VT_R8, "R8 1.5000" },
        { "exponent without digits", text(u"1e"), VT_R8, "mismatch" },
        { "too large", text(u"1e400"), VT_R8, "overflow" },
        { "too large by a long exponent", text(u"0.01e99999999999"), VT_R8, "overflow" },
        { "too small", text(u"1e-400"), VT_R8, "R8 0.0000" },
        { "zero with an exponent", text(u"0e99999999999"), VT_R8, "R8 0.0000" },
        { "leading zeros that outweigh it", text(u"0." + std::u16string(400, u'0') + u"1e400"), VT_R8,
            "R8 0.1000" },
        { "too small by its leading zeros", text(u"0." + std::u16string(400, u'0') + u"1e5"), VT_R8, "R8 0.0000" },
        { "too large for whole", text(u"2147483648"), VT_I4, "overflow" },
        { "half", text(u"0.5"), VT_I4, "I4 0" },
        { "hexadecimal", text(u"&h1F "), VT_I4, "I4 31" },
        { "hexadecimal, negative", text(u"&HFFFFFFFF"), VT_I4, "I4 -1" },
        { "hexadecimal, too long", text(u"&H12345678123456789"), VT_R8, "overflow" },
        { "octal", text(u"&O17"), VT_R8, "R8 15.0000" },
        { "no octal", text(u"&O18"), VT_R8, "mismatch" },
        { "bare mark", text(u"&H"), VT_R8, "mismatch" },
        { "empty", text(u""), VT_R8, "mismatch" },
        { "null text", make(VT_BSTR, &VARIANT::bstrVal, BSTR{ nullptr }), VT_I4, "mismatch" },
        { "blanks alone", text(u"  "), VT_R8, "mismatch" },
        { "point alone", text(u"."), VT_R8, "mismatch" },
        { "words", text(u"12 apples"), VT_R8, "mismatch" },
        { "something behind a zero character", text(std::u16string(u"1\0x", 3)), VT_R8, "mismatch" },
        { "infinity", text(u"inf"), VT_R8, "mismatch" },
        { "word to bool", text(u"tRUE"), VT_BOOL, "BOOL -1" },
        { "marked word to bool", text(u"#False#"), VT_BOOL, "BOOL 0" },
        { "number to bool", text(u"0.2"), VT_BOOL, "BOOL -1" },
        { "other word to bool", text(u"yes"), VT_BOOL, "mismatch" },
    });
}

TEST(VariantChangeType, TypesAndPointers)
{
    gPointedText = SysAllocString(u"7.5");
    VARIANT nested = pointer(VT_VARIANT, nullptr);
    nested.byref = &nested;
    check_rows({
        { "null", empty(VT_NULL), VT_R8, "mismatch" },
        { "null to text", empty(VT_NULL), VT_BSTR, "mismatch" },
        { "null to null", empty(VT_NULL), VT_NULL, "type 1" },
        { "number to null", whole(1), VT_NULL, "mismatch" },
        { "error", empty(VT_ERROR), VT_I4, "mismatch" },
        { "object", empty(VT_DISPATCH), VT_R8, "mismatch" },
        { "object to its own type", empty(VT_UNKNOWN), VT_UNKNOWN, "mismatch" },
        { "array", empty(VT_ARRAY | VT_I4), VT_I4, "mismatch" },
        { "target that is none", whole(1), 77, "bad type" },
        { "target that is a pointer", whole(1), VT_BYREF | VT_I4, "bad type" },
        { "own type", money(1), VT_CY, "type 6" },
        { "pointed whole", pointer(VT_I4, &gPointedWhole), VT_BSTR, "|-12|" },
        { "pointed whole to its own type", pointer(VT_I4, &gPointedWhole), VT_I4, "I4 -12" },
        { "pointed text", pointer(VT_BSTR, &gPointedText), VT_R8, "R8 7.5000" },
        { "pointed text to its own type", pointer(VT_BSTR, &gPointedText), VT_BSTR, "|7.5|" },
        { "pointed variant", pointer(VT_VARIANT, &gPointedVariant), VT_I4, "I4 2" },
        { "pointer to a pointer to a variant", pointer(VT_VARIANT, &nested), VT_I4, "bad argument" },
        { "null pointer", pointer(VT_I4, nullptr), VT_I4, "bad argument" },
    });
    SysFreeString(gPointedText);

    VARIANT zeros = text(std::u16string(u"a\0b", 3));
    VARIANT copy = empty(VT_EMPTY);
    EXPECT_EQ(VariantChangeType(&copy, &zeros, 0, VT_BSTR), S_OK);
    EXPECT_EQ(shown(S_OK, copy), std::string("|a\0b|", 5));
    VariantClear(&copy);
    VariantClear(&zeros);

    VARIANT none = empty(99);
    VARIANT one = whole(1);
    EXPECT_EQ(VariantChangeType(&one, &none, 0, VT_I4), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantChangeType(&none, &one, 0, VT_BSTR), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantClear(&none), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantChangeType(nullptr, &one, 0, VT_I4), E_INVALIDARG);
}

TEST(SystemString, CarriesItsLength)
{
    BSTR const string = SysAllocStringLen(u"a\0bc", 3);
    EXPECT_EQ(SysStringLen(string), 3u);
    EXPECT_EQ(std::u16string(string, 4), std::u16string(u"a\0b\0", 4));
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<char const *>(string) - 4, 4);
    EXPECT_EQ(bytes, 6u);
    SysFreeString(string);
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysAllocStringLen(u"", 0xFFFFFFFF), nullptr);
    SysFreeString(nullptr);
}

}
