#include "allocations.h"
#include "fixture.h"

#include "frame/concat.h"

#include <new>

template <class Work>
static std::size_t allocations_of(Work const & work)
{
    std::size_t const before = gAllocations;
    work();
    return gAllocations - before;
}

TEST(Text, PiecesAreJoinedAsTheyAre)
{
    EXPECT_EQ(KelpString(), concat("", KelpString()));
    EXPECT_EQ(KelpString("a -5, [b]"), concat("a ", decimal(-5), KelpString(", "), std::string_view("[b]")));
    EXPECT_EQ(KelpString("-2147483649-9223372036854775808"), concat(decimal(std::int64_t{ INT32_MIN } - 1), decimal(INT64_MIN)));
    EXPECT_EQ(KelpString(), join(std::vector<KelpString>(), ", "));
    EXPECT_EQ(KelpString("a, b"), join(std::vector<KelpString>{ "a", "b" }, ", "));
}

TEST(Text, RewritingKeepsTheOldTextInEachPlace)
{
    KelpString text("{A}");
    for (int round = 0; round < 40; ++round) { // with and without room in the old buffer
        KelpString const old = text;
        rewrite(text, "F( ", text, ", ", decimal(round), ")");
        EXPECT_EQ(KelpString(old.substr()), KelpString(text.substr(3, old.size())));
    }
    EXPECT_EQ("F( F( F( ", text.toUTF8().substr(0, 9));
    EXPECT_EQ(", 38), 39)", text.toUTF8().substr(text.size() - 10));

    KelpString twice("a");
    twice.reserve(100);
    rewrite(twice, twice, "-", twice);
    EXPECT_EQ(KelpString("a-a"), twice);
    rewrite(twice, "only this");
    EXPECT_EQ(KelpString("only this"), twice);
}

TEST(Text, OneAllocationForAText)
{
    Fixture f(true);
    KelpString const member("[Store].[Geography].[All Stores].[O'Brien & Sons]");
    KelpString text;
    EXPECT_EQ(1u, allocations_of([&] { text = concat("{ ", member, ", ", member, " }.ITEM(", decimal(123456789), ") ", member); }));

    // A chain of wraps finds room most of the time.
    EXPECT_GE(20u, allocations_of([&] {
        for (int i = 0; i < 1000; ++i)
            f.value->ReverseSign();
    }));

    KelpString const condition("[Measures].[Sales] > 1000");
    f.set->TakeName(KelpString("{[Store].[Geo].[Country].Members}"));
    EXPECT_EQ(kCountsLibraries ? 1u : 0u, allocations_of([&] { f.set->DrillUp(condition); }));
}

#if !defined(_WIN32) // where the libraries' allocations do not fail by gFailAt

// The old text stands after every allocation that an operation could want.
TEST(Text, AFailedAllocationLeavesTheOldText)
{
    SetRow const rows[] = {
        { "wrap", CALL(*f.set *= *f.other), "" },
        { "several places", CALL(f.set->TakeSubset(f.tuple.get(), f.single.get())), "" },
        { "chains", CALL(f.set->TakeAncestorsOfMember(KelpString("[M]"), true, 5)), "" },
        { "list", CALL(f.set->TakeFilter(f.value.get())), "" },
    };
    for (SetRow const & row : rows) {
        bool done = false;
        for (std::size_t nth = 1; !done; ++nth) {
            ASSERT_GT(100u, nth) << row.name;
            Fixture f;
            f.set->TakeName(KelpString("a set whose text is too long for a string's own room"));
            KelpString const old = f.set->getText();
            gFailAt = nth;
            try {
                row.call(f);
                done = std::exchange(gFailAt, 0u) != 0;
                EXPECT_TRUE(done && nth > 1) << row.name;
            } catch (std::bad_alloc const &) {
                EXPECT_EQ(old, f.set->getText()) << row.name;
            }
        }
    }
}

TEST(Text, AFactoryThatRunsOutOfMemoryLeavesNothingBehind)
{
    Fixture f(true);
    KelpString const text("a text that is too long for a string's own room");
    for (std::size_t nth = 1; nth < 4; ++nth) {
        gFailAt = nth;
        try {
            Held<MDXField> const field(f.generator->GenerateField(text));
        } catch (std::bad_alloc const &) {
        }
        gFailAt = 0;
    }
    gFailAt = 1;
    EXPECT_THROW(f.generator->GenerateQuery(MDXQuery::QT_DROP, nullptr), std::bad_alloc);
    gFailAt = 0;
}

#endif
