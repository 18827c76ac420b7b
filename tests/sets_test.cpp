#include "tests/fixture.h"

#include <stdexcept>

namespace {

TEST(MDXSet, CopyAndAssignment)
{
    Fixture f;
    f.other->SetExpression("{it's}")->getQuotedText();
    RefPtr<MDXSet> const held = hold(f.other);
    RefPtr<MDXSet> const copy(new HostText<MDXSet>(static_cast<HostText<MDXSet> const &>(*f.other)));
    f.set->getQuotedText();
    *f.set = *f.other;
    f.other->Empty();
    for (MDXSet * const set : { copy.get(), f.set }) {
        EXPECT_EQ("{it's}", mdx_of(*set));
        EXPECT_EQ("{it''s}", set->getQuotedText().toUTF8());
        EXPECT_EQ(1, count_of(*set));
    }
}

// What the reference of the operations does not show: extremes, errors, a set that is its own argument.
TEST(MDXSet, Operations)
{
    expect_operations<MDXSet, kBoth>({
        // Algebra
        { CALL(*f.set += *f.set), "UNION( {A}, {A} )" },
        { CALL(f.set->TakeName(" [it's] ")), " [it's] " },
        { CALL(f.set->SetExpression("")), "" },
        { CALL(f.set->removeCalculationsSpecial(nullptr)), "{A}" },
        // Levels and drilling
        { CALL(f.set->TakeTopLevel(&f.h)), " {  } ", GIVEN(f.h.fLevels.clear()) },
        { CALL(f.set->TakeAllMembers("[X] ")), "[X] .MEMBERS" },
        { CALL(f.set->TakeBaseLevel(&f.h, INT32_MIN)), "[H].LEVELS( -2147483649 ).MEMBERS" },
        { CALL(f.set->DrillDownOnSet(f.other)->DrillDownOnSet(f.other)), "DRILLDOWNMEMBER( DRILLDOWNMEMBER( {A}, {{B}} ) , {{B}} ) " },
        { CALL(f.set->DrillUpOnSet(f.set)), "DRILLUPMEMBER( Hierarchize( {A} ) , {A} ) " },
        // Ancestors and descendants
        { CALL(f.set->TakeAncestorsOfMember("[M]", true, INT32_MIN)), " { Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
        { CALL(f.set->TakeAncestorsOfMember("[M]", true, 2)),
            " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level ), "
            "Ancestor( [M], {[M].Parent, [M]}.Item(0).Item(0).Level ), Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
        { CALL(f.set->TakeDescendants("[M]", nullptr, true, 0, "[X]")), "DESCENDANTS( [M], 0, SELF_AND_BEFORE )" },
        { CALL(f.set->TakeDescendants("[M]", nullptr, false, INT32_MIN, "")), "DESCENDANTS( [M], -2147483648, LEAVES )" },
        // Subsets
        { CALL(f.set->TakeSubset(INT32_MIN, INT32_MIN)), "SUBSET( {A}, -2147483648 ) " },
        { CALL(f.set->TakeSubset(4, 0)), "SUBSET( {A}, 4, 0 ) " },
        { CALL(f.set->TakeSubset(f.single, f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(f.set->TakeSubset(f.single, 3, 0)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ), "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 3 - "
            "(RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ) ) " },
        { CALL(f.set->TakeSubset(f.single, INT32_MIN, -1)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 ) , "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1 > 0,"
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1, 0 )  - "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 )  ) " },
        { CALL(f.set->TakeSubset(f.single, INT32_MAX, INT32_MIN)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 ) , "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 2147483647 - "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 )  ) " },
        { CALL(f.set->TakeSubset(f.empty, 1, 2)), raises(MDX_ERR_EMPTY_TUPLE) },
        // Orders and extremes
        { CALL(f.set->Order(0, f.tuple)->Order(1, f.single)), "ORDER( ORDER( {A}, ( [F], [G] ) , ASC ) , [F], DESC ) " },
        { CALL(f.set->Order(4, f.single)), raises(MDX_ERR_BAD_ENUM, "4, Sort::direction") },
        { CALL(f.set->Order(INT32_MIN, f.value)), raises(MDX_ERR_BAD_ENUM, "-2147483648, Sort::direction") },
        { CALL(f.set->Order(0, f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(f.set->TakeExtremity(MDXSet::ExtremityType{ 2 }, MDXSet::ExtremityMeasure{ 3 }, "10", nullptr)),
            raises(MDX_ERR_BAD_ENUM, "2, ExtremityType") },
        { CALL(f.set->TakeExtremity(MDXSet::Bottom, MDXSet::ExtremityMeasure{ 3 }, "10", nullptr)),
            raises(MDX_ERR_BAD_ENUM, "3, ExtremityMeasure") },
        { CALL(f.set->TakeExtremity(MDXSet::Top, MDXSet::Sum, "10", nullptr)), raises(MDX_ERR_MISSING_TUPLE) },
        { CALL(f.set->TakeExtremity(MDXSet::Top, MDXSet::Percent, "10", nullptr)), raises(MDX_ERR_MISSING_TUPLE) },
        { CALL(f.set->TakeExtremity(MDXSet::Top, MDXSet::Count, "10", f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
    });
}

// What the dialect replaces, in more cases than the reference shows.
TEST(MDXSet, GeneralOperations)
{
    auto const with_calculations = GIVEN(f.h.fCalculations = { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child }, { 9, nullptr } });
    auto const with_null_calculations = GIVEN(f.h.fCalculations = { { 1, nullptr }, { 2, nullptr } });
    expect_operations<MDXSet, kGeneral>({
        { CALL(f.set->StripCalculations(nullptr, true)), "STRIPCALCULATEDMEMBERS( {A} ) " },
        { CALL(f.set->Hierarchize(true, nullptr, true, { &f.calculation })), "HIERARCHIZE( {A} ) " },
        { CALL(f.set->TakeAncestorsOfSet("{S}", &f.h, false, -2, -1)),
            " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { CALL(f.set->TakeAncestorsOfSet("{S}", &f.h, true, INT32_MIN, 2)), " GENERATE( {S} , {  } ) " },
        { CALL(f.set->TakeAncestorsOfSet("{S}", &f.h, true, 2, 2)),
            " GENERATE( {S} , { { ANCESTOR( [H].CURRENTMEMBER.PARENT, "
            "{ [H].CURRENTMEMBER.PARENT.PARENT, [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
        { CALL(f.set->TakeSiblings(f.field, nullptr)), "[F].SIBLINGS " },
        { CALL(f.set->TakeChildren(f.other, &f.h, false, 0, "[X]")),
            "GENERATE( {B}, GENERATE( { [H].CURRENTMEMBER }, DESCENDANTS( [H].CURRENTMEMBER, 0, LEAVES ) ) )" },
        { CALL(f.set->TakeChildren(f.set, &f.h, true, -2, "")),
            "GENERATE( {A}, GENERATE( { [H].CURRENTMEMBER }, DESCENDANTS( [H].CURRENTMEMBER, -2, SELF_AND_BEFORE ) ) )" },
        { CALL(f.set->TakeLeafNodes(&f.h)), "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )",
            with_null_calculations },
        { CALL(f.set->TakeLeafNodes(&f.h)),
            "UNION( GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) ), { [H].[Japan].[South], [H].[North] } )",
            with_calculations },
    });
}

// Says another text than it has.
struct Masked final : MDXSet {
    using MDXSet::MDXSet;
    KelpString getText() const override { return "{mask}"; }
};

TEST(MDXSet, AsksArgumentsForTheirTextAtOnceAndWrapsItsOwn)
{
    Fixture f;
    RefPtr<Masked> const masked(new Masked(KelpString("{M}")));
    (*f.set += *masked)->Invert(&f.h)->DrillUpOnSet(f.other);
    *masked *= *masked;
    f.h.fUniqueName = "[Later]";
    f.other->Empty();
    EXPECT_EQ("DRILLUPMEMBER( Hierarchize( EXCEPT( [H].MEMBERS, UNION( {A}, {mask} ) )  ) , {B} ) ", mdx_of(*f.set));
    EXPECT_EQ("CROSSJOIN( {M}, {mask} )", mdx_of(*masked));
    RefPtr<MDXSelectQuery> const query(static_cast<MDXSelectQuery *>(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
    query->AddAxisSpecification(0, masked.get(), {}, MDXSelectQuery::NES_ALL);
    EXPECT_EQ("SELECT {mask} ON COLUMNS FROM [Sales] ", mdx_of(*query));
}

// A hierarchy that asks the set for its quoted text, in the middle of the set's operation.
struct Asking final : memory_cube::Hierarchy {
    MDXSet * fSet;

    explicit Asking(MDXSet * set) : Hierarchy(nullptr, "", "[H]"), fSet(set) {}
    KelpString const & getUniqueName() const override
    {
        fSet->getQuotedText();
        return fUniqueName;
    }
};

TEST(MDXSet, KeepsNoQuotedTextFromTheMiddleOfAnOperation)
{
    Fixture f;
    Asking const host(f.set);
    f.set->Invert(&host);
    EXPECT_EQ("EXCEPT( [H].MEMBERS, {A} ) ", f.set->getQuotedText().toUTF8());
    f.set->Extract("{S}", &host);
    EXPECT_EQ(" { Extract( {S}, [H] ) } ", f.set->getQuotedText().toUTF8());
}

// A hierarchy that answers one question by an error.
struct Failing final : memory_cube::Hierarchy {
    std::string fFailing;

    explicit Failing(char const * question) : Hierarchy(nullptr, "", "[H]"), fFailing(question) {}
    void asked(char const * question) const { fFailing == question ? throw std::runtime_error("host") : void(); }
    KelpString const & getUniqueName() const override { return asked("name"), fUniqueName; }
    BRIM_o::Level * getLevel(std::int32_t) const override { return asked("level"), nullptr; }
    std::int32_t getLevelCount() override { return asked("level count"), 3; }
    void getCalculations(std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> &) override { asked("calculations"); }
};

TEST(MDXSet, TextWhenTheHostThrows)
{
    auto const text_after = [](char const * question, MDXSet * (*call)(MDXSet &, BRIM_o::Hierarchy *)) {
        Fixture f;
        Failing host(question);
        f.set->getQuotedText();
        EXPECT_THROW(call(*f.set, &host), std::runtime_error) << question;
        EXPECT_EQ(mdx_of(*f.set), f.set->getQuotedText().toUTF8()) << question;
        return mdx_of(*f.set);
    };
    auto const take_leaf_nodes = [](MDXSet & set, BRIM_o::Hierarchy * host) { return set.TakeLeafNodes(host); };
    EXPECT_EQ("{A}", text_after("name", take_leaf_nodes));
    EXPECT_EQ("{A}", text_after("level count", take_leaf_nodes));
    EXPECT_EQ(
        "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )", text_after("calculations", take_leaf_nodes));
    EXPECT_EQ(" { ", text_after("level", [](MDXSet & set, auto * host) { return set.TakeTopLevel(host); }));
    EXPECT_EQ(" { Extract( {S}, ", text_after("name", [](MDXSet & set, auto * host) { return set.Extract("{S}", host); }));
    EXPECT_EQ("{A}", text_after("name", [](MDXSet & set, auto * host) { return set.TakeAncestorsOfSet("{S}", host, true, 1, 1); }));
}

}
