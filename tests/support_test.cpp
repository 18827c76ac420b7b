#include "allocations.h"
#include "fixture.h"

#include <odbomodule/host/base_error.h>
#include <odbomodule/host/core_log.h>
#include <odbomodule/host/string_converters.h>

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace {

TEST(KelpString, TakesNarrowAndWideTextsAndItsOwn)
{
    KelpString text = u"a";
    text += 'b';
    text += "\u00e9c";
    text += u"\u4e2d";
    text += u'd';
    text += text;
    text += text.c_str() + 10;
    text += static_cast<char const *>(nullptr);
    text += static_cast<char16_t const *>(nullptr);
    EXPECT_EQ(text, u"ab\u00e9c\u4e2ddab\u00e9c\u4e2dd\u4e2dd");
    EXPECT_EQ(text = text.c_str() + 12, u"\u4e2dd");
    EXPECT_EQ(text = "a longer text than fits in place", u"a longer text than fits in place");
    EXPECT_EQ(text = static_cast<char16_t const *>(nullptr), u"");
    EXPECT_EQ(text += '\xE9', u"\uFFFD");
    std::u16string base = u"of its base";
    EXPECT_EQ(text = base, base);
    EXPECT_EQ(text = static_cast<char const *>(nullptr), u"");
    EXPECT_EQ(text = std::move(base), u"of its base");
}

TEST(KelpString, FindsWholeCharacters)
{
    KelpString const text(u"\u7474\u7474\u7474t\u0174t\u0080"); // some of its other characters have the byte of a "t"
    EXPECT_EQ(text.find('t'), 3u);
    EXPECT_EQ(text.find('t', 5), 5u);
    EXPECT_EQ(text.find('t', 99), KelpString::npos);
    EXPECT_EQ(text.find('\x80'), KelpString::npos);
    EXPECT_EQ(KelpString("a\x7F").find('\x7F'), 1u);
    KelpString cut(u"abct");
    cut.resize(2);
    EXPECT_EQ(cut.find('t', 1), KelpString::npos);
}

TEST(KelpString, ComparesWithNarrowTexts)
{
    EXPECT_EQ(KelpString("Name").strcmp("Name", false), 0);
    EXPECT_EQ(KelpString("Name").strcmp("name", false), -1);
    EXPECT_EQ(KelpString("NamZ").strcmp("nAMz", true), 0);
    EXPECT_EQ(KelpString("Nam").strcmp("Name", true), -1);
    EXPECT_EQ(KelpString("Names").strcmp("Name", false), 1);
    EXPECT_EQ(KelpString("a").strcmp(nullptr, true), 1);
    EXPECT_EQ(KelpString("[").strcmp("{", true), -1);      // they differ in the bit that tells the cases of a letter
    EXPECT_EQ(KelpString(u"\u0141").strcmp("A", true), 1); // its lower byte is that of an "A"
}

TEST(KelpString, ReadsAndWritesUTF8)
{
    char const * const all = "\U00010000\U00010001a\u0080\u07FF\u0800\u4e2d\uD7FF\uE000\uFFFF\U0010FFFF"; // one to four bytes
    EXPECT_EQ(KelpString(all), u"\U00010000\U00010001a\u0080\u07FF\u0800\u4e2d\uD7FF\uE000\uFFFF\U0010FFFF");
    std::pair<std::string, std::string> const rows[] = {
        // what is read, and what toUTF8() returns then
        { all, all },
        // Overlong forms, half a surrogate pair, a code point past the last one, bytes that no sequence has
        { "\xC1\xAF.\xE0\x9F\xBF.\xF0\x8F\xBF\xBF", "\uFFFD\uFFFD.\uFFFD\uFFFD\uFFFD.\uFFFD\uFFFD\uFFFD\uFFFD" },
        { "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD" },
        { "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD" },
        { "\xFF.\xF5\x80", "\uFFFD.\uFFFD\uFFFD" },
        { "\x80", "\uFFFD" },
        // Incomplete sequences: the next byte is read by itself
        { "\xC2\x7F\xC2\xC0\xE2\x82\x7F\xE2\x82\xC0", "\uFFFD\x7F\uFFFD\uFFFD\uFFFD\x7F\uFFFD\uFFFD" },
        { "\xE2\x82z\xE2\xC3\xA9", "\uFFFDz\uFFFD\u00e9" },
        { "\xF0\x9F\x98", "\uFFFD" },
    };
    for (auto const & [bytes, want] : rows) {
        KelpString const text = KelpString::fromUTF8(bytes);
        EXPECT_EQ(text.toUTF8(), want);
        EXPECT_EQ(text.strcmp(bytes.c_str(), true), 0);
    }
    KelpString const halves(u"x\xD83D\xDE00" + std::u16string{ 0xDC00, 0xDFFF, u'y', 0xD83D, 0xE000, 0xD83D,
                                                   0xDBFF }); // lone surrogates, after a complete pair
    EXPECT_EQ((std::ostringstream() << halves).str(), "x\U0001F600\uFFFD\uFFFDy\uFFFD\uE000\uFFFD\uFFFD");
    EXPECT_EQ(KelpString::fromUTF8(std::string_view("\u00e9", 1)), u"\uFFFD");
}

TEST(FormatText, HasPrintfsConversions)
{
    char const * const noText = nullptr;
    char16_t const * const noWideText = nullptr;
    std::pair<KelpString, char const *> const rows[] = {
        { format_text("%.3f %.3f %.0f %f", 0.0005, 0.0015, 2.5, -1.5), "0.001 0.002 2 -1.500000" },
        { format_text("%f %06.1f %f", HUGE_VAL, -HUGE_VAL, -std::nan("")), "inf   -inf nan" },
        { format_text("%.1f", 1e22), "10000000000000000000000.0" },
        { format_text("%x %X %X %u", -1, -86, 26, -1), "ffffffff FFFFFFAA 1A 4294967295" },
        { format_text("%x %u", std::int64_t{ -1 }, std::int8_t{ -1 }), "ffffffffffffffff 255" },
        { format_text("%d %x", UINT64_MAX, UINT64_MAX), "18446744073709551615 ffffffffffffffff" },
        { format_text("%d %i", INT64_MIN, true), "-9223372036854775808 1" },
        { format_text("/%5d/%-5d/%05d/%-05d/%06.4d/%05.0d/", -42, -42, -42, -42, -42, -42), "/  -42/-42  /-0042/-42  / -0042/  -42/" },
        { format_text("/%10s/%-9s/%.2s/%.0s/", u"wide", "nar", "cut off", "no"), "/      wide/nar      /cu//" },
        { format_text("%s%s", noText, noWideText), "" },
        { format_text("%c%3c%c", u'x', 'y', "text"), "x  ytext" },
        { format_text("%ld %lld %hu %td", 0, 2, 3, 4), "0 2 3 4" },
        { format_text("%00-05d.%0-05d.", 7, 7), "7    .7    ." },
        { format_text("100%% %"), "100% %" },
        { format_text(nullptr), "" },
    };
    for (auto const & [text, want] : rows)
        EXPECT_EQ(text.toUTF8(), want);
    EXPECT_EQ(format_text("%.200f", 1e22).size(), 224u);
}

TEST(FormatText, WritesArgumentsInTheirOwnWayUnderAWrongConversion)
{
    EXPECT_EQ(KelpString(format_text("%.1d %s %f %.2f", "text", 12, 3, HUGE_VAL)).toUTF8(), "text 12 3 inf");
    EXPECT_EQ(KelpString(format_text("%d and %d", 1)).toUTF8(), "1 and %d");
    EXPECT_EQ(KelpString(format_text("%q %-*d %/d %:d %5", 1)).toUTF8(), "%q %-*d %/d %:d %5");
}

TEST(FormatText, IsCutToABuffer)
{
    char16_t buffer[] = u"123456";
    EXPECT_EQ(suprintf(buffer, 5, "%s-%d", "ab", 12345), 4);
    EXPECT_EQ(suprintf(buffer, 0, "x"), 0);
    EXPECT_EQ(suprintf(nullptr, 5, "x"), 0);
    EXPECT_EQ(std::u16string(buffer, 6), std::u16string(u"ab-1\0006", 6));
}

// The rows of docs/numbers.md have 16 digits; these have other counts, always an exponent, or no finite value.
TEST(StringConverters, WriteRealsOfAnyLength)
{
    auto const real_text = [](double value, int digits = 16, bool alwaysExponent = false) {
        KelpString text("old");
        StringConverters::convertRealToString(value, text, 10, digits, alwaysExponent);
        return text.toUTF8();
    };
    EXPECT_EQ(real_text(0.1 + 0.2, 17), "0.30000000000000004");
    EXPECT_EQ(real_text(1.7976931348623157e308, 99), "1.7976931348623157e+308");
    EXPECT_EQ(real_text(1e17, 99), "1e+17");
    EXPECT_EQ(real_text(1e10, 3), "1e+10");
    EXPECT_EQ(real_text(9.96, 2), "10");
    EXPECT_EQ(real_text(99.6, 2), "1e+02");
    EXPECT_EQ(real_text(123456, 3), "1.23e+05");
    EXPECT_EQ(real_text(0.56, 0), "0.6");
    EXPECT_EQ(real_text(2.5, 16, true), "2.5e+00");
    EXPECT_EQ(real_text(0, 16, true), "0e+00");
    EXPECT_EQ(real_text(HUGE_VAL), "inf");
    EXPECT_EQ(real_text(-HUGE_VAL, 16, true), "-inf");
    EXPECT_EQ(real_text(std::nan("")), "nan");
}

TEST(StringConverters, WriteWholeNumbersInAnyRadix)
{
    auto const whole_text = [](std::int32_t value, std::int32_t radix) {
        KelpString text("old");
        StringConverters::convertIntegerToString(value, text, radix);
        return text.toUTF8();
    };
    EXPECT_EQ(whole_text(0, 10), "0");
    EXPECT_EQ(whole_text(INT32_MIN, 10), "-2147483648");
    EXPECT_EQ(whole_text(INT32_MIN, 2), "-1" + std::string(31, '0'));
    EXPECT_EQ(whole_text(255, 16), "ff");
    EXPECT_EQ(whole_text(35, 36), "z");
    for (std::int32_t const radix : { 1, 37, -10 })
        EXPECT_EQ(whole_text(-12, radix), "-12");
}

TEST(CoreLog, WritesToStandardErrorByDefault)
{
    char16_t const * const inserts[] = { u"one", nullptr, u"three" };
    testing::internal::CaptureStderr();
    support_dll::getLogObject()->log(1, 2, "MODULE", "Part", 3, inserts);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "MODULE Part [00000001, level 2] one  three\n");
}

TEST(CoreLog, DropsALineThatItCannotWrite)
{
    CoreLog & log = *support_dll::getLogObject();
    char16_t const * const inserts[] = { u"a line that is longer than fits in place" };
    CoreLog::Sink const fail = [](void *, std::uint32_t, std::int32_t, KelpString const &, KelpString const &, KelpString const &) {
        throw std::runtime_error("full");
    };
    log.setSink(fail, nullptr);
    log.log(1, 2, "MODULE", "Part", 1, inserts);

    LogLines lines;
    KelpString const part("a sub-module that is not known yet");
    gFailAt = kAllocationsFail ? 1 : 0;
    log.log(1, 2, "MODULE", part, 1, inserts);
    gFailAt = kAllocationsFail ? 1 : 0;
    CoreLog::VerbosityType const * const level = log.getModuleVerbosity("MODULE", part);
    gFailAt = 0;
    EXPECT_EQ(level == nullptr, kAllocationsFail);
    EXPECT_EQ(lines.take().empty(), kAllocationsFail);
    log.log(1, 2, "MODULE", "Part", 1, inserts);
    EXPECT_EQ(lines.take(), Strings{ "1 2 MODULE/Part: a line that is longer than fits in place" });
    EXPECT_NE(log.getModuleVerbosity("MODULE", part), nullptr);
}

TEST(AssertionFailure, EndsTheProcess)
{
    EXPECT_DEATH(support_dll::AssertionFailure("a > b", "file.cpp"), "assertion failed: a > b, in file.cpp\n");
    EXPECT_DEATH(support_dll::AssertionFailure(nullptr, nullptr), "assertion failed: , in \n");
}

TEST(Assignment, HasNoEffectIfMemoryRunsOut)
{
    char const * const longText = "a text that is longer than its own room";
    BaseError other(MDX_ERR_BAD_ENUM, longText, BRIM_o::AnyError::Severity{ 3 }, BRIM_o::AnyError::Completed{ 4 });
    other.addInsert(longText);
    for (std::size_t const nth : { 1u, 2u, 3u, 4u, 5u }) {
        BaseError error = error_with(MDX_ERR_NO_AXES, {});
        KelpString text("old");
        gFailAt = nth;
        try {
            error = other;
            text = longText;
        } catch (std::bad_alloc const &) {
        }
        gFailAt = 0;
        bool const isNew = error.code() == other.code();
        EXPECT_EQ(error.numInserts(), isNew ? 1 : 0);
        EXPECT_EQ(error.module() == other.module(), isNew);
        EXPECT_EQ(error.level() == other.level() && error.status() == other.status(), isNew);
        EXPECT_NE(text, u"");
    }
}

TEST(BaseError, HasAMessageWithItsInserts)
{
    BaseError const error = error_with(MDX_ERR_BAD_ENUM, { "%2", "Sort::direction" });
    EXPECT_EQ("The value %2 is out of range for the enumeration Sort::direction.", error.getText().toUTF8());
    EXPECT_EQ("The value 7 is out of range for the enumeration .", raises(MDX_ERR_BAD_ENUM, { "7" }));
    EXPECT_EQ("Error 0x020170ab in module ODBOMODULE.", raises(0x20170AB, { "7" }));
    EXPECT_EQ(error.hResult(), static_cast<std::int32_t>(0x82017076));
    EXPECT_EQ(error.getInsert(2), nullptr);
    EXPECT_EQ(error.getInsert(-1), nullptr);
    LogLines lines;
    struct Own final : BaseError {
        using BaseError::BaseError;
        KelpString getText() const override { return "own"; }
    };
    Own(1, "HOST", error.level(), error.status()).log();
    EXPECT_EQ(lines.take(), Strings{ "1 1 HOST/: own" });
    error.log();
    EXPECT_EQ(lines.take(), Strings{ "2017076 1 ODBOMODULE/: The value %2 is out of range for the enumeration Sort::direction." });
}

}
