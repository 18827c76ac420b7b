#include "fixture.h"

#include "host/base_error.h"
#include "host/core_log.h"
#include "host/kelp_string.h"
#include "host/string_converters.h"

#include <cmath>
#include <limits>
#include <sstream>
#include <thread>

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

// --- KelpString

TEST(KelpString, AssignsAndAppends)
{
    struct Row {
        char const * name;
        void (*change)(KelpString & text); // of the text "abc"
        char16_t const * want;
    };
    Row const rows[] = {
        { "narrow assigned", [](KelpString & t) { t = "a longer text than fits in place"; }, u"a longer text than fits in place" },
        { "narrow null assigned", [](KelpString & t) { t = static_cast<char const *>(nullptr); }, u"" },
        { "wide assigned", [](KelpString & t) { t = u"\u00e9"; }, u"\u00e9" },
        { "wide null assigned", [](KelpString & t) { t = static_cast<char16_t const *>(nullptr); }, u"" },
        { "own end assigned", [](KelpString & t) { t = t.c_str() + 1; }, u"bc" },
        { "base assigned", [](KelpString & t) { t = std::u16string(u"base"); }, u"base" },
        { "narrow appended", [](KelpString & t) { t += "def"; }, u"abcdef" },
        { "narrow null appended", [](KelpString & t) { t += static_cast<char const *>(nullptr); }, u"abc" },
        { "wide appended", [](KelpString & t) { t += u"\u4e2d"; }, u"abc\u4e2d" },
        { "itself appended", [](KelpString & t) { t += t; }, u"abcabc" },
        { "own end appended", [](KelpString & t) { t += t.c_str() + 1; }, u"abcbc" },
        { "character appended", [](KelpString & t) { t += u'd'; }, u"abcd" },
        { "narrow bytes are widened without a sign", [](KelpString & t) { t = "\xE9"; }, u"\u00e9" },
    };
    for (auto const & row : rows) {
        KelpString text("abc");
        row.change(text);
        EXPECT_EQ(text, std::u16string(row.want)) << row.name << ": have |" << text << "|";
    }
}

TEST(KelpString, MovesAndFinds)
{
    KelpString text("a text that is too long to be held in place");
    auto const buffer = text.data();
    KelpString moved(std::move(text));
    KelpString taken;
    taken = std::move(moved);
    EXPECT_EQ(taken.data(), buffer);
    taken = u"\u7474t\u0174t"; // bytes of "t" in other characters
    EXPECT_EQ(taken.find('t'), 1u);
    EXPECT_EQ(taken.find('t', 2), 3u);
    EXPECT_EQ(taken.find('t', 99), KelpString::npos);
}

TEST(KelpString, Compares)
{
    struct Row {
        char16_t const * text;
        char const * other;
        bool ignoreCase;
        int want;
    };
    Row const rows[] = { { u"Name", "Name", false, 0 }, { u"Name", "name", false, -1 }, { u"Name", "nAME", true, 0 }, { u"Nam", "Name", true, -1 }, { u"Names", "Name", false, 1 },
        { u"", nullptr, false, 0 }, { u"a", nullptr, true, 1 }, { u"[", "{", true, -1 }, { u"\u0141", "A", true, 1 } };
    for (auto const & row : rows) {
        EXPECT_EQ(KelpString(row.text).strcmp(row.other, row.ignoreCase), row.want) << KelpString(row.text) << " with " << (row.other == nullptr ? "null" : row.other);
    }
}

TEST(KelpString, ReadsAndWritesUTF8)
{
    struct Row {
        char const * name;
        std::string_view bytes;
        char16_t const * text;
        bool wellFormed = false;
    };
    Row const rows[] = {
        { "one to four bytes", "a\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"a\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF", true },
        { "around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000", true },
        { "overlong, two and three bytes", "\xC0\xAF\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD" },
        { "overlong, four bytes", "\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD" },
        { "surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD" },
        { "past the last", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD" },
        { "never a byte", "\xFF.\xF5\x80", u"\uFFFD.\uFFFD\uFFFD" },
        { "lone tail", "a\x80z", u"a\uFFFDz" },
        { "cut off by a letter and a start", "\xE2\x82z\xE2\xC3\xA9", u"\uFFFDz\uFFFD\u00e9" },
        { "cut off by the end", "\xF0\x9F\x98", u"\uFFFD" },
    };
    for (auto const & row : rows) {
        auto const text = KelpString::fromUTF8(row.bytes);
        EXPECT_EQ(text, std::u16string(row.text)) << row.name;
        if (row.wellFormed) {
            EXPECT_EQ(text.toUTF8(), row.bytes) << row.name;
        }
    }
    std::ostringstream out;
    out << KelpString(u"x\xD83D\xDE00" + std::u16string{ 0xDE00, 0xDE00, u'y', 0xD83D });
    EXPECT_EQ(out.str(), "x\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBDy\xEF\xBF\xBD");
}

// --- numbers

std::string real_text(double value, int digits = 16, bool alwaysExponent = false)
{
    KelpString text("old");
    StringConverters::convertRealToString(value, text, 10, digits, alwaysExponent);
    return text.toUTF8();
}

TEST(StringConverters, Reals)
{
    struct Row {
        double value;
        char const * want;
        int digits = 16;
        bool alwaysExponent = false;
    };
    Row const rows[] = { { -0.0, "-0" }, { 9.2, "9.2" }, { -1234.5, "-1234.5" }, { 100000, "100000" }, { 0.1 + 0.2, "0.3" }, { 0.1 + 0.2, "0.30000000000000004", 17 },
        { 1.0 / 3, "0.3333333333333333" }, { 1e15, "1000000000000000" }, { 1e16, "1e+16" }, { 0.0001, "0.0001" }, { -0.000015, "-1.5e-05" }, { 5e-324, "5e-324" },
        { 1.7976931348623157e308, "1.797693134862316e+308" }, { 1.7976931348623157e308, "1.7976931348623157e+308", 99 }, { 9.96, "10", 2 }, { 99.6, "1e+02", 2 },
        { 123456, "1.23e+05", 3 }, { 0.5, "0.5", 0 }, { 2.5, "2.5e+00", 16, true }, { 0, "0e+00", 16, true }, { std::numeric_limits<double>::infinity(), "inf" },
        { -std::numeric_limits<double>::infinity(), "-inf", 16, true }, { std::nan(""), "nan" } };
    for (auto const & row : rows)
        EXPECT_EQ(real_text(row.value, row.digits, row.alwaysExponent), row.want) << row.digits << " digits";
}

TEST(StringConverters, WholeNumbers)
{
    struct Row {
        std::int32_t value;
        std::int32_t radix;
        char const * want;
    };
    Row const rows[] = { { 0, 10, "0" }, { kLowest, 10, "-2147483648" }, { kLowest, 2, "-10000000000000000000000000000000" }, { 255, 16, "ff" }, { 35, 36, "z" }, { 12, 1, "12" },
        { 12, 37, "12" }, { -12, -10, "-12" } };
    for (auto const & row : rows) {
        KelpString text("old");
        StringConverters::convertIntegerToString(row.value, text, row.radix);
        EXPECT_EQ(text, KelpString(row.want)) << row.value << " by " << row.radix;
    }
}

// --- format_text

TEST(FormatText, Conversions)
{
    struct Row {
        char const * format;
        std::vector<FormatArgument> arguments; // which borrow their texts
        char const * want;
    };
    Row const rows[] = {
        { "Query duration: %.3f seconds", { 1234 * 0.001 }, "Query duration: 1.234 seconds" },
        { "Query duration: %.3f seconds", { 5 * 0.001 }, "Query duration: 0.005 seconds" },
        { "%.3f %.3f %.0f %f", { 0.0005, 0.0015, 2.5, -1.5 }, "0.001 0.002 2 -1.500000" },
        { "%.1f", { 1e22 }, "10000000000000000000000.0" },
        { "%x %X %u", { -1, -17, -1 }, "ffffffff FFFFFFEF 4294967295" },
        { "%x %u", { std::int64_t{ -1 }, std::int8_t{ -1 } }, "ffffffffffffffff 255" },
        { "%d %i", { std::numeric_limits<std::int64_t>::min(), true }, "-9223372036854775808 1" },
        { "|%5d|%-5d|%05d|%-05d|%.4d|", { -42, -42, -42, -42, -42 }, "|  -42|-42  |-0042|-42  |-0042|" },
        { "|%6s|%-6s|%.2s|%s|", { u"wide", "nar", "cut off", "" }, "|  wide|nar   |cu||" },
        { "%c%3c%c", { u'x', 'y', "text" }, "x  ytext" },
        { "%ld %lld %hu", { 1, 2, 3 }, "1 2 3" },
        { "100%% %", {}, "100% %" },
        { "%d and %d", { 1 }, "1 and %d" },
        { "%q %-*d %5", { 1 }, "%q %-*d %5" },
        { "%d %s %f %.2f", { "text", 12, 3, std::nan("") }, "text 12 3 nan" },
        { "%s", { static_cast<char const *>(nullptr) }, "" },
    };
    for (auto const & row : rows)
        EXPECT_EQ(KelpString(format_text(row.format, row.arguments.data(), row.arguments.size())).toUTF8(), row.want) << row.format;
    char16_t buffer[6] = { 9, 9, 9, 9, 9, 9 };
    EXPECT_EQ(suprintf(buffer, 5, "%s-%d", "ab", 12345), 4);
    EXPECT_EQ(std::u16string(buffer, 6), std::u16string(u"ab-1\0\x09", 6));
    EXPECT_EQ(suprintf(buffer, 0, "x"), 0);
    EXPECT_EQ(buffer[0], u'a');
}

// --- log, assertions, errors

TEST(CoreLog, PassesLinesToTheSink)
{
    auto const log = support_dll::getLogObject();
    char16_t const * const inserts[] = { u"one", nullptr, u"three" };
    testing::internal::CaptureStderr();
    {
        LogLines sink;
        log->log(0xC2011000, 2, "MODULE", "Part", 3, inserts);
        EXPECT_EQ(sink.fAll, std::vector<std::string>{ "c2011000 2 MODULE/Part: one  three" });
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    log->log(1, 2, "MODULE", "Part", 1, inserts);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "MODULE Part [00000001, level 2] one\n");
}

TEST(CoreLog, KeepsLevelsOfEachSubModule)
{
    auto const log = support_dll::getLogObject();
    EXPECT_EQ(log, support_dll::getLogObject());
    auto const level = log->getModuleVerbosity("MODULE", "Levels");
    EXPECT_EQ(level->load(), 0);
    auto const work = [log, level] {
        for (int n = 0; n < 500; ++n) {
            log->getModuleVerbosity("MODULE", KelpString(std::to_string(n).c_str()));
            ++*level;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(log->getModuleVerbosity("MODULE", "Levels"), level);
    EXPECT_EQ(level->load(), 1000);
    EXPECT_EQ(log->getModuleVerbosity("OTHER", "Levels")->load(), 0);
    level->store(0);
}

TEST(AssertionFailure, CallsTheHandlerOrStops)
{
    static std::string seen;
    auto const old = support_dll::setAssertionHandler([](char const * expression, char const * file) { seen = std::string(expression) + " " + file; });
    support_dll::AssertionFailure("a > b", "file.cpp");
    EXPECT_EQ(seen, "a > b file.cpp");
    EXPECT_NE(support_dll::setAssertionHandler(nullptr), nullptr);
    EXPECT_DEATH(support_dll::AssertionFailure("a > b", "file.cpp"), "assertion failed: a > b, in file.cpp\n");
    support_dll::setAssertionHandler(old);
}

BaseError make_error(std::uint32_t code, std::initializer_list<char const *> inserts)
{
    BaseError error(code, "ODBOMODULE", BRIM_o::AnyError::SeverityError, BRIM_o::AnyError::NotCompleted);
    for (auto const insert : inserts)
        error.addInsert(insert);
    return error;
}

TEST(BaseError, WritesItsMessageAndTravelsAsACopy)
{
    struct Row {
        std::uint32_t code;
        std::initializer_list<char const *> inserts;
        char const * want;
    };
    Row const rows[] = {
        { 0x201706B, {}, "The query has no axes." },
        { 0x2017076, { "-1", "Sort::direction" }, "The value -1 is out of range for the enumeration Sort::direction." },
        { 0x2017076, { "%2", "%1" }, "The value %2 is out of range for the enumeration %1." },
        { 0x2017076, { "7" }, "The value 7 is out of range for the enumeration ." },
        { 0x2017071, { "7" }, "Error 0x02017071 of the module ODBOMODULE." },
    };
    for (auto const & row : rows)
        EXPECT_EQ(make_error(row.code, row.inserts).getText().toUTF8(), row.want);
    for (auto const code : { 0x201706Cu, 0x201706Du, 0x201706Eu, 0x201706Fu, 0x2017070u, 0x2017077u, 0x2017078u, 0x2017079u })
        EXPECT_EQ(make_error(code, {}).getText().find(u"Error 0x"), KelpString::npos) << code;

    try {
        auto const error = make_error(0x2017076, { "7", "QueryType" });
        throw error;
    } catch (BRIM_o::AnyError const & error) {
        EXPECT_EQ(error.hResult(), static_cast<std::int32_t>(0x82017076));
        EXPECT_EQ(error.numInserts(), 2);
        EXPECT_EQ(error.getInsert(1)->getText(), KelpString("QueryType"));
        EXPECT_EQ(error.getInsert(2), nullptr);
        EXPECT_EQ(error.getInsert(-1), nullptr);
        LogLines sink;
        error.log();
        EXPECT_EQ(sink.fAll, std::vector<std::string>{ "2017076 1 ODBOMODULE/: The value 7 is out of range for the enumeration QueryType." });
    }
}

}
