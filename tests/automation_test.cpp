#include "tests/fixture.h"

#include "odbomodule/host/automation.h"
#include "odbomodule/host/string_converters.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>

using namespace std::string_literals;

namespace {

// The tables hold what Windows answers, as far as it is known. Two others may answer otherwise: the portable layer, on
// purpose, and Wine, in whose place these tests mostly run.
#if defined(_WIN32)
bool const kPortable = false;
bool const kWine = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
#else
bool const kPortable = true;
bool const kWine = false;
#endif

// A value by its type and its bits. Bits beyond those of the type are noise.
template <class Bits = int>
VARIANT of(int type, Bits bits = 0)
{
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type);
    std::memcpy(&value.llVal, &bits, sizeof bits);
    return value;
}

VARIANT text(std::u16string const & characters)
{
    return of(VT_BSTR, SysAllocStringLen(ole_characters(characters.data()), static_cast<unsigned>(characters.size())));
}

// An answer in words: the value, or behind a "!" why there is none.
std::string shown(HRESULT code, VARIANT const & value)
{
    static std::map<HRESULT, std::string> const refusals = { { DISP_E_TYPEMISMATCH, "!mismatch" }, { DISP_E_OVERFLOW, "!overflow" },
        { DISP_E_BADVARTYPE, "!type" }, { E_INVALIDARG, "!argument" } };
    if (code != S_OK)
        return refusals.at(code);
    KelpString result;
    switch (value.vt) {
    case VT_I4: return std::to_string(value.lVal);
    case VT_R8: StringConverters::convertRealToString(value.dblVal, result, 10, 17, false); break;
    case VT_BOOL: return std::to_string(value.boolVal);
    case VT_BSTR: result.assign(plain_characters(value.bstrVal), SysStringLen(value.bstrVal)); break;
    default: return "type " + std::to_string(value.vt);
    }
    return result.toUTF8();
}

// Converts to another value, which holds a text before, then in place. The source is used up.
void check(VARIANT source, VARTYPE type, std::string const & want, std::uint16_t flags = 0)
{
    SCOPED_TRACE(shown(S_OK, source) + " of bits " + std::to_string(source.llVal) + " to type " + std::to_string(type));
    VARIANT other = text(u"old");
    for (VARIANT * const destination : { &other, &source })
        EXPECT_EQ(shown(VariantChangeType(destination, &source, flags, type), *destination), want);
    EXPECT_TRUE(want[0] != '!' || shown(S_OK, other) == "old");
    EXPECT_EQ(VariantClear(&other), S_OK);
    VariantClear(&source);
}

// A value and its answers for the types that conditions ask for. As VT_R8, a real or a date is what it was, and all
// else what its text says. As VT_BOOL, what has a number is true unless that is 0.
struct ValueRow {
    VARIANT value;
    std::string whole;
    std::string text = whole;
    std::string real = value.vt == VT_R8 || value.vt == VT_DATE ? shown(S_OK, of(VT_R8, value.dblVal)) : text;
    std::string truth = real[0] == '!' ? real : real == "0" || real == "-0" ? "0" : "-1";
};

TEST(VariantChangeType, Values)
{
    std::int32_t whole = -12;
    VARIANT pointed = of(VT_BSTR, SysAllocString(ole_characters(u"7.5"))), nested = of(VT_BYREF | VT_VARIANT, &nested);
    ValueRow const rows[] = { { of(VT_EMPTY), "0", "", "0" }, { of(VT_BOOL, 0x1FFFF), "-1" }, { of(VT_BOOL, 0x10000), "0" },
        { of(VT_I1, 0x80), "-128" }, { of(VT_UI1, 0x1FF), "255" }, { of(VT_I2, 0x8000), "-32768" }, { of(VT_UI2, 0x1FFFF), "65535" },
        { of(VT_I4, 0x180000000), "-2147483648" }, { of(VT_INT, 0x180000000), "-2147483648" }, { of(VT_UI4, 0x17FFFFFFF), "2147483647" },
        { of(VT_I8, -2147483649ll), "!overflow", "-2147483649" }, { of(VT_I8, 2147483648ll), "!overflow", "2147483648" },
        { of(VT_I8, INT64_MIN), "!overflow", "-9223372036854775808", "-9.223372036854776e+18" },
        { of(VT_I8, INT64_MAX), "!overflow", "9223372036854775807", "9.223372036854776e+18" },
        { of(VT_UI8, UINT64_MAX), "!overflow", "18446744073709551615", "1.8446744073709552e+19" },
        // Reals round to the even whole, and have 15 digits as a text; singles have 7
        { of(VT_R8, 0.0), "0" }, { of(VT_R8, -0.0), "0" }, { of(VT_R8, 2.5), "2", "2.5" }, { of(VT_R8, -3.5), "-4", "-3.5" },
        { of(VT_R8, 2147483647.4), "2147483647", "2147483647.4" }, { of(VT_R8, 2147483647.5), "!overflow", "2147483647.5" },
        { of(VT_R8, -2147483648.5), "-2147483648", "-2147483648.5" }, { of(VT_R8, -2147483648.51), "!overflow", "-2147483648.51" },
        { of(VT_R8, 999999999999999.5), "!overflow", "1E+15" }, { of(VT_R8, 0.0001), "0", "0.0001" },
        { of(VT_R8, 0.00001234567890123456), "0", "1.23456789012346E-05" },
        { of(VT_R8, 1.7976931348623157e308), "!overflow", "1.79769313486232E+308" }, { of(VT_R4, 0.1f), "0", "0.1", "0.10000000149011612" },
        { of(VT_R4, 3.4028235e38f), "!overflow", "3.402823E+38", "3.4028234663852886e+38" },
        // Money is in ten-thousandths
        { of(VT_CY, 0ll), "0" }, { of(VT_CY, 200000ll), "20" }, { of(VT_CY, -1ll), "0", "-0.0001" }, { of(VT_CY, 25000ll), "2", "2.5" },
        { of(VT_CY, -15000ll), "-2", "-1.5" }, { of(VT_CY, INT64_MIN), "!overflow", "-922337203685477.5808", "-922337203685477.6" },
        // Dates: midnight and day 0 go unsaid; before day 0 the time goes forwards all the same
        { of(VT_DATE, 46350.0 + 54245.0 / 86400), "46351", "11/24/2026 3:04:05 PM" }, { of(VT_DATE, 36585.0), "36585", "2/29/2000" },
        { of(VT_DATE, 0.5), "0", "12:00:00 PM" }, { of(VT_DATE, 0.0), "0", "12:00:00 AM" },
        { of(VT_DATE, -1.25), "-1", "12/29/1899 6:00:00 AM" }, { of(VT_DATE, -657434.5), "-657434", "1/1/100 12:00:00 PM" },
        { of(VT_DATE, -657435.0), "-657435", "!argument" }, { of(VT_DATE, 2958465.99999), "2958466", "12/31/9999 11:59:59 PM" },
        { of(VT_DATE, 2958466.0), "2958466", "!argument" },
        // No values, no types, and pointers
        { of(VT_NULL), "!mismatch" }, { of(VT_ERROR), "!mismatch" }, { of(VT_BSTR, BSTR{ nullptr }), "!mismatch", "", "!mismatch" },
        { of(VT_UNKNOWN), "!mismatch" }, { of(VT_ARRAY | VT_I4), "!mismatch" }, { of(VT_RECORD), "!mismatch" },
        { of(VT_DISPATCH), "!type" }, { of(15), "!type" }, { of(77), "!type" }, { of(VT_BYREF | VT_I4, &whole), "-12" },
        { of(VT_BYREF | VT_BSTR, &pointed.bstrVal), "8", "7.5" }, { of(VT_BYREF | VT_VARIANT, &pointed), "8", "7.5" },
        { of(VT_BYREF | VT_DATE), "!mismatch" }, { of(VT_BYREF | VT_VARIANT, &nested), "!argument" },
        // Wine lets the sign bit through, and leaves what is no number to the processor and to the C library
        { of(VT_UI4, 0x180000000), kWine ? "-2147483648" : "!overflow", "2147483648" },
        { of(VT_UINT, 0x1FFFFFFFF), kWine ? "-1" : "!overflow", "4294967295" },
        { of(VT_R8, std::nan("")), kWine ? "2147483647" : "!overflow", kWine ? "NAN" : "1.#QNAN" },
        { of(VT_R8, HUGE_VAL), "!overflow", kWine ? "INF" : "1.#INF" }, { of(VT_R8, -HUGE_VAL), "!overflow", kWine ? "-INF" : "-1.#INF" },
        // The portable layer rounds a date to seconds first, then leaves midnight and day 0 out, and ends with the year
        // 9999; it has no decimals
        { of(VT_DATE, 1.9999999), "2", kPortable ? "1/1/1900" : "1/1/1900 12:00:00 AM" },
        { of(VT_DATE, 0.999999), "1", kPortable ? "12/31/1899" : "12:00:00 AM" },
        { of(VT_DATE, 2958465.9999999), "2958466", kPortable ? "!argument" : "1/1/10000 12:00:00 AM" },
        { of(VT_DECIMAL), kPortable ? "!mismatch" : "0" } };
    for (ValueRow const & row : rows) {
        check(row.value, VT_I4, row.whole);
        check(row.value, VT_R8, row.real);
        check(row.value, VT_BOOL, row.truth);
        check(row.value, VT_BSTR, row.text);
    }
    VariantClear(&pointed);
}

// Texts that read as one number, or are refused in one way. A text is as whole and as true as its number.
TEST(VariantChangeType, Texts)
{
    std::u16string const zeros(400, u'0');
    std::vector<std::pair<std::string, std::vector<std::u16string>>> const rows = {
        { "12", { u" 12 ", u"\t12\r\n", u"\u00A012\u3000", u"12\0x"s, u"+12", u"1,2.,0,", u"$12", u"12 $", u"1.2E+1", u"&hC ", u"&O14" } },
        { "-12", { u"- 12", u"12 -", u"(12)", u"( 12 )", u"-$ 12", u"($1,2.00)" } }, { "0.5", { u".5", u"0.49999999999999999" } },
        { "0", { u"1e-400", u"0e99999999999", zeros + u"1e-400", u"0." + zeros + u"1e5" } },
        { "0.1", { u"0.1", u"0." + zeros + u"1e400" } }, { "1e+23", { u"1e23" } }, { "9007199254740992", { u"9007199254740993" } },
        { "-2147483648", { u"-2147483648", u"&H80000000" } }, { "65535", { u"&HFFFF" } },
        { "!overflow", { u"1e400", u"0.01e99999999999", u"&H100000000", u"&H10000000000" } },
        { "!mismatch", { u"", u" ", u"\u200B12", u"1 2", u"--12", u"-12-", u"(12", u"12)", u".", u"1.2.3", u",5", u"1'234", u"$", u"$$12",
                           u"$&HC", u"\u20AC12", u"1e", u"e3", u"1e3.5", u"1e 3", u"&HG", u"&H", u"&O18", u"&17", u"0x1F", u" true", u"inf",
                           u"nan", u"11/24/2026", u"12:00", u"\u0661", u"#False#" } },
        // The portable layer takes one sign, bracket and currency sign at most, none at bits, and no comma in an exponent
        { kPortable ? "!mismatch" : "-12", { u"+-12", u"(-12)", u"-(12)", u"(12))" } },
        { kPortable ? "!mismatch" : "12", { u"$12$", u"-&HC", u"&HC-", u"12e0," } },
        // Wine does not know this mark of an exponent, and does not see that the sum of digits overflows
        { kWine ? "!mismatch" : "1000", { u"1d3" } }, { kWine ? "inf" : "!overflow", { std::u16string(400, u'9') } }
    };
    for (auto const & [answer, texts] : rows)
        for (VARTYPE const type : { VT_R8, VT_I4, VT_BOOL }) {
            VARIANT number = of(VT_R8, std::strtod(answer.c_str(), nullptr));
            std::string const read = shown(VariantChangeType(&number, &number, 0, type), number);
            for (std::u16string const & characters : texts)
                check(text(characters), type, answer[0] == '!' ? answer : read);
        }
}

TEST(VariantChangeType, OtherPairs)
{
    // Words are no numbers. Bits have a sign, for which Wine finds no real
    std::vector<std::tuple<VARIANT, VARTYPE, std::string>> const rows = { { text(u"tRUE"), VT_R8, "!mismatch" },
        { text(u"tRUE"), VT_BOOL, "-1" }, { text(u"#FALSE#"), VT_BOOL, "0" }, { text(u"False"), VT_BOOL, "0" },
        { text(u"#TRUE#"), VT_BOOL, "-1" }, { text(u"&HFFFFFFFF"), VT_I4, "-1" },
        { text(u"&HFFFFFFFF"), VT_R8, kWine ? "!overflow" : "-1" },
        // To the own type, to what is no value, and to no type
        { text(u"a\0b"s), VT_BSTR, "a\0b"s }, { of(VT_BOOL, 2), VT_BOOL, "2" }, { of(VT_CY, 1), VT_CY, "type 6" },
        { of(VT_UNKNOWN), VT_UNKNOWN, "type 13" }, { of(VT_NULL), VT_NULL, "type 1" }, { of(VT_NULL), VT_EMPTY, "!mismatch" },
        { of(VT_ERROR), VT_EMPTY, "!mismatch" }, { of(VT_I4, 1), VT_EMPTY, "type 0" }, { of(VT_I4, 1), VT_NULL, "type 1" },
        { of(VT_I4, 1), VT_VARIANT, "!mismatch" }, { of(VT_I4, 1), VT_RECORD, "!mismatch" },
        { of(VT_I4, 1), VT_ARRAY | VT_I4, "!mismatch" }, { of(VT_I4, 1), VT_BYREF | VT_I4, "!mismatch" }, { of(VT_I4, 1), 77, "!type" },
        { of(77), VT_VARIANT, "!type" },
        // The portable layer has what conditions ask for, and no other types
        { of(VT_I4, 1), VT_I2, kPortable ? "!mismatch" : "type 2" }, { of(VT_R8, 1.5), VT_CY, kPortable ? "!mismatch" : "type 6" },
        { of(VT_I4, 1), VT_DATE, kPortable ? "!mismatch" : "type 7" },
        { of(VT_DECIMAL), VT_DECIMAL, kPortable ? "!mismatch" : "type 14" } };
    for (auto const & [source, type, want] : rows)
        check(source, type, want);
    check(of(VT_BOOL, VARIANT_TRUE), VT_BSTR, "True", VARIANT_ALPHABOOL);
    check(of(VT_BOOL, VARIANT_FALSE), VT_BSTR, "False", VARIANT_ALPHABOOL);
}

TEST(VariantChangeType, DestinationsThatAreNone)
{
    VARIANT none = of(99), one = of(VT_I4, 1);
    EXPECT_EQ(VariantChangeType(&none, &one, 0, VT_BSTR), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantClear(&none), DISP_E_BADVARTYPE);
    EXPECT_TRUE(kWine || VariantChangeType(nullptr, &one, 0, VT_I4) == E_INVALIDARG); // Wine looks into it
    EXPECT_TRUE(!kPortable || VariantChangeType(&one, nullptr, 0, VT_I4) == E_INVALIDARG);
}

TEST(SystemString, CarriesItsLength)
{
    BSTR const string = SysAllocStringLen(ole_characters(u"a\0bc"), 3);
    EXPECT_EQ(SysStringLen(string), 3u);
    EXPECT_EQ(std::u16string(plain_characters(string), 4), u"a\0b\0"s);
    EXPECT_EQ(reinterpret_cast<std::uint32_t const *>(string)[-1], 6u); // in bytes
    SysFreeString(string);
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysAllocStringLen(ole_characters(u""), 0xFFFFFFFF), nullptr);
    SysFreeString(nullptr);
}

}
