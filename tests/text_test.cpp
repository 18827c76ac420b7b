#include "allocations.h"
#include "fixture.h"

#include "frame/concat.h"

#include <limits>
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
    KelpString const member("[Z\u00fcrich]");
    EXPECT_EQ(KelpString(), concat());
    EXPECT_EQ(KelpString(), concat("", KelpString()));
    EXPECT_EQ(KelpString("a -5, [b]"), concat("a ", decimal(-5), KelpString(", "), std::string_view("[b]")));
    EXPECT_EQ(
        KelpString("-2147483649"), concat(decimal(std::int64_t{ std::numeric_limits<std::int32_t>::min() } - 1)));
    EXPECT_EQ(KelpString("-9223372036854775808"), concat(decimal(std::numeric_limits<std::int64_t>::min())));
    std::vector<KelpString> const none;
    std::vector<KelpString> const two{ "a", "b" };
    EXPECT_EQ(KelpString(), join(none, ", "));
    EXPECT_EQ(KelpString("a, b"), join(two, ", "));
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
    rewrite(twice, "", twice, "");
    EXPECT_EQ(KelpString("only this"), twice);
}

TEST(Text, OneAllocationForAText)
{
    KelpString const member("[Store].[Geography].[All Stores].[O'Brien & Sons]");
    KelpString text;
    EXPECT_EQ(1u, allocations_of([&] {
        text = concat(" { ", member, ".PREVMEMBER, ADDCALCULATEDMEMBERS( ", member,
            ".LEVEL.MEMBERS ).ITEM( COUNT( ADDCALCULATEDMEMBERS( ", member, ".LEVEL.MEMBERS ) ) - 1 ), ", member,
            " }.ITEM(0) ", decimal(123456789), ", ", member, ", ", member, " )");
    }));
    EXPECT_LT(400u, text.size());

    // A chain of wraps finds room most of the time.
    EXPECT_GE(20u, allocations_of([&] {
        for (int i = 0; i < 1000; ++i)
            rewrite(text, "FILTER( ", text, ", c)");
    }));

    Fixture f(true);
    KelpString const condition("[Measures].[Sales] > 1000");
    f.set->TakeName(KelpString("{[Store].[Geo].[Country].Members}"));
    EXPECT_EQ(1u, allocations_of([&] { f.set->DrillUp(condition); }));
}

// The old text stands after every allocation that an operation could want.
TEST(Text, AFailedAllocationLeavesTheOldText)
{
    SetRow const rows[] = {
        { "wrap", [](Fixture & f) { return *f.set *= *f.other; }, "" },
        { "several places", [](Fixture & f) { return f.set->TakeSubset(f.tuple.get(), f.single.get()); }, "" },
        { "chains", [](Fixture & f) { return f.set->TakeAncestorsOfMember(KelpString("[M]"), true, 5); }, "" },
        { "list", [](Fixture & f) { return f.set->TakeFilter(f.value.get()); }, "" },
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
                done = gFailAt != 0;
                gFailAt = 0;
                EXPECT_TRUE(done) << row.name;
                EXPECT_LT(1u, nth) << row.name;
            } catch (std::bad_alloc const &) {
                gFailAt = 0;
                EXPECT_EQ(old, f.set->getText()) << row.name;
            }
        }
    }
}

TEST(Text, AFactoryThatRunsOutOfMemoryLeavesNothingBehind)
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", false));
    KelpString const text("a text that is too long for a string's own room");
    for (std::size_t nth = 1; nth < 4; ++nth) {
        gFailAt = nth;
        try {
            Held<MDXField> const field(generator->GenerateField(text));
            gFailAt = 0;
        } catch (std::bad_alloc const &) {
            gFailAt = 0;
        }
    }
    gFailAt = 1;
    EXPECT_THROW(generator->GenerateQuery(MDXQuery::QT_DROP, nullptr), std::bad_alloc);
    gFailAt = 0;
}
