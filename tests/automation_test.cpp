#include "fixture.h"

#include <odbomodule/host/automation.h>
#include <odbomodule/host/string_converters.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <type_traits>

using namespace std::string_literals;

namespace {

// The tables hold what Windows answers, as far as it is known. Two others may answer otherwise: the portable layer, on purpose, and
// Wine, which mostly takes the place of Windows in these tests.
#if defined(_WIN32)
bool const kPortable = false;
bool const kWine = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
#else
bool const kPortable = true;
bool const kWine = false;
#endif

// A value by its type and its bits. Bits beyond those of the type are noise.
template <class Bits = int>
VARIANT variant(int type, Bits bits = 0)
{
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type);
    std::memcpy(&value.llVal, &bits, sizeof bits);
    if constexpr (std::is_integral_v<Bits>) { // whose low bits come last on some processors
        value.llVal = static_cast<std::int64_t>(bits);
        switch (type) {
        case VT_I1:
        case VT_UI1: value.bVal = static_cast<std::uint8_t>(bits); break;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL: value.iVal = static_cast<std::int16_t>(bits); break;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT: value.lVal = static_cast<std::int32_t>(bits); break;
        }
    }
    return value;
}

VARIANT decimal_variant(std::uint8_t scale, std::uint8_t sign, std::uint32_t high, std::uint64_t low)
{
    VARIANT value{};
    value.decVal.scale = scale;
    value.decVal.sign = sign;
    value.decVal.Hi32 = high;
    value.decVal.Lo64 = low;
    value.vt = VT_DECIMAL;
    return value;
}

VARIANT text_variant(std::u16string const & text)
{
    return variant(VT_BSTR, SysAllocStringLen(ole_characters(text.data()), static_cast<unsigned>(text.size())));
}

std::string in_words(VARIANT const & value)
{
    KelpString text;
    switch (value.vt) {
    case VT_I4: return std::to_string(value.lVal);
    case VT_BOOL: return std::to_string(value.boolVal);
    case VT_DECIMAL: return "high part " + std::to_string(value.decVal.Hi32);
    case VT_R8: StringConverters::convertRealToString(value.dblVal, text, 10, 17, false); break;
    case VT_BSTR: text.assign(plain_characters(value.bstrVal), SysStringLen(value.bstrVal)); break;
    default: return "type " + std::to_string(value.vt);
    }
    return text.toUTF8();
}

// Converts and answers in words: the value, or after a "!" why there is none.
std::string convert(VARIANT & destination, VARIANT & source, VARTYPE type, std::uint16_t flags = 0)
{
    switch (VariantChangeType(&destination, &source, flags, type)) {
    case S_OK: return in_words(destination);
    case DISP_E_TYPEMISMATCH: return "!mismatch";
    case DISP_E_OVERFLOW: return "!overflow";
    case DISP_E_BADVARTYPE: return "!type";
    case E_INVALIDARG: return "!argument";
    default: return "!";
    }
}

// Converts to another value, which holds a text before, then in place. The source is used up.
void expect_conversion(VARIANT source, VARTYPE type, std::string const & want, std::uint16_t flags = 0)
{
    SCOPED_TRACE(in_words(source) + " of bits " + std::to_string(source.llVal) + " to type " + std::to_string(type));
    VARIANT other = text_variant(u"old");
    EXPECT_EQ(convert(other, source, type, flags), want);
    EXPECT_EQ(in_words(other), want.starts_with('!') ? "old" : want);
    EXPECT_EQ(convert(source, source, type, flags), want);
    EXPECT_EQ(VariantClear(&other), S_OK);
    EXPECT_EQ(other.vt, VT_EMPTY);
    VariantClear(&source);
}

KelpString real_text(double value, int digits = 16, bool alwaysExponent = false)
{
    KelpString text("old");
    StringConverters::convertRealToString(value, text, 10, digits, alwaysExponent);
    return text;
}

KelpString whole_text(std::int32_t value, std::int32_t radix)
{
    KelpString text("old");
    StringConverters::convertIntegerToString(value, text, radix);
    return text;
}

#define WITH_NAMES(...) [] { return __VA_ARGS__; }

// A value and its answers for the types that conditions ask for.
template <class Make>
void conversion(char const * row, Make const & make, std::string const & whole, std::string const & text, std::string const & real,
    std::string const & truth)
{
    SCOPED_TRACE(row);
    expect_conversion(make(), VT_I4, whole);
    expect_conversion(make(), VT_BSTR, text);
    expect_conversion(make(), VT_R8, real);
    expect_conversion(make(), VT_BOOL, truth);
}

// A row that the document does not have. As VT_R8, a real or a date is what it was, and all else what its text says. As VT_BOOL,
// what has a number is true.
struct ConversionRow {
    VARIANT value;
    std::string whole, text = whole;
    std::string real = value.vt == VT_R8 || value.vt == VT_DATE ? in_words(variant(VT_R8, value.dblVal)) : text;
};

template <class Make>
void number(char const * row, Make const & make, char const * text)
{
    EXPECT_EQ(KelpString(make()).toUTF8(), text) << row;
}

// A text as a real, which it is as whole and as true as, or a refusal.
template <class Make>
void reading(char const * row, Make const & make, std::string const & answer)
{
    SCOPED_TRACE(row);
    for (VARTYPE const type : { VT_R8, VT_I4, VT_BOOL }) {
        VARIANT number = variant(VT_R8, std::strtod(answer.c_str(), nullptr));
        std::string const converted = convert(number, number, type);
        expect_conversion(text_variant(make()), type, answer.starts_with('!') ? answer : converted);
    }
}

// The rows of docs/values.md.
TEST(Values, AreAsDocumented){
#include "documented_values.h"
}

TEST(VariantChangeType, NumbersDatesAndPointers)
{
    std::int32_t number = -12;
    std::int16_t small = -12;
    double real = -2.5;
    VARIANT text = variant(VT_BSTR, SysAllocString(ole_characters(u"7.5")));
    DECIMAL half = decimal_variant(1, 0, 0, 5).decVal;
    half.wReserved = 77; // which is no type here
    VARIANT endless = variant(VT_BYREF | VT_VARIANT, &endless);
    ConversionRow const rows[] = {
        // Where Wine or the portable layer answers otherwise than docs/values.md could say
        { variant(VT_UI4, 0x180000000), kWine ? "-2147483648" : "!overflow", "2147483648" }, // Wine lets the sign bit through
        { variant(VT_UINT, 0x1FFFFFFFF), kWine ? "-1" : "!overflow", "4294967295" },
        { variant(VT_R8, std::nan("")), kWine ? "2147483647" : "!overflow", kWine ? "NAN" : "1.#QNAN" },
        { variant(VT_R8, HUGE_VAL), "!overflow", kWine ? "INF" : "1.#INF" },
        { variant(VT_R8, -HUGE_VAL), "!overflow", kWine ? "-INF" : "-1.#INF" },
        { decimal_variant(25, 0, 0x14ADF4, 0xB7320334B9000001), kWine ? "2" : "3", "2.5000000000000000000000001", "2.5" },
        { decimal_variant(28, 0, 0, 1), "0", "0.0000000000000000000000000001", kWine ? "1.0000000000000001e-28" : "1e-28" },
        { decimal_variant(29, 0, 0, 0), "!argument", kWine ? "0" : "!argument", "!argument" },
        { decimal_variant(0, 1, 0, 5), "!argument", kWine ? "-5" : "!argument", "!argument" },
        { variant(VT_DATE, 1.9999999), "2", kPortable ? "1/1/1900" : "1/1/1900 12:00:00 AM" },
        { variant(VT_DATE, 0.999999), "1", kPortable ? "12/31/1899" : "12:00:00 AM" },
        { variant(VT_DATE, 2958465.9999999), "2958466", kPortable ? "!argument" : "1/1/10000 12:00:00 AM" },
        // Pointers lead to one value
        { variant(VT_BYREF | VT_I4, &number), "-12" },
        { variant(VT_BYREF | VT_I2, &small), "-12" },
        { variant(VT_BYREF | VT_R8, &real), "-2", "-2.5" },
        { variant(VT_BYREF | VT_DECIMAL, &half), "0", "0.5" },
        { variant(VT_BYREF | VT_BSTR, &text.bstrVal), "8", "7.5" },
        { variant(VT_BYREF | VT_VARIANT, &text), "8", "7.5" },
        { variant(VT_BYREF | VT_VARIANT, &endless), "!argument" },
    };
    for (ConversionRow const & row : rows) {
        std::string const truth = row.real.starts_with('!') ? row.real : "-1";
        conversion(
            "", [&row] { return row.value; }, row.whole, row.text, row.real, truth);
    }
    VariantClear(&text);
}

// What docs/values.md has no room for, and where Wine or the portable layer answers otherwise.
TEST(VariantChangeType, ReadsTextsAsNumbers)
{
    std::u16string const zeros(400, u'0');
    struct {
        std::u16string text;
        std::string answer;
    } const rows[] = {
        { zeros + u"1e-400", "0" },
        { u"1." + zeros + u"e-400", "0" },
        { u"0." + zeros + u"1e5", "0" },
        { u"0." + zeros + u"1e400", "0.1" },
        { u"1.0" + zeros + u"e400", "!overflow" },
        { u"0" + zeros + u"1e400", "!overflow" },
        { u"0." + zeros + u"1e800", "!overflow" },
        { u"1" + zeros + u"e-800", "0" },
        { std::u16string(400, u'9'), kWine ? "inf" : "!overflow" },
        { u"1d3", kWine ? "!mismatch" : "1000" },
        // The portable layer takes one sign, bracket and currency sign at most, none at bits, and no comma in an exponent
        { u"+-12", kPortable ? "!mismatch" : "-12" },
        { u"(-12)", kPortable ? "!mismatch" : "-12" },
        { u"-(12)", kPortable ? "!mismatch" : "-12" },
        { u"(12))", kPortable ? "!mismatch" : "-12" },
        { u"$12$", kPortable ? "!mismatch" : "12" },
        { u"12$$", kPortable ? "!mismatch" : "12" },
        { u"-&HC", kPortable ? "!mismatch" : "12" },
        { u"&HC-", kPortable ? "!mismatch" : "12" },
        { u"12e0,", kPortable ? "!mismatch" : "12" },
    };
    for (auto const & row : rows)
        reading(
            "", [&row] { return row.text; }, row.answer);
}

TEST(VariantChangeType, WordsAreTruthsAndBitsHaveASign)
{
    expect_conversion(variant(VT_BOOL, VARIANT_TRUE), VT_BSTR, "True", VARIANT_ALPHABOOL);
    expect_conversion(variant(VT_BOOL, VARIANT_FALSE), VT_BSTR, "False", VARIANT_ALPHABOOL);
    expect_conversion(text_variant(u"&HFFFFFFFF"), VT_I4, "-1");
    expect_conversion(text_variant(u"&HFFFFFFFF"), VT_R8, kWine ? "!overflow" : "-1"); // Wine finds no real for a sign
}

TEST(VariantChangeType, GoesToTheOwnTypeAndToNoValueButToNoOtherType)
{
    expect_conversion(text_variant(u"a\0b"s), VT_BSTR, "a\0b"s);
    expect_conversion(variant(VT_BOOL, 2), VT_BOOL, "2");
    expect_conversion(variant(VT_CY, 1), VT_CY, "type 6");
    expect_conversion(decimal_variant(28, 0, 123, 1), VT_DECIMAL, "high part 123");
    expect_conversion(variant(VT_UNKNOWN), VT_UNKNOWN, "type 13");
    expect_conversion(variant(VT_NULL), VT_NULL, "type 1");
    expect_conversion(variant(VT_EMPTY), VT_EMPTY, "type 0");
    expect_conversion(variant(VT_NULL), VT_EMPTY, "!mismatch");
    expect_conversion(variant(VT_ARRAY | VT_I4), VT_NULL, "!mismatch");
    expect_conversion(variant(VT_ERROR), VT_EMPTY, "!mismatch");
    expect_conversion(variant(VT_I4, 1), VT_EMPTY, "type 0");
    expect_conversion(variant(VT_I4, 1), VT_NULL, "type 1");
    for (VARTYPE const type : std::initializer_list<VARTYPE>{ VT_VARIANT, VT_RECORD, VT_ARRAY | VT_I4, VT_BYREF | VT_I4 })
        expect_conversion(variant(VT_I4, 1), type, "!mismatch");
    expect_conversion(variant(VT_I4, 1), 77, "!type");
    expect_conversion(variant(77), VT_VARIANT, "!type");
    // The portable layer has the types that conditions ask for, and no others
    expect_conversion(variant(VT_I4, 1), VT_I2, kPortable ? "!mismatch" : "type 2");
    expect_conversion(variant(VT_R8, 1.5), VT_CY, kPortable ? "!mismatch" : "type 6");
    expect_conversion(variant(VT_I4, 1), VT_DATE, kPortable ? "!mismatch" : "type 7");
}

TEST(VariantChangeType, UnknownDestinationsAndNullPointersAreRefused)
{
    VARIANT unknown = variant(99);
    VARIANT one = variant(VT_I4, 1);
    EXPECT_EQ(VariantChangeType(&unknown, &one, 0, VT_BSTR), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantClear(&unknown), DISP_E_BADVARTYPE);
    if (!kWine) { // which looks into it
        EXPECT_EQ(VariantChangeType(nullptr, &one, 0, VT_I4), E_INVALIDARG);
    }
    if (kPortable) {
        EXPECT_EQ(VariantChangeType(&one, nullptr, 0, VT_I4), E_INVALIDARG);
        EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
        expect_conversion(variant(VT_DISPATCH, &one), VT_I4, "!mismatch"); // an object is not asked, and not copied
        expect_conversion(variant(VT_DISPATCH, &one), VT_DISPATCH, "!mismatch");
        expect_conversion(variant(VT_RECORD), VT_RECORD, "!mismatch");
    }
}

TEST(SystemString, CarriesItsLengthOrIsNull)
{
    BSTR const string = SysAllocStringLen(ole_characters(u"a\0bc"), 3);
    EXPECT_EQ(SysStringLen(string), 3u);
    EXPECT_EQ(std::u16string(plain_characters(string), 4), u"a\0b\0"s);
    EXPECT_EQ(reinterpret_cast<std::uint32_t const *>(string)[-1], 6u); // in bytes
    SysFreeString(string);

    BSTR const blank = SysAllocStringLen(nullptr, 2);
    EXPECT_EQ(std::u16string(plain_characters(blank), 3), u"\0\0\0"s);
    SysFreeString(blank);

    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysAllocStringLen(ole_characters(u""), 0x80000000), nullptr); // too long for memory
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    SysFreeString(nullptr);
}

}
