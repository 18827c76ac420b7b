#include "allocations.h"
#include "fixture.h"

#include "frame/concat.h"

#include <new>

static std::size_t allocations_of(std::function<void()> const & work)
{
    std::size_t const before = gAllocations;
    work();
    return gAllocations - before;
}

TEST(Text, PiecesAreJoinedAndRewrittenAsTheyAre)
{
    EXPECT_EQ(KelpString("a -5, [b]"), concat("a ", decimal(-5), KelpString(", "), std::string_view("[b]")));
    EXPECT_EQ(KelpString("-2147483649-9223372036854775808"), concat(decimal(std::int64_t{ INT32_MIN } - 1), decimal(INT64_MIN)));
    KelpString text("{A}");
    for (int round = 0; round < 40; ++round) { // with and without room in the old buffer
        KelpString const old = text;
        rewrite(text, "F( ", text, ", ", decimal(round), ")");
        EXPECT_EQ(concat("F( ", old, ", ", decimal(round), ")"), text);
    }
    rewrite(text, "only this");
    text.reserve(100);
    rewrite(text, text, "-", text);
    EXPECT_EQ(KelpString("only this-only this"), text);
}

TEST(Text, OneAllocationForAText)
{
    Fixture f(kDialect);
    KelpString const member("[Store].[Geography].[All Stores].[O'Brien & Sons]");
    KelpString text;
    EXPECT_EQ(1u, allocations_of([&] { text = concat("{ ", member, ", ", member, " }.ITEM(", decimal(123456789), ") ", member); }));
    f.set->TakeName(member);
    EXPECT_EQ(kCountsLibraries ? 1u : 0u, allocations_of([&] { f.set->DrillUp(member); }));
    // A chain of wraps finds room most of the time.
    EXPECT_GE(20u, allocations_of([&] {
        for (int i = 0; i < 1000; ++i)
            f.value->ReverseSign();
    }));
}

#if !defined(_WIN32) // where the libraries' allocations do not fail by gFailAt

// Makes each allocation that an operation could want fail in turn, until it gets all that it wants.
static void fail_each(char const * name, MDXSet * (*call)(Fixture &))
{
    for (std::size_t nth = 1; nth < 100; ++nth) {
        Fixture f;
        f.set->TakeName(KelpString("a set whose text is too long for a string's own room"));
        KelpString const old = f.set->getText();
        gFailAt = nth;
        try {
            call(f);
            EXPECT_TRUE(std::exchange(gFailAt, 0u) > 0 && nth > 1) << name;
            return;
        } catch (std::bad_alloc const &) {
            EXPECT_EQ(old, f.set->getText()) << name;
        }
    }
    ADD_FAILURE() << name << " goes on failing";
}

TEST(Text, AFailedAllocationLeavesTheOldText)
{
    fail_each(CALL(*f.set *= *f.other));
    fail_each(CALL(f.set->TakeSubset(f.tuple, f.single)));
    fail_each(CALL(f.set->TakeAncestorsOfMember(KelpString("[M]"), true, 5)));
    fail_each(CALL(f.set->TakeFilter(f.value)));
}

TEST(Text, AFactoryThatRunsOutOfMemoryLeavesNothingBehind)
{
    Fixture f(kDialect);
    KelpString const text("a text that is too long for a string's own room");
    bool made = false;
    for (std::size_t nth = 1; !made; ++nth) {
        gFailAt = nth;
        try {
            f.generator->GenerateField(text)->unuse();
            made = std::exchange(gFailAt, 0u) > 0;
        } catch (std::bad_alloc const &) {
        }
    }
}

#endif
