#include <odbomodule/host/automation.h>
#include <odbomodule/host/string_converters.h>

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <type_traits>

using namespace std::string_literals;

namespace {

// A value of the type with these bits. Bits that the type does not use must be ignored.
template <class Bits = int>
VARIANT variant(int type, Bits bits = 0)
{
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type);
    std::memcpy(&value.llVal, &bits, sizeof bits);
    if constexpr (std::is_integral_v<Bits>) { // on big-endian processors the low bits are at the end
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

// The value as conditions write it; a bool other than true and false by its number, another type by the number of the type.
std::string in_words(VARIANT const & value)
{
    KelpString text;
    switch (value.vt) {
    case VT_R8: StringConverters::convertRealToString(value.dblVal, text, 10, 16, false); break;
    case VT_BSTR: text.assign(plain_characters(value.bstrVal), SysStringLen(value.bstrVal)); break;
    case VT_BOOL:
        text = value.boolVal == VARIANT_TRUE ? "1<2" : value.boolVal == VARIANT_FALSE ? "1>2" : std::to_string(value.boolVal).c_str();
        break;
    default: return "type " + std::to_string(value.vt);
    }
    return text.toUTF8();
}

// Converts, and returns the result as conditions write it, or "!" and why the conversion was refused.
std::string convert(VARIANT & destination, VARIANT & source, VARTYPE type)
{
    switch (VariantChangeType(&destination, &source, 0, type)) {
    case S_OK: return in_words(destination);
    case DISP_E_TYPEMISMATCH: return "!mismatch";
    case DISP_E_OVERFLOW: return "!overflow";
    case DISP_E_BADVARTYPE: return "!type";
    case E_INVALIDARG: return "!argument";
    default: return "!";
    }
}

// Converts into another value that holds a text, then in place. Clears the source.
void expect_conversion(VARIANT source, VARTYPE type, std::string const & want)
{
    SCOPED_TRACE(in_words(source) + " of bits " + std::to_string(source.llVal) + " to type " + std::to_string(type));
    VARIANT other = text_variant(u"old");
    EXPECT_EQ(convert(other, source, type), want);
    EXPECT_EQ(in_words(other), want.starts_with('!') ? "old" : want);
    EXPECT_EQ(convert(source, source, type), want);
    EXPECT_EQ(VariantClear(&other), S_OK);
    EXPECT_EQ(other.vt, VT_EMPTY);
    VariantClear(&source);
}

void expect_number(VARIANT const & source, std::string const & want)
{
    expect_conversion(source, VT_R8, want);
}

void expect_text_as_number(std::u16string const & text, std::string const & want)
{
    expect_conversion(text_variant(text), VT_R8, want);
    expect_conversion(text_variant(text), VT_BOOL, want.starts_with('!') ? want : want == "0" ? "1>2" : "1<2");
}

// What the rows of docs/numbers.md call.
#define WITH_NAMES(...) [] { return __VA_ARGS__; }

template <class Make>
void conversion(char const * row, Make const & make, char const * number, char const * truth)
{
    SCOPED_TRACE(row);
    expect_conversion(make(), VT_R8, number);
    expect_conversion(make(), VT_BOOL, truth);
}

template <class Make>
void reading(char const * row, Make const & make, char const * number)
{
    SCOPED_TRACE(row);
    expect_text_as_number(make(), number);
}

template <class Make>
void digits(char const * row, Make const & make, char const * text)
{
    EXPECT_EQ(in_words(variant(VT_R8, static_cast<double>(make()))), text) << row;
}

#include "documented_numbers.h"

TEST(VariantChangeType, FollowsPointers)
{
    std::int32_t number = -12;
    std::int16_t shortNumber = -12;
    double real = -2.5;
    VARIANT text = text_variant(u"7.5");
    DECIMAL half = decimal_variant(1, 0, 0, 5).decVal;
    half.wReserved = 77; // in a VARIANT this field holds the type; after a pointer it is ignored
    VARIANT endless = variant(VT_BYREF | VT_VARIANT, &endless);
    expect_number(variant(VT_BYREF | VT_I4, &number), "-12");
    expect_number(variant(VT_BYREF | VT_I2, &shortNumber), "-12");
    expect_number(variant(VT_BYREF | VT_R8, &real), "-2.5");
    expect_number(variant(VT_BYREF | VT_DECIMAL, &half), "0.5");
    expect_number(variant(VT_BYREF | VT_BSTR, &text.bstrVal), "7.5");
    expect_number(variant(VT_BYREF | VT_VARIANT, &text), "7.5");
    expect_number(variant(VT_BYREF | VT_VARIANT, &endless), "!argument");
    VariantClear(&text);
}

TEST(VariantChangeType, ReadsLongTexts)
{
    std::u16string const zeros(400, u'0');
    expect_text_as_number(zeros + u"1e-400", "0");
    expect_text_as_number(u"1." + zeros + u"e-400", "0");
    expect_text_as_number(u"0." + zeros + u"1e5", "0");
    expect_text_as_number(u"0." + zeros + u"1e400", "0.1");
    expect_text_as_number(u"1.0" + zeros + u"e400", "!overflow");
    expect_text_as_number(u"0" + zeros + u"1e400", "!overflow");
}

#if !defined(_WIN32)
// Windows accepts all of these. Linux accepts only "1d3", which is here because Wine does not know the "d".
TEST(VariantChangeType, IsStricterOnLinux)
{
    expect_text_as_number(u"1d3", "1000");
    for (char16_t const * const text : { u"+-12", u"-(12)", u"(12))", u"$12$", u"12$$", u"-&HC", u"12e0," })
        expect_text_as_number(text, "!mismatch");
}
#endif

TEST(VariantChangeType, KeepsABoolAsItIs)
{
    expect_conversion(variant(VT_BOOL, 2), VT_BOOL, "2");
    expect_conversion(variant(VT_BOOL, 2), VT_R8, "2");
}

TEST(VariantChangeType, RefusesUnknownDestinations)
{
    VARIANT unknown = variant(99);
    VARIANT one = variant(VT_I4, 1);
    EXPECT_EQ(VariantChangeType(&unknown, &one, 0, VT_R8), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantClear(&unknown), DISP_E_BADVARTYPE);
#if !defined(_WIN32)
    for (VARTYPE const type : std::initializer_list<VARTYPE>{ VT_I4, VT_BSTR, VT_EMPTY, 77 })
        expect_conversion(variant(VT_I4, 1), type, "!mismatch");
    expect_number(variant(VT_DISPATCH, &one), "!mismatch"); // the object is not asked for its value
    EXPECT_EQ(VariantChangeType(nullptr, &one, 0, VT_R8), E_INVALIDARG);
    EXPECT_EQ(VariantChangeType(&one, nullptr, 0, VT_R8), E_INVALIDARG);
    EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
#endif
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

    BSTR const copy = SysAllocString(ole_characters(u"a"));
    EXPECT_EQ(std::u16string(plain_characters(copy), SysStringLen(copy)), u"a");
    SysFreeString(copy);

    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysAllocStringLen(ole_characters(u""), 0x80000000), nullptr); // its length in bytes does not fit in 32 bits
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    SysFreeString(nullptr);
}

}
