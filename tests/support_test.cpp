#include "allocations.h"
#include "fixture.h"

#include <odbomodule/host/base_error.h>
#include <odbomodule/host/core_log.h>
#include <odbomodule/host/string_converters.h>

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace {

// What the rows of docs/texts.md call.

KelpString real_text(double value, std::int32_t digits, bool alwaysExponent)
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

template <class Value>
void result(char const * row, Value const & value, char const * want)
{
    if constexpr (std::is_same_v<Value, bool>)
        EXPECT_STREQ(want, value ? "true" : "false") << row;
    else if constexpr (std::is_integral_v<Value>)
        EXPECT_EQ(want, std::to_string(value)) << row;
    else if constexpr (std::is_same_v<Value, std::string>)
        EXPECT_EQ(want, value) << row;
    else
        EXPECT_EQ(KelpString(want), KelpString(value)) << row;
}

#define WITH_NAMES(...) __VA_ARGS__

#include "documented_texts.h"

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
    std::u16string base = u"of its base";
    EXPECT_EQ(text = base, base);
    EXPECT_EQ(text = static_cast<char const *>(nullptr), u"");
    EXPECT_EQ(text = std::move(base), u"of its base");
    text.resize(5);
    EXPECT_EQ(text.find('b'), KelpString::npos) << "the rest is cut off";
    EXPECT_EQ((std::ostringstream() << text << KelpString(u"\u00fc")).str(), "of it\u00fc");
}

TEST(FormatText, IsCutToABuffer)
{
    EXPECT_EQ(format_text("%.200f", 1e22).size(), 224u);
    char16_t buffer[] = u"123456";
    EXPECT_EQ(suprintf(buffer, 5, "%s-%d", "ab", 12345), 4);
    EXPECT_EQ(suprintf(buffer, 0, "x"), 0);
    EXPECT_EQ(suprintf(nullptr, 5, "x"), 0);
    EXPECT_EQ(std::u16string(buffer, 6), std::u16string(u"ab-1\0006", 6));
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
        EXPECT_TRUE(text == "old" || text == longText);
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
