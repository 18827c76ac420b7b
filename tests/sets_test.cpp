#include "fixture.h"

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST(MDXSet, CopyAndAssignment)
{
    Fixture f;
    f.other->SetExpression("{it's}")->getQuotedText();
    f.other->use();
    RefPtr<MDXSet> const copy(new General<MDXSet>(static_cast<General<MDXSet> const &>(*f.other)));
    f.set->getQuotedText();
    *f.set = *f.other;
    EXPECT_EQ(1, f.other->unuse());
    f.other->Empty();
    for (MDXSet * const set : { copy.get(), f.set }) {
        EXPECT_EQ("{it's}", mdx_of(*set));
        EXPECT_EQ("{it''s}", set->getQuotedText().toUTF8());
        EXPECT_EQ(1, count_of(*set));
    }
}

TEST(MDXSet, Algebra)
{
    check<MDXSet, kBoth>({
        { CALL(*f.set += *f.field), "UNION( {A}, { [F] } )" },
        { CALL(*f.set += *f.other), "UNION( {A}, {B} )" },
        { CALL(*f.set += *f.set), "UNION( {A}, {A} )" },
        { CALL(*f.set -= *f.other), "EXCEPT( {A}, { {B} } )" },
        { CALL(*f.set *= *f.other), "CROSSJOIN( {A}, {B} )" },
        { CALL(f.set->nonEmptyCrossjoin(f.other)), "CROSSJOIN( {A}, {B} )" },
        { CALL(f.set->Intersect(f.other)), "INTERSECT( {A}, {B} ) " },
        { CALL(f.set->AddField(*f.field, true)), "UNION( {A}, { [F] } )" },
        { CALL(f.set->AddField(*f.field, false)->Delimit()), "{ {A}, [F] } " },
        { CALL(f.set->AddCalculations()), "ADDCALCULATEDMEMBERS( {A} ) " },
        { CALL(f.set->SpecifyDistinct()), "DISTINCT( {A} ) " },
        { CALL(f.set->TakeTail()), "TAIL( {A} ) " },
        { CALL(f.set->Empty()), "{  }" },
        { CALL(f.set->TakeName(" [it's] ")), " [it's] " },
        { CALL(f.set->TakeName(f.other)), "{B}" },
        { CALL(f.set->SetExpression("")), "" },
        { CALL(f.set->Extract("{S}", &f.hierarchy)), " { Extract( {S}, [Store].[Geo] ) } " },
        { CALL(f.set->removeCalculationsSpecial(nullptr)), "{A}" },
    });
    check<MDXSet, kGeneral>({
        { CALL(f.set->StripCalculations(nullptr, true)), "STRIPCALCULATEDMEMBERS( {A} ) " },
        { CALL(f.set->Hierarchize(true, nullptr, true, { &f.calculation })), "HIERARCHIZE( {A} ) " },
        { CALL(f.set->HierarchizeCalculations(true)), "HIERARCHIZE( {A} ) " },
    });
}

TEST(MDXSet, LevelsAndDrilling)
{
    check<MDXSet, kBoth>({
        { CALL(f.set->TakeTopLevel(&f.hierarchy)), " { [Store].[Geo].[Country].Members  } " },
        { CALL(f.set->TakeTopLevel(nullptr)), " {  } " },
        { CALL(f.hierarchy.fLevels.clear(), f.set->TakeTopLevel(&f.hierarchy)), " {  } " },
        { CALL(f.set->TakeWholeLevel(&f.city)), "[Store].[Geo].[City].MEMBERS" },
        { CALL(f.set->TakeAllMembers(&f.hierarchy)), "[Store].[Geo].MEMBERS" },
        { CALL(f.set->Invert(&f.hierarchy)), "EXCEPT( [Store].[Geo].MEMBERS, {A} ) " },
        { CALL(f.set->TakeAllMembers("[X] ")), "[X] .MEMBERS" },
        { CALL(f.set->TakeBaseLevel(&f.hierarchy, 4)), "[Store].[Geo].LEVELS( 3 ).MEMBERS" },
        { CALL(f.set->TakeBaseLevel(&f.hierarchy, kLowest)), "[Store].[Geo].LEVELS( -2147483649 ).MEMBERS" },
        { CALL(f.set->DrillDown(&f.hierarchy, "[X]", true)), "DRILLDOWNMEMBER( {A}, [Store].[Geo].MEMBERS , RECURSIVE ) " },
        { CALL(f.set->DrillDown(nullptr, "[X]", false)), "DRILLDOWNMEMBER( {A},  { [X] } ) " },
        { CALL(f.set->DrillDownOnSet("[X]")), "DRILLDOWNMEMBER( {A}, {[X]} ) " },
        { CALL(f.set->DrillDownOnSet(f.other)->DrillDownOnSet(f.other)), "DRILLDOWNMEMBER( DRILLDOWNMEMBER( {A}, {{B}} ) , {{B}} ) " },
        { CALL(f.set->DrillUp("[X]")), "DRILLUPMEMBER( {A},  { [X] } ) " },
        { CALL(f.set->DrillUpOnSet("[X]")), "DRILLUPMEMBER( Hierarchize( {A} ) , [X] ) " },
        { CALL(f.set->DrillUpOnSet(f.set)), "DRILLUPMEMBER( Hierarchize( {A} ) , {A} ) " },
        { CALL(f.set->ToggleDrillStateOnSet(f.other, false)->ToggleDrillStateOnSet(f.other, true)), "TOGGLEDRILLSTATE( TOGGLEDRILLSTATE( {A}, {B} ) , {B}, RECURSIVE )" },
    });
}

MDXSet * take_ancestors(Fixture & f, bool all, std::int32_t count, std::int32_t openCount = 2)
{
    memory_cube::Hierarchy const hierarchy(&f.dimension, "H", "[H]");
    return f.set->TakeAncestorsOfSet("{S}", &hierarchy, all, count, openCount);
}

TEST(MDXSet, Ancestors)
{
    check<MDXSet, kBoth>({
        { CALL(f.set->TakeAncestorsOfMember("[M]", true, kLowest)), " { Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
        { CALL(f.set->TakeAncestorsOfMember("[M]", false, 2)), " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level ) } " },
        { CALL(f.set->TakeAncestorsOfMember("[M]", true, 2)), " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level ), "
                                                              "Ancestor( [M], {[M].Parent, [M]}.Item(0).Item(0).Level ), Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
    });
    check<MDXSet, kGeneral>({
        { CALL(take_ancestors(f, true, -1)), " GENERATE( {S}, ASCENDANTS( [H].CURRENTMEMBER.PARENT) )" },
        { CALL(take_ancestors(f, false, -1)), " GENERATE( {S}, { ANCESTOR( [H].CURRENTMEMBER, [H].CURRENTMEMBER.LEVEL.ORDINAL ) } )" },
        { CALL(take_ancestors(f, false, -2, -1)), " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { CALL(take_ancestors(f, true, kLowest)), " GENERATE( {S} , {  } ) " },
        { CALL(take_ancestors(f, false, 2, -1)),
            " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER.PARENT.PARENT, [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { CALL(take_ancestors(f, true, 2)), " GENERATE( {S} , { { ANCESTOR( [H].CURRENTMEMBER.PARENT, "
                                            "{ [H].CURRENTMEMBER.PARENT.PARENT, [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
                                            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
                                            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
    });
}

TEST(MDXSet, Descendants)
{
    check<MDXSet, kBoth>({
        { CALL(f.set->TakeChildren(f.field)), "[F].CHILDREN " },
        { CALL(f.set->TakeDescendants(f.field, true)), "DESCENDANTS( [F], [F].LEVEL, SELF_AND_AFTER ) " },
        { CALL(f.set->TakeDescendants(f.field, false)), "DESCENDANTS( [F], [F].LEVEL, AFTER ) " },
        { CALL(f.set->TakeDescendants("[M]", nullptr, true, -1, "[X]")), "DESCENDANTS( [M], [M].LEVEL, AFTER )" },
        { CALL(f.set->TakeDescendants("[M]", &f.hierarchy, false, -1, "[X]")), "DESCENDANTS( [M], [Store].[Geo].LEVELS.COUNT - 1, LEAVES )" },
        { CALL(f.set->TakeDescendants("[M]", nullptr, true, 0, "[X]")), "DESCENDANTS( [M], 0, SELF_AND_BEFORE )" },
        { CALL(f.set->TakeDescendants("[M]", nullptr, false, kLowest, "")), "DESCENDANTS( [M], -2147483648, LEAVES )" },
    });
    check<MDXSet, kGeneral>({
        { CALL(f.set->TakeSiblings(f.field, nullptr)), "[F].SIBLINGS " },
        { CALL(f.set->TakeChildren(f.other, &f.hierarchy, true, -1, "[X]")),
            "GENERATE( {B}, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [Store].[Geo].CURRENTMEMBER.LEVEL, AFTER ) )" },
        { CALL(f.set->TakeChildren(f.other, &f.hierarchy, false, -1, "[X]")),
            "GENERATE( {B}, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [Store].[Geo].LEVELS.COUNT - 1, LEAVES ) )" },
        { CALL(f.set->TakeChildren(f.other, &f.hierarchy, false, 0, "[X]")),
            "GENERATE( {B}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 0, LEAVES ) ) )" },
        { CALL(f.set->TakeChildren(f.set, &f.hierarchy, true, -2, "")),
            "GENERATE( {A}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, -2, SELF_AND_BEFORE ) ) )" },
        { CALL(f.hierarchy.fCalculations = { { 1, nullptr }, { 2, nullptr } }, f.set->TakeLeafNodes(&f.hierarchy)),
            "GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) )" },
        { CALL(f.hierarchy.fCalculations = { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child }, { 0, nullptr }, { 9, nullptr } }, f.set->TakeLeafNodes(&f.hierarchy)),
            "UNION( GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) ), "
            "{ [Store].[Geo].[Japan].[South], [Store].[Geo].[North] } )" },
    });
}

TEST(MDXSet, Subsets)
{
    check<MDXSet, kBoth>({
        { CALL(f.set->TakeSubset(2, -1)->TakeSubset(3, kLowest)->TakeSubset(4, 0)), "SUBSET( SUBSET( SUBSET( {A}, 2 ) , 3 ) , 4, 0 ) " },
        { CALL(f.set->TakeSubset(kLowest, kHighest)), "SUBSET( {A}, -2147483648, 2147483647 ) " },
        { CALL(f.set->Rank(f.field, f.other)), "Rank([F],{B})" },
        { CALL(f.set->TakeRank(f.field)->Rank(f.field, f.set)), "Rank([F],Rank([F],{A}))" },
        { CALL(f.set->generate("{S}", "")), "Generate( {S},  ) " },
        { CALL(f.set->TakeSubset(f.single, f.tuple)), "SUBSET( {A}, IIF( RANK( [F], {A} ) < RANK( ( [F], [G] ) , {A} ), RANK([F], {A} ) - 1, RANK( ( [F], [G] ) , {A} ) - 1) , "
                                                      "IIF( RANK ( [F], {A} ) < RANK( ( [F], [G] ) , {A} ), RANK(( [F], [G] ) , {A} ) - RANK([F], {A} ) + 1, "
                                                      "RANK([F], {A} ) - RANK(( [F], [G] ) , {A} ) + 1 ) )" },
        { CALL(f.set->TakeSubset(f.empty, f.single)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(f.set->TakeSubset(f.single, f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(f.set->TakeSubset(f.single, 3, 0)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ), "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 3 - (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ) ) " },
        { CALL(f.set->TakeSubset(f.single, kLowest, -1)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 ) , IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1 > 0,"
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1, 0 )  - IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 )  ) " },
        { CALL(f.set->TakeSubset(f.single, 0, -3)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 -1, 0 ) , RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 > 0, RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 -1, 0 )  ) " },
        { CALL(f.set->TakeSubset(f.single, kLowest, kHighest)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 ) , RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 2147483647 - "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 )  ) " },
        { CALL(f.set->TakeSubset(f.empty, 1, 2)), raises(MDX_ERR_EMPTY_TUPLE) },
    });
}

KelpString gCondition = " c ";

MDXSet * take_extremity(Fixture & f, std::int32_t type, std::int32_t measure, MDXTuple const * tuple)
{
    return f.set->TakeExtremity(static_cast<MDXSet::ExtremityType>(type), static_cast<MDXSet::ExtremityMeasure>(measure), "10", tuple);
}

TEST(MDXSet, FiltersOrdersAndExtremes)
{
    check<MDXSet, kBoth>({
        { CALL(f.set->TakeFilter(f.value)), "FILTER( {A}, V)" },
        { CALL(f.set->TakeFilter(gCondition)), "FILTER( {A},  c )" },
        { CALL(f.set->Order(0, f.tuple)->Order(1, f.single)), "ORDER( ORDER( {A}, ( [F], [G] ) , ASC ) , [F], DESC ) " },
        { CALL(f.set->Order(2, f.value)->Order(3, f.weight)), "ORDER( ORDER( {A}, V, BASC ) , W, BDESC ) " },
        { CALL(f.set->Order(4, f.single)), raises(MDX_ERR_BAD_ENUM, "4, Sort::direction") },
        { CALL(f.set->Order(kLowest, f.value)), raises(MDX_ERR_BAD_ENUM, "-2147483648, Sort::direction") },
        { CALL(f.set->Order(0, f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
        { CALL(take_extremity(f, 0, 0, f.single)), "TOPSUM( {A}, 10, [F] ) " },
        { CALL(take_extremity(f, 0, 1, nullptr)), "TOPCOUNT( {A}, 10 ) " },
        { CALL(take_extremity(f, MDXSet::Top, 2, f.tuple)), "TOPPERCENT( {A}, 10, ( [F], [G] )  ) " },
        { CALL(take_extremity(f, MDXSet::Bottom, MDXSet::Sum, f.single)), "BOTTOMSUM( {A}, 10, [F] ) " },
        { CALL(take_extremity(f, 1, MDXSet::Count, f.single)), "BOTTOMCOUNT( {A}, 10, [F] ) " },
        { CALL(take_extremity(f, 1, MDXSet::Percent, f.single)), "BOTTOMPERCENT( {A}, 10, [F] ) " },
        { CALL(take_extremity(f, 2, 3, nullptr)), raises(MDX_ERR_BAD_ENUM, "2, ExtremityType") },
        { CALL(take_extremity(f, 1, 3, nullptr)), raises(MDX_ERR_BAD_ENUM, "3, ExtremityMeasure") },
        { CALL(take_extremity(f, 0, 0, nullptr)), raises(MDX_ERR_MISSING_TUPLE) },
        { CALL(take_extremity(f, 0, 1, f.empty)), raises(MDX_ERR_EMPTY_TUPLE) },
    });
    EXPECT_EQ(" c ", gCondition.toUTF8());
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
    (*f.set += *masked)->Invert(&f.hierarchy)->DrillUpOnSet(f.other);
    *masked *= *masked;
    f.hierarchy.fUniqueName = "[Later]";
    f.other->Empty();
    EXPECT_EQ("DRILLUPMEMBER( Hierarchize( EXCEPT( [Store].[Geo].MEMBERS, UNION( {A}, {mask} ) )  ) , {B} ) ", mdx_of(*f.set));
    EXPECT_EQ("CROSSJOIN( {M}, {mask} )", mdx_of(*masked));
    RefPtr<MDXSelectQuery> const query(static_cast<MDXSelectQuery *>(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
    query->AddAxisSpecification(0, masked.get(), {}, MDXSelectQuery::NES_ALL);
    EXPECT_EQ("SELECT {mask} ON COLUMNS FROM [Sales] ", mdx_of(*query));
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
    EXPECT_EQ("GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )", text_after("calculations", take_leaf_nodes));
    EXPECT_EQ(" { ", text_after("level", [](MDXSet & set, auto * host) { return set.TakeTopLevel(host); }));
    EXPECT_EQ(" { Extract( {S}, ", text_after("name", [](MDXSet & set, auto * host) { return set.Extract("{S}", host); }));
    EXPECT_EQ("{A}", text_after("name", [](MDXSet & set, auto * host) { return set.TakeAncestorsOfSet("{S}", host, true, 1, 1); }));
}

}
