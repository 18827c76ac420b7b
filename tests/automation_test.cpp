#include "host/automation.h"
#include "host/kelp_string.h"
#include "host/string_converters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

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
    return make(VT_BSTR, &VARIANT::bstrVal, SysAllocStringLen(ole_characters(characters.data()), static_cast<unsigned>(characters.size())));
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
VARIANT truth(VARIANT_BOOL value)
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

std::u16string characters_of(BSTR text)
{
    return text == nullptr ? u"" : std::u16string(plain_characters(text), SysStringLen(text));
}

// An answer in words: the value, or the result code of a failure.
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
    KelpString real;
    switch (value.vt) {
    case VT_I4: return std::to_string(value.lVal);
    case VT_R8: StringConverters::convertRealToString(value.dblVal, real, 10, 17, false); return real.toUTF8();
    case VT_BOOL: return std::to_string(value.boolVal);
    case VT_BSTR: return "|" + KelpString(characters_of(value.bstrVal)).toUTF8() + "|";
    default: return "type " + std::to_string(value.vt);
    }
}

// The tables hold what Windows answers, as far as it is known. Two others may answer otherwise: the portable layer,
// on purpose, and Wine, in whose place these tests mostly run. A row says what and why.
enum class System { Windows, Wine, Portable };

struct Difference {
    System system;
    VARTYPE type; // the one that is converted to
    char const * want;
    char const * why;
};

System this_system()
{
#if defined(_WIN32)
    static bool const wine = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return wine ? System::Wine : System::Windows;
#else
    return System::Portable;
#endif
}

// A difference for every type.
std::vector<Difference> refused(System system, char const * why)
{
    std::vector<Difference> differences;
    for (VARTYPE const type : { VT_I4, VT_R8, VT_BOOL, VT_BSTR })
        differences.push_back({ system, type, "mismatch", why });
    return differences;
}

struct Answer {
    std::string want;
    std::string why;
};

Answer answer_here(char const * want, std::vector<Difference> const & differences, VARTYPE type)
{
    for (Difference const & difference : differences)
        if (difference.system == this_system() && difference.type == type)
            return { difference.want, std::string(", here because ") + difference.why };
    return { want, "" };
}

// Converts to another value, which holds a text before, and in place. The source is used up.
void check_answer(std::string const & name, VARIANT source, VARTYPE type, Answer const & answer, std::uint16_t flags = 0)
{
    VARIANT other = text(u"old");
    HRESULT const code = VariantChangeType(&other, &source, flags, type);
    EXPECT_EQ(shown(code, other), answer.want) << name << " to " << type << answer.why;
    if (code != S_OK) {
        EXPECT_EQ(shown(S_OK, other), "|old|") << name;
    }
    HRESULT const inPlace = VariantChangeType(&source, &source, flags, type);
    EXPECT_EQ(shown(inPlace, source), answer.want) << name << " to " << type << ", in place" << answer.why;
    EXPECT_EQ(VariantClear(&other), S_OK);
    VariantClear(&source);
}

// One value, made anew for each conversion, and its answers for the four types that conditions ask for.
struct ValueRow {
    char const * name;
    std::function<VARIANT()> make;
    char const * whole;
    char const * real;
    char const * boolean;
    char const * text;
    std::vector<Difference> differences = {};
};

void check_values(std::vector<ValueRow> const & rows)
{
    for (ValueRow const & row : rows) {
        check_answer(row.name, row.make(), VT_I4, answer_here(row.whole, row.differences, VT_I4));
        check_answer(row.name, row.make(), VT_R8, answer_here(row.real, row.differences, VT_R8));
        check_answer(row.name, row.make(), VT_BOOL, answer_here(row.boolean, row.differences, VT_BOOL));
        check_answer(row.name, row.make(), VT_BSTR, answer_here(row.text, row.differences, VT_BSTR));
    }
}

// A text that is read; as a text it stays what it is.
struct TextRow {
    std::u16string text;
    char const * whole;
    char const * real;
    char const * boolean;
    std::vector<Difference> differences = {};
};

void check_texts(std::vector<TextRow> const & rows)
{
    for (TextRow const & row : rows) {
        std::string const name = "|" + KelpString(row.text).toUTF8() + "|";
        check_answer(name, text(row.text), VT_I4, answer_here(row.whole, row.differences, VT_I4));
        check_answer(name, text(row.text), VT_R8, answer_here(row.real, row.differences, VT_R8));
        check_answer(name, text(row.text), VT_BOOL, answer_here(row.boolean, row.differences, VT_BOOL));
    }
}

TEST(VariantChangeType, Numbers)
{
    check_values({
        { "empty", [] { return empty(VT_EMPTY); }, "0", "0", "0", "||" },
        { "signed byte -128", [] { return make(VT_I1, &VARIANT::cVal, -128); }, "-128", "-128", "-1", "|-128|" },
        { "signed byte 127", [] { return make(VT_I1, &VARIANT::cVal, 127); }, "127", "127", "-1", "|127|" },
        { "byte 0", [] { return make(VT_UI1, &VARIANT::bVal, 0); }, "0", "0", "0", "|0|" },
        { "byte 255", [] { return make(VT_UI1, &VARIANT::bVal, 255); }, "255", "255", "-1", "|255|" },
        { "short -32768", [] { return make(VT_I2, &VARIANT::iVal, -32768); }, "-32768", "-32768", "-1", "|-32768|" },
        { "short 32767", [] { return make(VT_I2, &VARIANT::iVal, 32767); }, "32767", "32767", "-1", "|32767|" },
        { "unsigned short 65535", [] { return make(VT_UI2, &VARIANT::uiVal, 65535); }, "65535", "65535", "-1", "|65535|" },
        { "least whole", [] { return whole(-2147483647 - 1); }, "-2147483648", "-2147483648", "-1", "|-2147483648|" },
        { "least machine whole", [] { return make(VT_INT, &VARIANT::intVal, -2147483647 - 1); }, "-2147483648", "-2147483648", "-1", "|-2147483648|" },
        { "most whole", [] { return whole(2147483647); }, "2147483647", "2147483647", "-1", "|2147483647|" },
        { "most machine whole", [] { return make(VT_INT, &VARIANT::intVal, 2147483647); }, "2147483647", "2147483647", "-1", "|2147483647|" },
        { "whole that fits", [] { return make(VT_UI4, &VARIANT::ulVal, 2147483647); }, "2147483647", "2147483647", "-1", "|2147483647|" },
        { "whole that does not", [] { return make(VT_UI4, &VARIANT::ulVal, 2147483648u); }, "overflow", "2147483648", "-1", "|2147483648|",
            { { System::Wine, VT_I4, "-2147483648", "it lets the sign bit through" } } },
        { "most unsigned", [] { return make(VT_UINT, &VARIANT::uintVal, 4294967295u); }, "overflow", "4294967295", "-1", "|4294967295|",
            { { System::Wine, VT_I4, "-1", "it lets the sign bit through" } } },
        { "least long", [] { return make(VT_I8, &VARIANT::llVal, std::numeric_limits<std::int64_t>::min()); }, "overflow", "-9.223372036854776e+18", "-1",
            "|-9223372036854775808|" },
        { "long too low", [] { return make(VT_I8, &VARIANT::llVal, -2147483649ll); }, "overflow", "-2147483649", "-1", "|-2147483649|" },
        { "long -1", [] { return make(VT_I8, &VARIANT::llVal, -1); }, "-1", "-1", "-1", "|-1|" },
        { "long too high", [] { return make(VT_I8, &VARIANT::llVal, 2147483648ll); }, "overflow", "2147483648", "-1", "|2147483648|" },
        { "past the whole reals", [] { return make(VT_I8, &VARIANT::llVal, 9007199254740993ll); }, "overflow", "9007199254740992", "-1", "|9007199254740993|" },
        { "most long", [] { return make(VT_UI8, &VARIANT::ullVal, ~0ull); }, "overflow", "1.8446744073709552e+19", "-1", "|18446744073709551615|" },
        { "true", [] { return truth(VARIANT_TRUE); }, "-1", "-1", "-1", "|-1|" },
        { "false", [] { return truth(VARIANT_FALSE); }, "0", "0", "0", "|0|" },
        { "bool of another number", [] { return truth(2); }, "2", "2", "2", "|2|" },
    });
}

TEST(VariantChangeType, Reals)
{
    check_values({
        { "zero", [] { return real(0.0); }, "0", "0", "0", "|0|" },
        { "negative zero", [] { return real(-0.0); }, "0", "-0", "0", "|0|" },
        { "small", [] { return real(0.1); }, "0", "0.1", "-1", "|0.1|" },
        { "half to even, down", [] { return real(2.5); }, "2", "2.5", "-1", "|2.5|" },
        { "half to even, up", [] { return real(-3.5); }, "-4", "-3.5", "-1", "|-3.5|" },
        { "sum of tenths", [] { return real(0.1 + 0.2); }, "0", "0.30000000000000004", "-1", "|0.3|" },
        { "third", [] { return real(1.0 / 3); }, "0", "0.3333333333333333", "-1", "|0.333333333333333|" },
        { "15 digits", [] { return real(123456789012345.0); }, "overflow", "123456789012345", "-1", "|123456789012345|" },
        { "16 digits", [] { return real(1234567890123456.0); }, "overflow", "1234567890123456", "-1", "|1.23456789012346E+15|" },
        { "digits that round up", [] { return real(999999999999999.5); }, "overflow", "999999999999999.5", "-1", "|1E+15|" },
        { "fixed form, small", [] { return real(0.0001); }, "0", "0.0001", "-1", "|0.0001|" },
        { "exponent form, small", [] { return real(0.00001234567890123456); }, "0", "1.234567890123456e-05", "-1", "|1.23456789012346E-05|" },
        { "large", [] { return real(-1e20); }, "overflow", "-1e+20", "-1", "|-1E+20|" },
        { "largest", [] { return real(1.7976931348623157e308); }, "overflow", "1.7976931348623157e+308", "-1", "|1.79769313486232E+308|" },
        { "least", [] { return real(5e-324); }, "0", "5e-324", "-1", "|4.94065645841247E-324|" },
        { "largest that rounds in", [] { return real(2147483647.4); }, "2147483647", "2147483647.4", "-1", "|2147483647.4|" },
        { "half that rounds out", [] { return real(2147483647.5); }, "overflow", "2147483647.5", "-1", "|2147483647.5|" },
        { "half that rounds in", [] { return real(-2147483648.5); }, "-2147483648", "-2147483648.5", "-1", "|-2147483648.5|" },
        { "too low", [] { return real(-2147483648.51); }, "overflow", "-2147483648.51", "-1", "|-2147483648.51|" },
        { "no number", [] { return real(std::nan("")); }, "overflow", "nan", "-1", "|1.#QNAN|",
            { { System::Wine, VT_I4, "2147483647", "it leaves this to the processor and to the C library" },
                { System::Wine, VT_BSTR, "|NAN|", "it leaves this to the processor and to the C library" } } },
        { "infinity", [] { return real(INFINITY); }, "overflow", "inf", "-1", "|1.#INF|", { { System::Wine, VT_BSTR, "|INF|", "it leaves the text to the C library" } } },
        { "negative infinity", [] { return real(-INFINITY); }, "overflow", "-inf", "-1", "|-1.#INF|",
            { { System::Wine, VT_BSTR, "|-INF|", "it leaves the text to the C library" } } },
        { "single", [] { return make(VT_R4, &VARIANT::fltVal, 0.1f); }, "0", "0.10000000149011612", "-1", "|0.1|" },
        { "single, 7 digits", [] { return make(VT_R4, &VARIANT::fltVal, 1234567.0f); }, "1234567", "1234567", "-1", "|1234567|" },
        { "single, 8 digits", [] { return make(VT_R4, &VARIANT::fltVal, 12345678.0f); }, "12345678", "12345678", "-1", "|1.234568E+07|" },
        { "single, small", [] { return make(VT_R4, &VARIANT::fltVal, 0.00001f); }, "0", "9.999999747378752e-06", "-1", "|1E-05|" },
        { "single, largest", [] { return make(VT_R4, &VARIANT::fltVal, 3.4028235e38f); }, "overflow", "3.4028234663852886e+38", "-1", "|3.402823E+38|" },
        { "money", [] { return money(-12345000); }, "-1234", "-1234.5", "-1", "|-1234.5|" },
        { "whole money", [] { return money(200000); }, "20", "20", "-1", "|20|" },
        { "least of money", [] { return money(-1); }, "0", "-0.0001", "-1", "|-0.0001|" },
        { "money, half to even", [] { return money(25000); }, "2", "2.5", "-1", "|2.5|" },
        { "money, half to even, negative", [] { return money(-15000); }, "-2", "-1.5", "-1", "|-1.5|" },
        { "most negative money", [] { return money(std::numeric_limits<std::int64_t>::min()); }, "overflow", "-922337203685477.6", "-1", "|-922337203685477.5808|" },
    });
}

TEST(VariantChangeType, Dates)
{
    check_values({
        { "date and time", [] { return date(46350.0 + 54245.0 / 86400); }, "46351", "46350.62783564815", "-1", "|11/24/2026 3:04:05 PM|" },
        { "midnight", [] { return date(46350); }, "46350", "46350", "-1", "|11/24/2026|" },
        { "noon", [] { return date(36526.5); }, "36526", "36526.5", "-1", "|1/1/2000 12:00:00 PM|" },
        { "day 0", [] { return date(0.5); }, "0", "0.5", "-1", "|12:00:00 PM|" },
        { "midnight of day 0", [] { return date(0); }, "0", "0", "0", "|12:00:00 AM|" },
        { "before day 0 the time goes forwards", [] { return date(-1.25); }, "-1", "-1.25", "-1", "|12/29/1899 6:00:00 AM|" },
        { "quarter before day 0", [] { return date(-0.25); }, "0", "-0.25", "-1", "|6:00:00 AM|" },
        { "rounded up into the next day", [] { return date(1.9999999); }, "2", "1.9999999", "-1", "|1/1/1900 12:00:00 AM|",
            { { System::Portable, VT_BSTR, "|1/1/1900|", "it rounds to seconds first, then leaves midnight out" } } },
        { "rounded up into day 1", [] { return date(0.999999); }, "1", "0.999999", "-1", "|12:00:00 AM|",
            { { System::Portable, VT_BSTR, "|12/31/1899|", "it rounds to seconds first, then leaves day 0 out" } } },
        { "leap day", [] { return date(36585); }, "36585", "36585", "-1", "|2/29/2000|" },
        { "first day", [] { return date(-657434); }, "-657434", "-657434", "-1", "|1/1/100|" },
        { "before the first day", [] { return date(-657435); }, "-657435", "-657435", "-1", "bad argument" },
        { "last day", [] { return date(2958465); }, "2958465", "2958465", "-1", "|12/31/9999|" },
        { "last second", [] { return date(2958465.99999); }, "2958466", "2958465.99999", "-1", "|12/31/9999 11:59:59 PM|" },
        { "rounded out of the last day", [] { return date(2958465.9999999); }, "2958466", "2958465.9999999", "-1", "|1/1/10000 12:00:00 AM|",
            { { System::Portable, VT_BSTR, "bad argument", "there is no date past the year 9999" } } },
        { "past the last day", [] { return date(2958466); }, "2958466", "2958466", "-1", "bad argument" },
        { "far past", [] { return date(1e300); }, "overflow", "1e+300", "-1", "bad argument" },
    });
}

TEST(VariantChangeType, Others)
{
    check_values({
        { "null", [] { return empty(VT_NULL); }, "mismatch", "mismatch", "mismatch", "mismatch" },
        { "error", [] { return empty(VT_ERROR); }, "mismatch", "mismatch", "mismatch", "mismatch" },
        { "null text", [] { return make(VT_BSTR, &VARIANT::bstrVal, BSTR{ nullptr }); }, "mismatch", "mismatch", "mismatch", "||" },
        { "no object", [] { return empty(VT_DISPATCH); }, "bad type", "bad type", "bad type", "bad type" },
        { "no object of another kind", [] { return empty(VT_UNKNOWN); }, "mismatch", "mismatch", "mismatch", "mismatch" },
        { "decimal", [] { return empty(VT_DECIMAL); }, "0", "0", "0", "|0|", refused(System::Portable, "conditions hold no decimals") },
        { "array", [] { return empty(VT_ARRAY | VT_I4); }, "mismatch", "mismatch", "mismatch", "mismatch" },
        { "record", [] { return empty(VT_RECORD); }, "mismatch", "mismatch", "mismatch", "mismatch" },
        { "type between two", [] { return empty(15); }, "bad type", "bad type", "bad type", "bad type" },
        { "type past the last", [] { return empty(77); }, "bad type", "bad type", "bad type", "bad type" },
        { "pointed whole", [] { return pointer(VT_I4, &gPointedWhole); }, "-12", "-12", "-1", "|-12|" },
        { "pointed variant", [] { return pointer(VT_VARIANT, &gPointedVariant); }, "2", "2.5", "-1", "|2.5|" },
        { "pointer to nothing", [] { return pointer(VT_DATE, nullptr); }, "mismatch", "mismatch", "mismatch", "mismatch" },
    });
}

TEST(VariantChangeType, Texts)
{
    check_texts({
        // Blanks
        { u"", "mismatch", "mismatch", "mismatch" },
        { u" ", "mismatch", "mismatch", "mismatch" },
        { u" 12 ", "12", "12", "-1" },
        { u"\t12\r\n", "12", "12", "-1" },
        { u"\u00A012\u3000", "12", "12", "-1" },
        { u"\u200B12", "mismatch", "mismatch", "mismatch" },
        { u"1 2", "mismatch", "mismatch", "mismatch" },
        { std::u16string(u"12\0x", 4), "12", "12", "-1" },
        // Signs
        { u"+12", "12", "12", "-1" },
        { u"- 12", "-12", "-12", "-1" },
        { u"12 -", "-12", "-12", "-1" },
        { u"--12", "mismatch", "mismatch", "mismatch" },
        { u"-12-", "mismatch", "mismatch", "mismatch" },
        { u"+-12", "-12", "-12", "-1", refused(System::Portable, "a number has one sign at most") },
        { u"(12)", "-12", "-12", "-1" },
        { u"( 12 )", "-12", "-12", "-1" },
        { u"(12", "mismatch", "mismatch", "mismatch" },
        { u"12)", "mismatch", "mismatch", "mismatch" },
        { u"()", "mismatch", "mismatch", "mismatch" },
        { u"(-12)", "-12", "-12", "-1", refused(System::Portable, "a number has one sign at most") },
        { u"-(12)", "-12", "-12", "-1", refused(System::Portable, "a number has one sign at most") },
        { u"\u221212", "mismatch", "mismatch", "mismatch" },
        // Points and commas
        { u".5", "0", "0.5", "-1" },
        { u"-.5", "0", "-0.5", "-1" },
        { u"5.", "5", "5", "-1" },
        { u".", "mismatch", "mismatch", "mismatch" },
        { u"1.2.3", "mismatch", "mismatch", "mismatch" },
        { u"1,234.5", "1234", "1234.5", "-1" },
        { u"1,2,,3,", "123", "123", "-1" },
        { u",5", "mismatch", "mismatch", "mismatch" },
        { u"1.2,3", "1", "1.23", "-1" },
        { u"1'234", "mismatch", "mismatch", "mismatch" },
        { u"0.5", "0", "0.5", "-1" },
        { u"1.5", "2", "1.5", "-1" },
        { u"00012", "12", "12", "-1" },
        { u"0.49999999999999999", "0", "0.5", "-1" },
        // Money
        { u"$12", "12", "12", "-1" },
        { u"-$ 12", "-12", "-12", "-1" },
        { u"12 $", "12", "12", "-1" },
        { u"($1,234.50)", "-1234", "-1234.5", "-1" },
        { u"$", "mismatch", "mismatch", "mismatch" },
        { u"$12$", "12", "12", "-1", refused(System::Portable, "a number has one currency sign at most") },
        { u"\u20AC12", "mismatch", "mismatch", "mismatch" },
        { u"12%", "mismatch", "mismatch", "mismatch" },
        // Exponents
        { u"1.5E+3", "1500", "1500", "-1" },
        { u"15e-1", "2", "1.5", "-1" },
        { u"1d3", "1000", "1000", "-1", refused(System::Wine, "it does not know this mark of an exponent") },
        { u"1e", "mismatch", "mismatch", "mismatch" },
        { u"e3", "mismatch", "mismatch", "mismatch" },
        { u"1e3.5", "mismatch", "mismatch", "mismatch" },
        { u"1e 3", "mismatch", "mismatch", "mismatch" },
        { u"1e3,", "1000", "1000", "-1", refused(System::Portable, "a comma parts digits, not an exponent") },
        { u"1e400", "overflow", "overflow", "overflow" },
        { u"1e-400", "0", "0", "0" },
        { u"0e99999999999", "0", "0", "0" },
        { u"0.01e99999999999", "overflow", "overflow", "overflow" },
        { u"0." + std::u16string(400, u'0') + u"1e400", "0", "0.1", "-1" },
        { u"0." + std::u16string(400, u'0') + u"1e5", "0", "0", "0" },
        // Limits
        { u"2147483647", "2147483647", "2147483647", "-1" },
        { u"2147483648", "overflow", "2147483648", "-1" },
        { u"-2147483648", "-2147483648", "-2147483648", "-1" },
        { u"-2147483649", "overflow", "-2147483649", "-1" },
        { u"2147483647.4", "2147483647", "2147483647.4", "-1" },
        { u"9007199254740993", "overflow", "9007199254740992", "-1" },
        { u"0.1", "0", "0.1", "-1" },
        { u"4.35", "4", "4.35", "-1" },
        { u"1e23", "overflow", "1e+23", "-1" },
        { u"123456789012345678901234567890", "overflow", "1.2345678901234568e+29", "-1",
            { { System::Wine, VT_R8, "1.2345678901234566e+29", "it loses the last bits of long numbers" } } },
        { u"1.7976931348623157e308", "overflow", "1.7976931348623157e+308", "-1",
            { { System::Wine, VT_R8, "overflow", "it loses the last bits of long numbers" }, { System::Wine, VT_BOOL, "overflow", "it loses the last bits of long numbers" } } },
        { std::u16string(400, u'9'), "overflow", "overflow", "overflow",
            { { System::Wine, VT_R8, "inf", "it does not see that the sum of the digits overflows" },
                { System::Wine, VT_BOOL, "-1", "it does not see that the sum of the digits overflows" } } },
        // Hexadecimal
        { u"&h1F ", "31", "31", "-1" },
        { u"&HFFFF", "65535", "65535", "-1" },
        { u"&H80000000", "-2147483648", "-2147483648", "-1" },
        { u"&HFFFFFFFF", "-1", "-1", "-1",
            { { System::Wine, VT_R8, "overflow", "it finds no real for a sign bit" }, { System::Wine, VT_BOOL, "overflow", "it finds no real for a sign bit" } } },
        { u"&H100000000", "overflow", "overflow", "overflow" },
        { u"&H12345678123456789", "overflow", "overflow", "overflow" },
        { u"&HG", "mismatch", "mismatch", "mismatch" },
        { u"&H", "mismatch", "mismatch", "mismatch" },
        { u"&O17", "15", "15", "-1" },
        { u"&O18", "mismatch", "mismatch", "mismatch" },
        { u"&17", "mismatch", "mismatch", "mismatch" },
        { u"-&H1F", "31", "31", "-1", refused(System::Portable, "bits have no sign in front") },
        { u"&H1-", "1", "1", "-1", refused(System::Portable, "bits have no sign behind") },
        { u"0x1F", "mismatch", "mismatch", "mismatch" },
        // Words
        { u"tRUE", "mismatch", "mismatch", "-1" },
        { u"False", "mismatch", "mismatch", "0" },
        { u"#TRUE#", "mismatch", "mismatch", "-1" },
        { u"#False#", "mismatch", "mismatch", "mismatch" },
        { u" true", "mismatch", "mismatch", "mismatch" },
        { u"yes", "mismatch", "mismatch", "mismatch" },
        { u"12 apples", "mismatch", "mismatch", "mismatch" },
        { u"inf", "mismatch", "mismatch", "mismatch" },
        { u"nan", "mismatch", "mismatch", "mismatch" },
        { u"1.#INF", "mismatch", "mismatch", "mismatch" },
        { u"11/24/2026", "mismatch", "mismatch", "mismatch" },
        { u"2026-11-24", "mismatch", "mismatch", "mismatch" },
        { u"12:00", "mismatch", "mismatch", "mismatch" },
        { u"\u0661", "mismatch", "mismatch", "mismatch" },
    });
}

TEST(VariantChangeType, OtherTypes)
{
    struct Row {
        char const * name;
        VARIANT source;
        VARTYPE type;
        char const * want;
        std::vector<Difference> differences = {};
    };
    gPointedText = SysAllocString(ole_characters(u"7.5"));
    VARIANT nested = pointer(VT_VARIANT, nullptr);
    nested.byref = &nested;
    char const few[] = "conditions ask for no other types";
    Row const rows[] = {
        { "null to null", empty(VT_NULL), VT_NULL, "type 1" },
        { "null to empty", empty(VT_NULL), VT_EMPTY, "mismatch" },
        { "number to null", whole(1), VT_NULL, "type 1" },
        { "number to empty", whole(1), VT_EMPTY, "type 0" },
        { "error to empty", empty(VT_ERROR), VT_EMPTY, "mismatch" },
        { "own type", money(1), VT_CY, "type 6" },
        { "no object to its own type", empty(VT_UNKNOWN), VT_UNKNOWN, "type 13" },
        { "to a short", whole(1), VT_I2, "type 2", { { System::Portable, VT_I2, "mismatch", few } } },
        { "to money", real(1.5), VT_CY, "type 6", { { System::Portable, VT_CY, "mismatch", few } } },
        { "to a date", whole(1), VT_DATE, "type 7", { { System::Portable, VT_DATE, "mismatch", few } } },
        { "to a variant", whole(1), VT_VARIANT, "mismatch" },
        { "to a record", whole(1), VT_RECORD, "mismatch" },
        { "to an array", whole(1), VT_ARRAY | VT_I4, "mismatch" },
        { "to a pointer", whole(1), VT_BYREF | VT_I4, "mismatch" },
        { "to a type that is none", whole(1), 77, "bad type" },
        { "from a type that is none", empty(77), VT_VARIANT, "bad type" },
        { "pointed whole to its own type", pointer(VT_I4, &gPointedWhole), VT_I4, "-12" },
        { "pointed text", pointer(VT_BSTR, &gPointedText), VT_R8, "7.5" },
        { "pointed text to its own type", pointer(VT_BSTR, &gPointedText), VT_BSTR, "|7.5|" },
        { "pointer to a pointer to a variant", pointer(VT_VARIANT, &nested), VT_I4, "bad argument" },
    };
    for (Row const & row : rows)
        check_answer(row.name, row.source, row.type, answer_here(row.want, row.differences, row.type));
    SysFreeString(gPointedText);

    check_answer("true as a word", truth(VARIANT_TRUE), VT_BSTR, { "|True|", "" }, VARIANT_ALPHABOOL);
    check_answer("false as a word", truth(VARIANT_FALSE), VT_BSTR, { "|False|", "" }, VARIANT_ALPHABOOL);
    check_answer("zeros in a text", text(std::u16string(u"a\0b", 3)), VT_BSTR, { { "|a\0b|", 5 }, "" });
}

TEST(VariantChangeType, DestinationsThatAreNone)
{
    VARIANT none = empty(99);
    VARIANT one = whole(1);
    EXPECT_EQ(VariantChangeType(&none, &one, 0, VT_BSTR), DISP_E_BADVARTYPE);
    EXPECT_EQ(VariantClear(&none), DISP_E_BADVARTYPE);
    if (this_system() != System::Wine) { // which looks into it
        EXPECT_EQ(VariantChangeType(nullptr, &one, 0, VT_I4), E_INVALIDARG);
    }
}

TEST(SystemString, CarriesItsLength)
{
    BSTR const string = SysAllocStringLen(ole_characters(u"a\0bc"), 3);
    EXPECT_EQ(SysStringLen(string), 3u);
    EXPECT_EQ(std::u16string(plain_characters(string), 4), std::u16string(u"a\0b\0", 4));
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<char const *>(string) - 4, 4);
    EXPECT_EQ(bytes, 6u);
    SysFreeString(string);
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysAllocStringLen(ole_characters(u""), 0xFFFFFFFF), nullptr);
    SysFreeString(nullptr);
}

}
