#include "fixture.h"

#include <cstdint>
#include <limits>

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

using Fields = std::vector<MDXField *>;
using Tuples = std::vector<MDXTuple *>;

template <class... Argument>
MDXSet * make(Argument const &... argument)
{
    return new General<MDXSet>(argument...);
}

TEST(MDXSet, Construction)
{
    std::vector<SetRow> const rows = {
        { "nothing", CALL(make()), "{  }" },
        { "text", CALL(make(KelpString(" it's { "))), " it's { " },
        { "set", CALL(make(f.other.get())), "{B}" },
        { "no fields", CALL(make(Fields())), " {  } " },
        { "fields, one of them twice", CALL(make(Fields{ f.second.get(), f.field.get(), f.second.get() })), " { [G], [F], [G] } " },
        { "tuples", CALL(make(Tuples{ f.tuple.get(), f.single.get() })), " { ( [F], [G] ) , [F] } " },
        { "level", CALL(make(&f.city)), "[Store].[Geo].[City].MEMBERS " },
        { "hierarchy", CALL(make(&f.hierarchy)), "{[Store].[Geo].allmembers}" },
    };
    for (SetRow const & row : rows) {
        Fixture f;
        Held<MDXSet> const made(row.call(f));
        EXPECT_EQ(std::get<std::string>(row.want), made->getText().toUTF8()) << row.name;
        EXPECT_EQ(1, count_of(*made)) << row.name;
        EXPECT_EQ(1, count_of(*f.other)) << row.name;
        EXPECT_EQ(1, count_of(*f.tuple)) << row.name;
    }
    Fixture f;
    expect_error({ MDX_ERR_EMPTY_TUPLE }, [&] { make(Tuples{ f.single.get(), f.empty.get() }); });
}

TEST(MDXSet, CopyAndAssignment)
{
    Fixture f;
    f.other->SetExpression("{it's}")->getQuotedText();
    f.other->use();
    Held<MDXSet> const copy(new General<MDXSet>(static_cast<General<MDXSet> const &>(*f.other)));
    f.set->getQuotedText();
    *f.set = *f.other;
    EXPECT_EQ(1, f.other->unuse());
    f.other->Empty();
    for (MDXSet * const set : { copy.get(), f.set.get() }) {
        EXPECT_EQ("{it's}", set->getText().toUTF8());
        EXPECT_EQ("{it''s}", set->getQuotedText().toUTF8());
        EXPECT_EQ(1, count_of(*set));
    }
}

TEST(MDXSet, Algebra)
{
    check_both({
        { "union with a field", CALL(*f.set += *f.field), "UNION( {A}, { [F] } )" },
        { "union with a set", CALL(*f.set += *f.other), "UNION( {A}, {B} )" },
        { "union with itself", CALL(*f.set += *f.set), "UNION( {A}, {A} )" },
        { "difference", CALL(*f.set -= *f.other), "EXCEPT( {A}, { {B} } )" },
        { "cross join", CALL(*f.set *= *f.other), "CROSSJOIN( {A}, {B} )" },
        { "non-empty cross join", CALL(f.set->nonEmptyCrossjoin(f.other.get())), "CROSSJOIN( {A}, {B} )" },
        { "intersection", CALL(f.set->Intersect(f.other.get())), "INTERSECT( {A}, {B} ) " },
        { "field, uniting", CALL(f.set->AddField(*f.field, true)), "UNION( {A}, { [F] } )" },
        { "field, listed, then braces", CALL(f.set->AddField(*f.field, false)->Delimit()), "{ {A}, [F] } " },
        { "add calculations", CALL(f.set->AddCalculations()), "ADDCALCULATEDMEMBERS( {A} ) " },
        { "distinct", CALL(f.set->SpecifyDistinct()), "DISTINCT( {A} ) " },
        { "tail", CALL(f.set->TakeTail()), "TAIL( {A} ) " },
        { "braces twice", CALL(f.set->Delimit()->Delimit()), "{ { {A} }  } " },
        { "empty", CALL(f.set->Empty()), "{  }" },
        { "name", CALL(f.set->TakeName(" [it's] ")), " [it's] " },
        { "name of a set", CALL(f.set->TakeName(f.other.get())), "{B}" },
        { "expression", CALL(f.set->SetExpression("")), "" },
        { "extract", CALL(f.set->Extract("{S}", &f.hierarchy)), " { Extract( {S}, [Store].[Geo] ) } " },
        { "nothing to remove", CALL(f.set->removeCalculationsSpecial(nullptr)), "{A}" },
    });
    check({
        { "strip, unread hierarchy", CALL(f.set->StripCalculations(nullptr, true)), "STRIPCALCULATEDMEMBERS( {A} ) " },
        { "hierarchize, unread calculations", CALL(f.set->Hierarchize(true, nullptr, true, { &f.calculation })), "HIERARCHIZE( {A} ) " },
        { "hierarchize calculations", CALL(f.set->HierarchizeCalculations(true)), "HIERARCHIZE( {A} ) " },
    });
}

TEST(MDXSet, Levels)
{
    check_both({
        { "top level", CALL(f.set->TakeTopLevel(&f.hierarchy)), " { [Store].[Geo].[Country].Members  } " },
        { "top level, null hierarchy", CALL(f.set->TakeTopLevel(nullptr)), " {  } " },
        { "top level, null level", CALL(f.hierarchy.fLevels.clear(), f.set->TakeTopLevel(&f.hierarchy)), " {  } " },
        { "whole level", CALL(f.set->TakeWholeLevel(&f.city)), "[Store].[Geo].[City].MEMBERS" },
        { "all members", CALL(f.set->TakeAllMembers(&f.hierarchy)), "[Store].[Geo].MEMBERS" },
        { "all members of a name", CALL(f.set->TakeAllMembers("[X] ")), "[X] .MEMBERS" },
        { "base level", CALL(f.set->TakeBaseLevel(&f.hierarchy, 4)), "[Store].[Geo].LEVELS( 3 ).MEMBERS" },
        { "base level, lowest", CALL(f.set->TakeBaseLevel(&f.hierarchy, kLowest)), "[Store].[Geo].LEVELS( -2147483649 ).MEMBERS" },
        { "invert", CALL(f.set->Invert(&f.hierarchy)), "EXCEPT( [Store].[Geo].MEMBERS, {A} ) " },
    });
}

TEST(MDXSet, Drilling)
{
    check_both({
        { "down, recursive", CALL(f.set->DrillDown(&f.hierarchy, "[X]", true)), "DRILLDOWNMEMBER( {A}, [Store].[Geo].MEMBERS , RECURSIVE ) " },
        { "down, null hierarchy", CALL(f.set->DrillDown(nullptr, "[X]", false)), "DRILLDOWNMEMBER( {A},  { [X] } ) " },
        { "down on a text", CALL(f.set->DrillDownOnSet("[X]")), "DRILLDOWNMEMBER( {A}, {[X]} ) " },
        { "down on a set, twice", CALL(f.set->DrillDownOnSet(f.other.get())->DrillDownOnSet(f.other.get())), "DRILLDOWNMEMBER( DRILLDOWNMEMBER( {A}, {{B}} ) , {{B}} ) " },
        { "up", CALL(f.set->DrillUp("[X]")), "DRILLUPMEMBER( {A},  { [X] } ) " },
        { "up on a text", CALL(f.set->DrillUpOnSet("[X]")), "DRILLUPMEMBER( Hierarchize( {A} ) , [X] ) " },
        { "up on itself", CALL(f.set->DrillUpOnSet(f.set.get())), "DRILLUPMEMBER( Hierarchize( {A} ) , {A} ) " },
        { "toggle", CALL(f.set->ToggleDrillStateOnSet(f.other.get(), false)), "TOGGLEDRILLSTATE( {A}, {B} ) " },
        { "toggle, recursive", CALL(f.set->ToggleDrillStateOnSet(f.other.get(), true)), "TOGGLEDRILLSTATE( {A}, {B}, RECURSIVE )" },
    });
}

MDXSet * take_ancestors(Fixture & f, bool all, std::int32_t count, std::int32_t openCount = 2)
{
    memory_cube::Hierarchy const hierarchy(&f.dimension, "H", "[H]");
    return f.set->TakeAncestorsOfSet("{S}", &hierarchy, all, count, openCount);
}

TEST(MDXSet, Ancestors)
{
    check_both({
        { "of a member, count 0", CALL(f.set->TakeAncestorsOfMember("[M]", true, 0)), " { Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
        { "of a member, lowest count", CALL(f.set->TakeAncestorsOfMember("[M]", true, kLowest)), " { Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
        { "of a member, one", CALL(f.set->TakeAncestorsOfMember("[M]", false, 2)), " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level ) } " },
        { "of a member, all", CALL(f.set->TakeAncestorsOfMember("[M]", true, 2)),
            " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level ), "
            "Ancestor( [M], {[M].Parent, [M]}.Item(0).Item(0).Level ), Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
    });
    check({
        { "of a set, to the top, all", CALL(take_ancestors(f, true, -1)), " GENERATE( {S}, ASCENDANTS( [H].CURRENTMEMBER.PARENT) )" },
        { "of a set, to the top", CALL(take_ancestors(f, false, -1)), " GENERATE( {S}, { ANCESTOR( [H].CURRENTMEMBER, [H].CURRENTMEMBER.LEVEL.ORDINAL ) } )" },
        { "of a set, below -1", CALL(take_ancestors(f, false, -2, -1)), " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "of a set, lowest count, all", CALL(take_ancestors(f, true, kLowest)), " GENERATE( {S} , {  } ) " },
        { "of a set, one", CALL(take_ancestors(f, false, 2, -1)),
            " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER.PARENT.PARENT, [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "of a set, all", CALL(take_ancestors(f, true, 2)),
            " GENERATE( {S} , { { ANCESTOR( [H].CURRENTMEMBER.PARENT, "
            "{ [H].CURRENTMEMBER.PARENT.PARENT, [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
    });
}

MDXSet * take_leaves(Fixture & f, std::vector<std::pair<BRIM_o::CalculationId, memory_cube::Calculation *>> const & calculations)
{
    f.hierarchy.fCalculations = calculations;
    return f.set->TakeLeafNodes(&f.hierarchy);
}

TEST(MDXSet, Descendants)
{
    check_both({
        { "children", CALL(f.set->TakeChildren(f.field.get())), "[F].CHILDREN " },
        { "below a field, with itself", CALL(f.set->TakeDescendants(f.field.get(), true)), "DESCENDANTS( [F], [F].LEVEL, SELF_AND_AFTER ) " },
        { "below a field", CALL(f.set->TakeDescendants(f.field.get(), false)), "DESCENDANTS( [F], [F].LEVEL, AFTER ) " },
        { "to the bottom", CALL(f.set->TakeDescendants("[M]", nullptr, true, -1, "[X]")), "DESCENDANTS( [M], [M].LEVEL, AFTER )" },
        { "leaves at the bottom", CALL(f.set->TakeDescendants("[M]", &f.hierarchy, false, -1, "[X]")), "DESCENDANTS( [M], [Store].[Geo].LEVELS.COUNT - 1, LEAVES )" },
        { "depth 0", CALL(f.set->TakeDescendants("[M]", nullptr, true, 0, "[X]")), "DESCENDANTS( [M], 0, SELF_AND_BEFORE )" },
        { "below -1", CALL(f.set->TakeDescendants("[M]", nullptr, true, -2, "")), "DESCENDANTS( [M], -2, SELF_AND_BEFORE )" },
        { "leaves, lowest", CALL(f.set->TakeDescendants("[M]", nullptr, false, kLowest, "")), "DESCENDANTS( [M], -2147483648, LEAVES )" },
    });
    check({
        { "siblings", CALL(f.set->TakeSiblings(f.field.get(), nullptr)), "[F].SIBLINGS " },
        { "of a set, to the bottom", CALL(f.set->TakeChildren(f.other.get(), &f.hierarchy, true, -1, "[X]")),
            "GENERATE( {B}, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [Store].[Geo].CURRENTMEMBER.LEVEL, AFTER ) )" },
        { "of a set, leaves at the bottom", CALL(f.set->TakeChildren(f.other.get(), &f.hierarchy, false, -1, "[X]")),
            "GENERATE( {B}, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [Store].[Geo].LEVELS.COUNT - 1, LEAVES ) )" },
        { "of a set, leaves at a depth", CALL(f.set->TakeChildren(f.other.get(), &f.hierarchy, false, 0, "[X]")),
            "GENERATE( {B}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 0, LEAVES ) ) )" },
        { "of itself, below -1", CALL(f.set->TakeChildren(f.set.get(), &f.hierarchy, true, -2, "")),
            "GENERATE( {A}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, -2, SELF_AND_BEFORE ) ) )" },
        { "leaves, null calculations alone", CALL(take_leaves(f, { { 1, nullptr }, { 2, nullptr } })),
            "GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) )" },
        { "leaves, calculations by signed keys", CALL(take_leaves(f, { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child }, { 0, nullptr }, { 9, nullptr } })),
            "UNION( GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) ), "
            "{ [Store].[Geo].[Japan].[South], [Store].[Geo].[North] } )" },
    });
}

MDXSet * take_between(Fixture & f)
{
    Held<MDXTuple> const last(f.generator->GenerateTuple());
    return f.set->TakeSubset(f.single.get(), last->AddField(f.second.get()));
}

TEST(MDXSet, Subsets)
{
    check_both({
        { "no count", CALL(f.set->TakeSubset(2, -1)), "SUBSET( {A}, 2 ) " },
        { "count below -1", CALL(f.set->TakeSubset(2, kLowest)), "SUBSET( {A}, 2 ) " },
        { "count 0", CALL(f.set->TakeSubset(2, 0)), "SUBSET( {A}, 2, 0 ) " },
        { "limits", CALL(f.set->TakeSubset(kLowest, kHighest)), "SUBSET( {A}, -2147483648, 2147483647 ) " },
        { "rank", CALL(f.set->Rank(f.field.get(), f.other.get())), "Rank([F],{B})" },
        { "rank in this", CALL(f.set->TakeRank(f.field.get())), "Rank([F],{A})" },
        { "rank in itself", CALL(f.set->Rank(f.field.get(), f.set.get())), "Rank([F],{A})" },
        { "generate", CALL(f.set->generate("{S}", "")), "Generate( {S},  ) " },
        { "between two members", CALL(take_between(f)),
            "SUBSET( {A}, IIF( RANK( [F], {A} ) < RANK( [G], {A} ), RANK([F], {A} ) - 1, RANK( [G], {A} ) - 1) , IIF( RANK ( [F], {A} ) < RANK( [G], {A} ), "
            "RANK([G], {A} ) - RANK([F], {A} ) + 1, RANK([F], {A} ) - RANK([G], {A} ) + 1 ) )" },
        { "first without a field", CALL(f.set->TakeSubset(f.empty.get(), f.single.get())), Raises{ MDX_ERR_EMPTY_TUPLE } },
        { "second without a field", CALL(f.set->TakeSubset(f.single.get(), f.empty.get())), Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
}

TEST(MDXSet, SubsetsAroundMember)
{
    check_both({
        { "behind, swapped", CALL(f.set->TakeSubset(f.single.get(), 3, 1)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 1 - 1 ), "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 3 - (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 1 - 1 ) ) " },
        { "the member", CALL(f.set->TakeSubset(f.single.get(), 0, 0)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ), "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - (RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ) ) " },
        { "ahead", CALL(f.set->TakeSubset(f.single.get(), kLowest, -1)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 ) , IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1 > 0,"
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1, 0 )  - IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 )  ) " },
        { "up to the member", CALL(f.set->TakeSubset(f.single.get(), 0, -3)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 -1, 0 ) , RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 > 0, RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 -1, 0 )  ) " },
        { "across", CALL(f.set->TakeSubset(f.single.get(), kLowest, kHighest)),
            "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 ) , RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 2147483647 - "
            "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
            "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 )  ) " },
        { "without a field", CALL(f.set->TakeSubset(f.empty.get(), 1, 2)), Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
}

KelpString gCondition = " c ";

MDXSet * take_extremity(Fixture & f, std::int32_t type, std::int32_t measure, MDXTuple const * tuple)
{
    return f.set->TakeExtremity(static_cast<MDXSet::ExtremityType>(type), static_cast<MDXSet::ExtremityMeasure>(measure), "10", tuple);
}

TEST(MDXSet, FiltersOrdersAndExtremes)
{
    check_both({
        { "filter by a value", CALL(f.set->TakeFilter(f.value.get())), "FILTER( {A}, V)" },
        { "filter by a text", CALL(f.set->TakeFilter(gCondition)), "FILTER( {A},  c )" },
        { "ascending", CALL(f.set->Order(0, f.tuple.get())), "ORDER( {A}, ( [F], [G] ) , ASC ) " },
        { "descending", CALL(f.set->Order(1, f.single.get())), "ORDER( {A}, [F], DESC ) " },
        { "breaking, both ways", CALL(f.set->Order(2, f.value.get())->Order(3, f.weight.get())), "ORDER( ORDER( {A}, V, BASC ) , W, BDESC ) " },
        { "direction 4", CALL(f.set->Order(4, f.single.get())), Raises{ MDX_ERR_BAD_ENUM, { "4", "Sort::direction" } } },
        { "lowest direction", CALL(f.set->Order(kLowest, f.value.get())), Raises{ MDX_ERR_BAD_ENUM, { "-2147483648", "Sort::direction" } } },
        { "key without a field", CALL(f.set->Order(0, f.empty.get())), Raises{ MDX_ERR_EMPTY_TUPLE } },
        { "top sum", CALL(take_extremity(f, 0, 0, f.single.get())), "TOPSUM( {A}, 10, [F] ) " },
        { "top count", CALL(take_extremity(f, 0, 1, nullptr)), "TOPCOUNT( {A}, 10 ) " },
        { "top percent", CALL(take_extremity(f, MDXSet::Top, 2, f.tuple.get())), "TOPPERCENT( {A}, 10, ( [F], [G] )  ) " },
        { "bottom sum", CALL(take_extremity(f, MDXSet::Bottom, MDXSet::Sum, f.single.get())), "BOTTOMSUM( {A}, 10, [F] ) " },
        { "bottom count, ranked", CALL(take_extremity(f, 1, MDXSet::Count, f.single.get())), "BOTTOMCOUNT( {A}, 10, [F] ) " },
        { "bottom percent", CALL(take_extremity(f, 1, MDXSet::Percent, f.single.get())), "BOTTOMPERCENT( {A}, 10, [F] ) " },
        { "bad type before the rest", CALL(take_extremity(f, 2, 3, nullptr)), Raises{ MDX_ERR_BAD_ENUM, { "2", "ExtremityType" } } },
        { "bad measure before the tuple", CALL(take_extremity(f, 1, 3, nullptr)), Raises{ MDX_ERR_BAD_ENUM, { "3", "ExtremityMeasure" } } },
        { "sum of nothing", CALL(take_extremity(f, 0, 0, nullptr)), Raises{ MDX_ERR_MISSING_TUPLE } },
        { "count without a field", CALL(take_extremity(f, 0, 1, f.empty.get())), Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
    EXPECT_EQ(" c ", gCondition.toUTF8());
}

// Says another text than it has.
struct Masked final : MDXSet {
    using MDXSet::MDXSet;
    KelpString getText() const override { return "{mask}"; }
    KelpString real() const { return fText; }

private:
    ~Masked() override = default;
};

TEST(MDXSet, AsksArgumentsForTheirTextAtOnceAndWrapsItsOwn)
{
    Fixture f;
    Held<Masked> const masked(new Masked(KelpString("{M}")));
    (*f.set += *masked)->Invert(&f.hierarchy)->DrillUpOnSet(f.other.get());
    *masked *= *masked;
    f.hierarchy.fUniqueName = "[Later]";
    f.other->Empty();
    EXPECT_EQ("DRILLUPMEMBER( Hierarchize( EXCEPT( [Store].[Geo].MEMBERS, UNION( {A}, {mask} ) )  ) , {B} ) ", f.set->getText().toUTF8());
    EXPECT_EQ("CROSSJOIN( {M}, {mask} )", masked->real().toUTF8());
}

// A host's hierarchy of which one operation, told by name, throws.
struct HostFailure {};

struct FailingCalculation final : BRIM_o::Calculation {
    BRIM_o::Hierarchy const * getHierarchy() const override { return nullptr; }
    KelpString getUniqueName() const override { throw HostFailure(); }
    KelpString getParentUniqueName() const override { return {}; }
};

struct Host final : BRIM_o::Hierarchy {
    std::string fFailing;
    KelpString fName = "[H]";
    FailingCalculation fCalculation;

    void reach(char const * operation) const { fFailing == operation ? throw HostFailure() : void(); }
    KelpString const & getName() const override { return fName; }
    KelpString const & getUniqueName() const override { return reach("name"), fName; }
    BRIM_o::Level * getLevel(std::int32_t) const override { return reach("level"), nullptr; }
    std::int32_t getLevelCount() override { return reach("level count"), 3; }
    void getCalculationIds(std::vector<BRIM_o::CalculationId> &) const override {}
    bool getCalculation(BRIM_o::CalculationId, BRIM_o::Calculation *&) const override { return false; }
    void getCalculations(std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> & all) override { reach("calculations"), all[1] = &fCalculation; }
    BRIM_o::Dimension const * getDimension() const override { return nullptr; }
};

TEST(MDXSet, TextWhenTheHostThrows)
{
    struct Row {
        char const * failing;
        MDXSet * (*call)(MDXSet &, Host &);
        char const * want;
    };
    auto const take_leaf_nodes = [](MDXSet & set, Host & host) { return set.TakeLeafNodes(&host); };
    Row const rows[] = {
        { "level", [](MDXSet & set, Host & host) { return set.TakeTopLevel(&host); }, " { " },
        { "name", [](MDXSet & set, Host & host) { return set.Extract("{S}", &host); }, " { Extract( {S}, " },
        { "name", [](MDXSet & set, Host & host) { return set.Invert(&host); }, "{A}" },
        { "name", [](MDXSet & set, Host & host) { return set.TakeDescendants("[M]", &host, false, -1, ""); }, "{A}" },
        { "name", [](MDXSet & set, Host & host) { return set.TakeAncestorsOfSet("{S}", &host, true, 1, 1); }, "{A}" },
        { "name", take_leaf_nodes, "{A}" },
        { "level count", take_leaf_nodes, "{A}" },
        { "calculations", take_leaf_nodes, "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )" },
        { "calculation's name", take_leaf_nodes, "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )" },
    };
    for (Row const & row : rows) {
        Fixture f;
        Host host;
        host.fFailing = row.failing;
        EXPECT_EQ("{A}", f.set->getQuotedText().toUTF8());
        EXPECT_THROW(row.call(*f.set, host), HostFailure) << row.want;
        EXPECT_EQ(row.want, f.set->getText().toUTF8()) << row.failing;
        EXPECT_EQ(row.want, f.set->getQuotedText().toUTF8()) << row.failing;
    }
}

}
