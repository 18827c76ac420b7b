#include "fixture.h"

#include <stdexcept>

// What docs/operations.md and docs/general_classes.md do not show of sets.

namespace {

TEST(MDXSet, MayBeItsOwnArgument)
{
    expect_operation(kBoth, { CALL(*f.set += *f.set), "UNION( {A}, {A} )" });
    expect_operation(kBoth, { CALL(f.set->DrillUpOnSet(f.set)), "DRILLUPMEMBER( Hierarchize( {A} ) , {A} ) " });
}

TEST(MDXSet, HasNoTopLevelOfAHierarchyWithoutLevels)
{
    expect_operation(kBoth, { CALL(f.set->TakeTopLevel(&f.h)), " {  } ", GIVEN(f.h.fLevels.clear()) });
}

TEST(GeneralSet, AddsCalculationsToItsLeaves)
{
    std::string const leaves = "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )";
    expect_operation(
        { kGeneral }, { CALL(f.set->TakeLeafNodes(&f.h)), leaves, GIVEN(f.h.fCalculations = { { 1, nullptr }, { 2, nullptr } }) });
    expect_operation(
        { kGeneral }, { CALL(f.set->TakeLeafNodes(&f.h)), "UNION( " + leaves + ", { [H].[Japan].[South], [H].[North] } )",
                          GIVEN(f.h.fCalculations = { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child }, { 9, nullptr } }) });
}

// A member that is in a text twice is asked twice.
TEST(MDXSet, AsksForEachPlaceInItsText)
{
    Fixture f, dialect(kDialect);
    auto const questions = [](std::function<void()> const & operation) {
        int count = 0;
        gAsked = [&count] { ++count; };
        operation();
        gAsked = nullptr;
        return count;
    };
    EXPECT_EQ(2, questions([&] { f.set->TakeDescendants(f.field, true); }));
    EXPECT_EQ(2, questions([&] { f.set->TakeDescendants(f.field, false); }));
    EXPECT_EQ(4, questions([&] { dialect.set->TakeSiblings(f.field, nullptr); }));
    EXPECT_EQ(3, questions([&] { dialect.set->TakeChildren(f.other, &f.h, true, -1, ""); })); // the hierarchy once
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
    struct {
        Classes classes;
        std::size_t question;
        Operation row;
    } const rows[] = {
        { kGeneral, 1, { CALL(f.set->TakeTopLevel(&f.h)), " { " } },
        { kGeneral, 1, { CALL(f.set->Extract("{S}", &f.h)), " { Extract( {S}, " } },
        { kGeneral, 2, { CALL(f.set->TakeLeafNodes(&f.h)), "{A}" } },
        { kGeneral, 3,
            { CALL(f.set->TakeLeafNodes(&f.h)), "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )" } },
        { kDialect, 1, { CALL(f.set->Hierarchize(true, &f.h, false, { &f.child })), "HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) " } },
    };
    for (auto const & [classes, question, row] : rows) {
        Fixture f(classes);
        EXPECT_TRUE(fails_at_question(question, [&] { row.call(f); })) << row.row;
        EXPECT_EQ(row.want, mdx_of(*f.set)) << row.row;
        EXPECT_EQ(row.want, f.set->getQuotedText().toUTF8()) << row.row;
    }
}

}
