#include "fixture.h"

#include <stdexcept>

// What docs/operations.md and docs/general_classes.md do not show of sets.

namespace {

TEST(MDXSet, HasNoTopLevelOfAHierarchyWithoutLevels)
{
    Fixture f;
    f.h.fLevels.clear();
    EXPECT_EQ(" {  } ", mdx_of(*f.set->TakeTopLevel(&f.h)));
}

TEST(GeneralSet, AddsCalculationsToItsLeaves)
{
    std::string const leaves = "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )";
    Fixture f;
    f.h.fCalculations = { { 1, nullptr }, { 2, nullptr } };
    EXPECT_EQ(leaves, mdx_of(*f.set->TakeLeafNodes(&f.h)));
    f.h.fCalculations = { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child }, { 9, nullptr } };
    EXPECT_EQ("UNION( " + leaves + ", { [H].[Japan].[South], [H].[North] } )", mdx_of(*f.set->TakeLeafNodes(&f.h)));
}

// A member whose text is inserted twice is asked for it twice.
TEST(MDXSet, AsksAMemberOnceForEachPlaceInItsText)
{
    Fixture f, dialect(kDialect);
    auto const host_calls = [](std::function<void()> const & operation) {
        std::size_t count = 0;
        while (fails_at_host_call(count + 1, operation))
            ++count;
        return count;
    };
    EXPECT_EQ(2u, host_calls([&] { f.set->TakeDescendants(f.field, true); }));
    EXPECT_EQ(2u, host_calls([&] { f.set->TakeDescendants(f.field, false); }));
    EXPECT_EQ(4u, host_calls([&] { dialect.set->TakeSiblings(f.field, nullptr); }));
    EXPECT_EQ(3u, host_calls([&] { dialect.set->TakeChildren(f.other, &f.h, true, -1, ""); })); // the hierarchy once
}

TEST(MDXSet, RefusesATextLongerThanAnyCanBe)
{
    Fixture f;
    EXPECT_THROW(f.set->TakeAncestorsOfMember("[M]", false, INT32_MAX), std::length_error);
    EXPECT_EQ("{A}", mdx_of(*f.set));
}

TEST(MDXSet, KeepsNoQuotedTextFromTheMiddleOfAnOperation)
{
    Fixture f;
    gOnHostCall = [&f] { f.set->MDXSet::getQuotedText(); };
    f.set->Invert(&f.h);
    gOnHostCall = nullptr;
    EXPECT_EQ("EXCEPT( [H].MEMBERS, {A} ) ", f.set->getQuotedText().toUTF8());
}

// The operations that go by steps, and what they leave when a call of a host object throws.
TEST(MDXSet, KeepsTheStepsBeforeTheHostThrows)
{
    Fixture general, dialect(kDialect);
    auto const text_after = [](Fixture & f, std::size_t nth, std::function<void()> const & operation) {
        f.set->SetExpression("{A}");
        EXPECT_TRUE(fails_at_host_call(nth, operation));
        EXPECT_EQ(mdx_of(*f.set), f.set->getQuotedText().toUTF8());
        return mdx_of(*f.set);
    };
    auto const leaves = [&] { general.set->TakeLeafNodes(&general.h); };
    EXPECT_EQ(" { ", text_after(general, 1, [&] { general.set->TakeTopLevel(&general.h); }));
    EXPECT_EQ(" { Extract( {S}, ", text_after(general, 1, [&] { general.set->Extract("{S}", &general.h); }));
    EXPECT_EQ("{A}", text_after(general, 2, leaves));
    EXPECT_EQ("GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )", text_after(general, 3, leaves));
    EXPECT_EQ("HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) ",
        text_after(dialect, 1, [&] { dialect.set->Hierarchize(true, &dialect.h, false, { &dialect.child }); }));
}

}
