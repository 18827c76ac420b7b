#include "fixture.h"

#include <stdexcept>

// What docs/operations.md and docs/general_classes.md do not show of sets.

namespace {

TEST(MDXSet, MayBeItsOwnArgument)
{
    expect_operation(kBoth, CALL(*f.set += *f.set), "UNION( {A}, {A} )");
    expect_operation(kBoth, CALL(f.set->DrillUpOnSet(f.set)), "DRILLUPMEMBER( Hierarchize( {A} ) , {A} ) ");
}

TEST(MDXSet, HasNoTopLevelOfAHierarchyWithoutLevels)
{
    expect_operation(kBoth, CALL(f.set->TakeTopLevel(&f.h)), " {  } ", GIVEN(f.h.fLevels.clear()));
}

TEST(GeneralSet, AddsCalculationsToItsLeaves)
{
    std::string const leaves = "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )";
    expect_operation({ kGeneral }, CALL(f.set->TakeLeafNodes(&f.h)), leaves, GIVEN(f.h.fCalculations = { { 1, nullptr }, { 2, nullptr } }));
    expect_operation({ kGeneral }, CALL(f.set->TakeLeafNodes(&f.h)), "UNION( " + leaves + ", { [H].[Japan].[South], [H].[North] } )",
        GIVEN(f.h.fCalculations = { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child }, { 9, nullptr } }));
}

// A member whose text is inserted twice is asked for it twice.
TEST(MDXSet, AsksForEachPlaceInItsText)
{
    Fixture f, dialect(kDialect);
    auto const questions = [](std::function<void()> const & operation) {
        std::size_t count = 0;
        while (fails_at_question(count + 1, operation))
            ++count;
        return count;
    };
    EXPECT_EQ(2u, questions([&] { f.set->TakeDescendants(f.field, true); }));
    EXPECT_EQ(2u, questions([&] { f.set->TakeDescendants(f.field, false); }));
    EXPECT_EQ(4u, questions([&] { dialect.set->TakeSiblings(f.field, nullptr); }));
    EXPECT_EQ(3u, questions([&] { dialect.set->TakeChildren(f.other, &f.h, true, -1, ""); })); // the hierarchy once
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
    gAsked = [&f] { f.set->MDXSet::getQuotedText(); };
    f.set->Invert(&f.h);
    gAsked = nullptr;
    EXPECT_EQ("EXCEPT( [H].MEMBERS, {A} ) ", f.set->getQuotedText().toUTF8());
}

// The operations that go by steps, and what they leave when the host throws at one of its questions.
TEST(MDXSet, KeepsTheStepsBeforeTheHostThrows)
{
    auto const expect_step = [](Classes classes, std::size_t question, char const * row, std::function<std::string(Fixture &)> const & call,
                                 std::string const & want) {
        Fixture f(classes);
        EXPECT_TRUE(fails_at_question(question, [&] { call(f); })) << row;
        EXPECT_EQ(want, mdx_of(*f.set)) << row;
        EXPECT_EQ(want, f.set->getQuotedText().toUTF8()) << row;
    };
    expect_step(kGeneral, 1, CALL(f.set->TakeTopLevel(&f.h)), " { ");
    expect_step(kGeneral, 1, CALL(f.set->Extract("{S}", &f.h)), " { Extract( {S}, ");
    expect_step(kGeneral, 2, CALL(f.set->TakeLeafNodes(&f.h)), "{A}");
    expect_step(
        kGeneral, 3, CALL(f.set->TakeLeafNodes(&f.h)), "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )");
    expect_step(kDialect, 1, CALL(f.set->Hierarchize(true, &f.h, false, { &f.child })), "HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) ");
}

}
