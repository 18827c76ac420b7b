#include "fixture.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

// For rows that the dialect inherits.
void check_both(std::vector<SetRow> const & rows)
{
    check(rows);
    check(rows, true);
}

using Fields = std::vector<MDXField *>;
using Tuples = std::vector<MDXTuple *>;

template <class... Argument>
MDXSet * make(Argument const &... argument)
{
    return new General<MDXSet>(argument...);
}

// What a set is made from, and the text that it then has.
struct MakeRow {
    char const * name;
    MDXSet * (*make)(Fixture &);
    char const * want;
};

TEST(MDXSet, Construction)
{
    MakeRow const rows[] = {
        { "nothing", [](Fixture &) { return make(); }, "{  }" },
        { "text", [](Fixture &) { return make(KelpString(" it's { ")); }, " it's { " },
        { "set", [](Fixture & f) { return make(f.other.get()); }, "{B}" },
        { "no fields", [](Fixture &) { return make(Fields()); }, " {  } " },
        { "field", [](Fixture & f) { return make(Fields{ f.field.get() }); }, " { [F] } " },
        { "fields, one of them twice",
            [](Fixture & f) {
                return make(Fields{ f.second.get(), f.field.get(), f.second.get() });
            },
            " { [G], [F], [G] } " },
        { "tuples",
            [](Fixture & f) {
                return make(Tuples{ f.tuple.get(), f.single.get() });
            },
            " { ( [F], [G] ) , [F] } " },
        { "level", [](Fixture & f) { return make(&f.city); }, "[Store].[Geo].[City].MEMBERS " },
        { "hierarchy", [](Fixture & f) { return make(&f.hierarchy); }, "{[Store].[Geo].allmembers}" },
    };
    for (MakeRow const & row : rows) {
        Fixture f;
        Held<MDXSet> const made(row.make(f));
        EXPECT_EQ(row.want, made->getText().toUTF8()) << row.name;
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
    f.other->SetExpression("{it's}");
    EXPECT_EQ("{it''s}", f.other->getQuotedText().toUTF8());
    f.other->use();

    Held<MDXSet> const copy(new General<MDXSet>(static_cast<General<MDXSet> const &>(*f.other)));
    EXPECT_EQ("{it's}", copy->getText().toUTF8());
    EXPECT_EQ("{it''s}", copy->getQuotedText().toUTF8());
    EXPECT_EQ(1, count_of(*copy));

    f.set->getQuotedText();
    *f.set = *f.other;
    EXPECT_EQ("{it's}", f.set->getText().toUTF8());
    EXPECT_EQ("{it''s}", f.set->getQuotedText().toUTF8());
    EXPECT_EQ(1, count_of(*f.set));
    EXPECT_EQ(1, f.other->unuse());
    f.other->Empty();
    EXPECT_EQ("{it's}", f.set->getText().toUTF8());
}

TEST(MDXSet, Algebra)
{
    check_both({
        { "union with a field", [](Fixture & f) { return *f.set += *f.field; }, "UNION( {A}, { [F] } )" },
        { "union with a set", [](Fixture & f) { return *f.set += *f.other; }, "UNION( {A}, {B} )" },
        { "union with itself", [](Fixture & f) { return *f.set += *f.set; }, "UNION( {A}, {A} )" },
        { "difference", [](Fixture & f) { return *f.set -= *f.other; }, "EXCEPT( {A}, { {B} } )" },
        { "cross join", [](Fixture & f) { return *f.set *= *f.other; }, "CROSSJOIN( {A}, {B} )" },
        { "non-empty cross join", [](Fixture & f) { return f.set->nonEmptyCrossjoin(f.other.get()); },
            "CROSSJOIN( {A}, {B} )" },
        { "intersection", [](Fixture & f) { return f.set->Intersect(f.other.get()); }, "INTERSECT( {A}, {B} ) " },
        { "field, uniting", [](Fixture & f) { return f.set->AddField(*f.field, true); }, "UNION( {A}, { [F] } )" },
        { "field, listed", [](Fixture & f) { return f.set->AddField(*f.field, false); }, "{A}, [F]" },
        { "field listed, then braces", [](Fixture & f) { return f.set->AddField(*f.field, false)->Delimit(); },
            "{ {A}, [F] } " },
        { "add calculations", [](Fixture & f) { return f.set->AddCalculations(); },
            "ADDCALCULATEDMEMBERS( {A} ) " },
        { "distinct", [](Fixture & f) { return f.set->SpecifyDistinct(); }, "DISTINCT( {A} ) " },
        { "tail", [](Fixture & f) { return f.set->TakeTail(); }, "TAIL( {A} ) " },
        { "braces twice", [](Fixture & f) { return f.set->Delimit()->Delimit(); }, "{ { {A} }  } " },
        { "empty", [](Fixture & f) { return f.set->Empty(); }, "{  }" },
        { "name", [](Fixture & f) { return f.set->TakeName(" [it's] "); }, " [it's] " },
        { "name of a set", [](Fixture & f) { return f.set->TakeName(f.other.get()); }, "{B}" },
        { "expression", [](Fixture & f) { return f.set->SetExpression(""); }, "" },
        { "extract", [](Fixture & f) { return f.set->Extract("{S}", &f.hierarchy); },
            " { Extract( {S}, [Store].[Geo] ) } " },
        { "nothing to remove", [](Fixture & f) { return f.set->removeCalculationsSpecial(nullptr); }, "{A}" },
        { "blanks pile up",
            [](Fixture & f) { return *f.set->TakeTail()->Intersect(f.other.get())->Delimit() += *f.field; },
            "UNION( { INTERSECT( TAIL( {A} ) , {B} )  } , { [F] } )" },
    });
    check({
        { "strip, unread hierarchy", [](Fixture & f) { return f.set->StripCalculations(nullptr, true); },
            "STRIPCALCULATEDMEMBERS( {A} ) " },
        { "hierarchize", [](Fixture & f) { return f.set->Hierarchize(false, nullptr, true, {}); },
            "HIERARCHIZE( {A} ) " },
        { "hierarchize, unread calculations",
            [](Fixture & f) {
                f.hierarchy.fCalculations = { { 1, &f.child } };
                return f.set->Hierarchize(true, &f.hierarchy, true, { &f.calculation });
            },
            "HIERARCHIZE( {A} ) " },
        { "hierarchize calculations", [](Fixture & f) { return f.set->HierarchizeCalculations(true); },
            "HIERARCHIZE( {A} ) " },
    });
}

TEST(MDXSet, Levels)
{
    check_both({
        { "top level", [](Fixture & f) { return f.set->TakeTopLevel(&f.hierarchy); },
            " { [Store].[Geo].[Country].Members  } " },
        { "top level, null hierarchy", [](Fixture & f) { return f.set->TakeTopLevel(nullptr); }, " {  } " },
        { "top level, null level",
            [](Fixture & f) {
                f.hierarchy.fLevels.clear();
                return f.set->TakeTopLevel(&f.hierarchy);
            },
            " {  } " },
        { "whole level", [](Fixture & f) { return f.set->TakeWholeLevel(&f.city); },
            "[Store].[Geo].[City].MEMBERS" },
        { "all members", [](Fixture & f) { return f.set->TakeAllMembers(&f.hierarchy); }, "[Store].[Geo].MEMBERS" },
        { "all members of a name", [](Fixture & f) { return f.set->TakeAllMembers("[X] "); }, "[X] .MEMBERS" },
        { "base level", [](Fixture & f) { return f.set->TakeBaseLevel(&f.hierarchy, 4); },
            "[Store].[Geo].LEVELS( 3 ).MEMBERS" },
        { "base level 0", [](Fixture & f) { return f.set->TakeBaseLevel(&f.hierarchy, 0); },
            "[Store].[Geo].LEVELS( -1 ).MEMBERS" },
        { "base level, lowest", [](Fixture & f) { return f.set->TakeBaseLevel(&f.hierarchy, kLowest); },
            "[Store].[Geo].LEVELS( -2147483649 ).MEMBERS" },
        { "invert", [](Fixture & f) { return f.set->Invert(&f.hierarchy); },
            "EXCEPT( [Store].[Geo].MEMBERS, {A} ) " },
    });
}

TEST(MDXSet, Drilling)
{
    check_both({
        { "down, recursive", [](Fixture & f) { return f.set->DrillDown(&f.hierarchy, "[X]", true); },
            "DRILLDOWNMEMBER( {A}, [Store].[Geo].MEMBERS , RECURSIVE ) " },
        { "down, null hierarchy", [](Fixture & f) { return f.set->DrillDown(nullptr, "[X]", false); },
            "DRILLDOWNMEMBER( {A},  { [X] } ) " },
        { "down on a text", [](Fixture & f) { return f.set->DrillDownOnSet(""); }, "DRILLDOWNMEMBER( {A}, {} ) " },
        { "down on a set, twice",
            [](Fixture & f) { return f.set->DrillDownOnSet(f.other.get())->DrillDownOnSet(f.other.get()); },
            "DRILLDOWNMEMBER( DRILLDOWNMEMBER( {A}, {{B}} ) , {{B}} ) " },
        { "up", [](Fixture & f) { return f.set->DrillUp("[X]"); }, "DRILLUPMEMBER( {A},  { [X] } ) " },
        { "up on a text", [](Fixture & f) { return f.set->DrillUpOnSet("[X]"); },
            "DRILLUPMEMBER( Hierarchize( {A} ) , [X] ) " },
        { "up on a set", [](Fixture & f) { return f.set->DrillUpOnSet(f.other.get()); },
            "DRILLUPMEMBER( Hierarchize( {A} ) , {B} ) " },
        { "up on itself", [](Fixture & f) { return f.set->DrillUpOnSet(f.set.get()); },
            "DRILLUPMEMBER( Hierarchize( {A} ) , {A} ) " },
        { "toggle", [](Fixture & f) { return f.set->ToggleDrillStateOnSet(f.other.get(), false); },
            "TOGGLEDRILLSTATE( {A}, {B} ) " },
        { "toggle, recursive", [](Fixture & f) { return f.set->ToggleDrillStateOnSet(f.other.get(), true); },
            "TOGGLEDRILLSTATE( {A}, {B}, RECURSIVE )" },
    });
}

TEST(MDXSet, AncestorsOfMember)
{
    constexpr char const * itself = " { Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } ";
    check_both({
        { "count 0", [](Fixture & f) { return f.set->TakeAncestorsOfMember("[M]", true, 0); }, itself },
        { "below 0", [](Fixture & f) { return f.set->TakeAncestorsOfMember("[M]", false, -1); }, itself },
        { "lowest, all", [](Fixture & f) { return f.set->TakeAncestorsOfMember("[M]", true, kLowest); }, itself },
        { "one of them", [](Fixture & f) { return f.set->TakeAncestorsOfMember("[M]", false, 2); },
            " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level ) } " },
        { "all of them", [](Fixture & f) { return f.set->TakeAncestorsOfMember("[M]", true, 2); },
            " { Ancestor( [M], {[M].Parent.Parent, [M].Parent, [M]}.Item(0).Item(0).Level )"
            ", Ancestor( [M], {[M].Parent, [M]}.Item(0).Item(0).Level )"
            ", Ancestor( [M], {[M]}.Item(0).Item(0).Level ) } " },
    });
}

MDXSet * take_ancestors(Fixture & f, bool all, std::int32_t count, std::int32_t openCount = 2)
{
    memory_cube::Hierarchy const hierarchy(&f.dimension, "H", "[H]");
    return f.set->TakeAncestorsOfSet("{S}", &hierarchy, all, count, openCount);
}

TEST(MDXSet, AncestorsOfSet)
{
    constexpr char const * itself =
        " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) ";
    check({
        { "to the top, all", [](Fixture & f) { return take_ancestors(f, true, -1); },
            " GENERATE( {S}, ASCENDANTS( [H].CURRENTMEMBER.PARENT) )" },
        { "to the top", [](Fixture & f) { return take_ancestors(f, false, -1); },
            " GENERATE( {S}, { ANCESTOR( [H].CURRENTMEMBER, [H].CURRENTMEMBER.LEVEL.ORDINAL ) } )" },
        { "count 0", [](Fixture & f) { return take_ancestors(f, false, 0, -1); }, itself },
        { "below -1", [](Fixture & f) { return take_ancestors(f, false, -2); }, itself },
        { "lowest, all", [](Fixture & f) { return take_ancestors(f, true, kLowest); }, " GENERATE( {S} , {  } ) " },
        { "one of them", [](Fixture & f) { return take_ancestors(f, false, 2, -1); },
            " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER.PARENT.PARENT, "
            "[H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "all of them", [](Fixture & f) { return take_ancestors(f, true, 2); },
            " GENERATE( {S} , { { ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER.PARENT.PARENT, "
            "[H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }"
            ", { ANCESTOR( [H].CURRENTMEMBER.PARENT, "
            "{ [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }"
            ", { ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
    });
}

TEST(MDXSet, Descendants)
{
    check_both({
        { "children", [](Fixture & f) { return f.set->TakeChildren(f.field.get()); }, "[F].CHILDREN " },
        { "below a field, with itself", [](Fixture & f) { return f.set->TakeDescendants(f.field.get(), true); },
            "DESCENDANTS( [F], [F].LEVEL, SELF_AND_AFTER ) " },
        { "below a field", [](Fixture & f) { return f.set->TakeDescendants(f.field.get(), false); },
            "DESCENDANTS( [F], [F].LEVEL, AFTER ) " },
        { "to the bottom", [](Fixture & f) { return f.set->TakeDescendants("[M]", nullptr, true, -1, "[X]"); },
            "DESCENDANTS( [M], [M].LEVEL, AFTER )" },
        { "leaves at the bottom",
            [](Fixture & f) { return f.set->TakeDescendants("[M]", &f.hierarchy, false, -1, "[X]"); },
            "DESCENDANTS( [M], [Store].[Geo].LEVELS.COUNT - 1, LEAVES )" },
        { "depth 0", [](Fixture & f) { return f.set->TakeDescendants("[M]", nullptr, true, 0, "[X]"); },
            "DESCENDANTS( [M], 0, SELF_AND_BEFORE )" },
        { "leaves at a depth", [](Fixture & f) { return f.set->TakeDescendants("[M]", nullptr, false, 3, "[X]"); },
            "DESCENDANTS( [M], 3, LEAVES )" },
        { "below -1", [](Fixture & f) { return f.set->TakeDescendants("[M]", nullptr, true, -2, ""); },
            "DESCENDANTS( [M], -2, SELF_AND_BEFORE )" },
        { "lowest", [](Fixture & f) { return f.set->TakeDescendants("[M]", nullptr, false, kLowest, ""); },
            "DESCENDANTS( [M], -2147483648, LEAVES )" },
    });
    check({
        { "siblings", [](Fixture & f) { return f.set->TakeSiblings(f.field.get(), nullptr); }, "[F].SIBLINGS " },
        { "of a set, to the bottom",
            [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, true, -1, "[X]"); },
            "GENERATE( {B}, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, "
            "[Store].[Geo].CURRENTMEMBER.LEVEL, AFTER ) )" },
        { "of a set, leaves at the bottom",
            [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, false, -1, "[X]"); },
            "GENERATE( {B}, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, "
            "[Store].[Geo].LEVELS.COUNT - 1, LEAVES ) )" },
        { "of a set, depth 0",
            [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, true, 0, ""); },
            "GENERATE( {B}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, "
            "DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 0, SELF_AND_BEFORE ) ) )" },
        { "of a set, leaves at a depth",
            [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, false, 2, "[X]"); },
            "GENERATE( {B}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, "
            "DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) ) )" },
        { "of itself, below -1",
            [](Fixture & f) { return f.set->TakeChildren(f.set.get(), &f.hierarchy, true, -2, ""); },
            "GENERATE( {A}, GENERATE( { [Store].[Geo].CURRENTMEMBER }, "
            "DESCENDANTS( [Store].[Geo].CURRENTMEMBER, -2, SELF_AND_BEFORE ) ) )" },
    });
}

TEST(MDXSet, LeafNodes)
{
    check({
        { "no calculations", [](Fixture & f) { return f.set->TakeLeafNodes(&f.hierarchy); },
            "GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) )" },
        { "null calculations alone",
            [](Fixture & f) {
                f.hierarchy.fCalculations = { { 1, nullptr }, { 2, nullptr } };
                return f.set->TakeLeafNodes(&f.hierarchy);
            },
            "GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) )" },
        { "calculations by signed keys, nulls between",
            [](Fixture & f) {
                f.hierarchy.fCalculations = { { 7, &f.calculation }, { -3, nullptr }, { -2, &f.child },
                    { 0, nullptr }, { 9, nullptr } };
                return f.set->TakeLeafNodes(&f.hierarchy);
            },
            "UNION( GENERATE( [Store].[Geo].LEVELS(0).MEMBERS, "
            "DESCENDANTS( [Store].[Geo].CURRENTMEMBER, 2, LEAVES ) ), "
            "{ [Store].[Geo].[Japan].[South], [Store].[Geo].[North] } )" },
    });
}

TEST(MDXSet, Subsets)
{
    check_both({
        { "start and count", [](Fixture & f) { return f.set->TakeSubset(2, 5); }, "SUBSET( {A}, 2, 5 ) " },
        { "no count", [](Fixture & f) { return f.set->TakeSubset(2, -1); }, "SUBSET( {A}, 2 ) " },
        { "count below -1", [](Fixture & f) { return f.set->TakeSubset(2, kLowest); }, "SUBSET( {A}, 2 ) " },
        { "count 0", [](Fixture & f) { return f.set->TakeSubset(2, 0); }, "SUBSET( {A}, 2, 0 ) " },
        { "start below 0", [](Fixture & f) { return f.set->TakeSubset(-1, 5); }, "SUBSET( {A}, -1, 5 ) " },
        { "limits", [](Fixture & f) { return f.set->TakeSubset(kLowest, kHighest); },
            "SUBSET( {A}, -2147483648, 2147483647 ) " },
        { "rank", [](Fixture & f) { return f.set->Rank(f.field.get(), f.other.get()); }, "Rank([F],{B})" },
        { "rank in this", [](Fixture & f) { return f.set->TakeRank(f.field.get()); }, "Rank([F],{A})" },
        { "rank in itself", [](Fixture & f) { return f.set->Rank(f.field.get(), f.set.get()); }, "Rank([F],{A})" },
        { "generate", [](Fixture & f) { return f.set->generate("{S}", ""); }, "Generate( {S},  ) " },
        { "between two members",
            [](Fixture & f) {
                Held<MDXTuple> const last(f.generator->GenerateTuple());
                last->AddField(f.second.get());
                return f.set->TakeSubset(f.single.get(), last.get());
            },
            "SUBSET( {A}, IIF( RANK( [F], {A} ) < RANK( [G], {A} ), RANK([F], {A} ) - 1, RANK( [G], {A} ) - 1) , "
            "IIF( RANK ( [F], {A} ) < RANK( [G], {A} ), RANK([G], {A} ) - RANK([F], {A} ) + 1, "
            "RANK([F], {A} ) - RANK([G], {A} ) + 1 ) )" },
        { "first without a field", [](Fixture & f) { return f.set->TakeSubset(f.empty.get(), f.single.get()); },
            Raises{ MDX_ERR_EMPTY_TUPLE } },
        { "second without a field", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), f.empty.get()); },
            Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
}

TEST(MDXSet, SubsetsAroundMember)
{
    constexpr char const * behind = "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
                                    "(RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 1 - 1 ), "
                                    "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 3 - "
                                    "(RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 1 - 1 ) ) ";
    constexpr char const * ahead =
        "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
        "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
        "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 ) , "
        "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1 > 0,"
        "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 1, 0 )  - "
        "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
        "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 - 1, 0 )  ) ";
    constexpr char const * up_to = "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
                                   "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 > 0, "
                                   "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 -1, 0 ) , "
                                   "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - "
                                   "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 > 0, "
                                   "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 3 -1, 0 )  ) ";
    constexpr char const * across =
        "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
        "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
        "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 ) , "
        "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 2147483647 - "
        "IIF( RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 > 0, "
        "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) - 2147483648 -1 , 0 )  ) ";
    constexpr char const * itself = "SUBSET( ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ), "
                                    "(RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ), "
                                    "RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - "
                                    "(RANK( [F], ADDCALCULATEDMEMBERS( [F].LEVEL.MEMBERS ) ) + 0 - 1 ) ) ";
    check_both({
        { "behind", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), 1, 3); }, behind },
        { "behind, swapped", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), 3, 1); }, behind },
        { "ahead", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), kLowest, -1); }, ahead },
        { "ahead, swapped", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), -1, kLowest); }, ahead },
        { "up to the member", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), 0, -3); }, up_to },
        { "across", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), kLowest, kHighest); }, across },
        { "the member", [](Fixture & f) { return f.set->TakeSubset(f.single.get(), 0, 0); }, itself },
        { "without a field", [](Fixture & f) { return f.set->TakeSubset(f.empty.get(), 1, 2); },
            Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
}

TEST(MDXSet, FiltersAndOrders)
{
    check_both({
        { "filter by a value", [](Fixture & f) { return f.set->TakeFilter(f.value.get()); }, "FILTER( {A}, V)" },
        { "filter by a text, unchanged",
            [](Fixture & f) {
                KelpString condition(" c ");
                MDXSet * const result = f.set->TakeFilter(condition);
                EXPECT_EQ(" c ", condition.toUTF8());
                return result;
            },
            "FILTER( {A},  c )" },
        { "filter of nothing",
            [](Fixture & f) {
                KelpString condition("c");
                return f.set->SetExpression("")->TakeFilter(condition);
            },
            "FILTER( , c)" },
        { "ascending", [](Fixture & f) { return f.set->Order(0, f.tuple.get()); },
            "ORDER( {A}, ( [F], [G] ) , ASC ) " },
        { "descending", [](Fixture & f) { return f.set->Order(1, f.single.get()); }, "ORDER( {A}, [F], DESC ) " },
        { "breaking, ascending, then descending",
            [](Fixture & f) { return f.set->Order(2, f.value.get())->Order(3, f.weight.get()); },
            "ORDER( ORDER( {A}, V, BASC ) , W, BDESC ) " },
        { "direction 4", [](Fixture & f) { return f.set->Order(4, f.single.get()); },
            Raises{ MDX_ERR_BAD_ENUM, { "4", "Sort::direction" } } },
        { "direction below 0", [](Fixture & f) { return f.set->Order(kLowest, f.value.get()); },
            Raises{ MDX_ERR_BAD_ENUM, { "-2147483648", "Sort::direction" } } },
        { "key without a field", [](Fixture & f) { return f.set->Order(0, f.empty.get()); },
            Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
}

MDXSet * take_extremity(Fixture & f, std::int32_t type, std::int32_t measure, MDXTuple const * tuple)
{
    return f.set->TakeExtremity(
        static_cast<MDXSet::ExtremityType>(type), static_cast<MDXSet::ExtremityMeasure>(measure), "10", tuple);
}

TEST(MDXSet, Extremes)
{
    check_both({
        { "top sum", [](Fixture & f) { return take_extremity(f, 0, 0, f.single.get()); },
            "TOPSUM( {A}, 10, [F] ) " },
        { "top count", [](Fixture & f) { return take_extremity(f, 0, 1, nullptr); }, "TOPCOUNT( {A}, 10 ) " },
        { "top percent", [](Fixture & f) { return take_extremity(f, MDXSet::Top, 2, f.tuple.get()); },
            "TOPPERCENT( {A}, 10, ( [F], [G] )  ) " },
        { "bottom sum", [](Fixture & f) { return take_extremity(f, MDXSet::Bottom, MDXSet::Sum, f.single.get()); },
            "BOTTOMSUM( {A}, 10, [F] ) " },
        { "bottom count, ranked",
            [](Fixture & f) { return take_extremity(f, MDXSet::Bottom, MDXSet::Count, f.single.get()); },
            "BOTTOMCOUNT( {A}, 10, [F] ) " },
        { "bottom percent",
            [](Fixture & f) { return take_extremity(f, MDXSet::Bottom, MDXSet::Percent, f.single.get()); },
            "BOTTOMPERCENT( {A}, 10, [F] ) " },
        { "bad type before the rest", [](Fixture & f) { return take_extremity(f, 2, 3, nullptr); },
            Raises{ MDX_ERR_BAD_ENUM, { "2", "ExtremityType" } } },
        { "bad measure before the tuple", [](Fixture & f) { return take_extremity(f, 1, 3, nullptr); },
            Raises{ MDX_ERR_BAD_ENUM, { "3", "ExtremityMeasure" } } },
        { "measure below 0", [](Fixture & f) { return take_extremity(f, 0, kLowest, f.empty.get()); },
            Raises{ MDX_ERR_BAD_ENUM, { "-2147483648", "ExtremityMeasure" } } },
        { "sum of nothing", [](Fixture & f) { return take_extremity(f, 0, 0, nullptr); },
            Raises{ MDX_ERR_MISSING_TUPLE } },
        { "count without a field", [](Fixture & f) { return take_extremity(f, 0, 1, f.empty.get()); },
            Raises{ MDX_ERR_EMPTY_TUPLE } },
    });
}

// Says another text than it has.
struct Masked final : MDXSet {
    using MDXSet::MDXSet;
    KelpString getText() const override { return "{mask}"; }
    KelpString real() const { return fText; }

private:
    ~Masked() override = default;
};

TEST(MDXSet, AsksArgumentsForTheirTextAndWrapsItsOwn)
{
    Held<Masked> const masked(new Masked(KelpString("{M}")));
    Fixture f;
    *f.set += *masked;
    EXPECT_EQ("UNION( {A}, {mask} )", f.set->getText().toUTF8());
    *masked *= *masked;
    EXPECT_EQ("CROSSJOIN( {M}, {mask} )", masked->real().toUTF8());
}

TEST(MDXSet, KeepsNothingOfItsArguments)
{
    Fixture f;
    {
        memory_cube::Level const top("[Top]");
        memory_cube::Hierarchy host(nullptr, "", "[Brief]");
        Held<MDXSet> const brief(f.makeSet("{brief}"));
        f.set->Invert(&host)->DrillUpOnSet(brief.get());
        host.fUniqueName = "[Later]";
        brief->Empty();
        f.other->TakeWholeLevel(&top);
    }
    EXPECT_EQ(
        "DRILLUPMEMBER( Hierarchize( EXCEPT( [Brief].MEMBERS, {A} )  ) , {brief} ) ", f.set->getText().toUTF8());
    EXPECT_EQ("[Top].MEMBERS", f.other->getText().toUTF8());
}

// Host objects of which one operation, told by name, throws.
struct HostFailure {};

struct FailingCalculation final : BRIM_o::Calculation {
    BRIM_o::Hierarchy const * getHierarchy() const override { return nullptr; }
    KelpString getUniqueName() const override { throw HostFailure(); }
    KelpString getParentUniqueName() const override { return {}; }
};

struct FailingLevel final : BRIM_o::Level {
    KelpString const & getUniqueName() const override { throw HostFailure(); }
};

struct FailingHierarchy final : BRIM_o::Hierarchy {
    std::string fFailing;
    KelpString fName = "[H]";
    mutable FailingLevel fLevel;
    FailingCalculation fCalculation;

    void reach(char const * operation) const
    {
        if (fFailing == operation)
            throw HostFailure();
    }
    KelpString const & getName() const override { return fName; }
    KelpString const & getUniqueName() const override { return reach("unique name"), fName; }
    BRIM_o::Level * getLevel(std::int32_t) const override { return reach("level"), &fLevel; }
    std::int32_t getLevelCount() override { return reach("level count"), 3; }
    void getCalculationIds(std::vector<BRIM_o::CalculationId> &) const override {}
    bool getCalculation(BRIM_o::CalculationId, BRIM_o::Calculation *&) const override { return false; }
    void getCalculations(std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> & all) override
    {
        reach("calculations");
        all[1] = &fCalculation;
    }
    BRIM_o::Dimension const * getDimension() const override { return nullptr; }
};

struct FailureRow {
    char const * failing;
    void (*call)(Fixture &, FailingHierarchy &);
    char const * want;
};

void check_failures(std::vector<FailureRow> const & rows, bool dialect)
{
    for (FailureRow const & row : rows) {
        Fixture f(dialect);
        FailingHierarchy hierarchy;
        hierarchy.fFailing = row.failing;
        f.set->getQuotedText();
        EXPECT_THROW(row.call(f, hierarchy), HostFailure) << row.want;
        EXPECT_EQ(row.want, f.set->getText().toUTF8()) << row.failing;
        EXPECT_EQ(row.want, f.set->getQuotedText().toUTF8()) << row.failing;
        EXPECT_EQ(1, count_of(*f.set));
    }
}

TEST(MDXSet, TextWhenTheHostThrows)
{
    using Host = FailingHierarchy;
    std::vector<FailureRow> const inherited = {
        { "level", [](Fixture & f, Host & host) { f.set->TakeTopLevel(&host); }, " { " },
        { "level's name", [](Fixture & f, Host & host) { f.set->TakeTopLevel(&host); }, " { " },
        { "unique name", [](Fixture & f, Host & host) { f.set->Extract("{S}", &host); }, " { Extract( {S}, " },
        { "unique name", [](Fixture & f, Host & host) { f.set->Invert(&host); }, "{A}" },
        { "unique name", [](Fixture & f, Host & host) { f.set->TakeDescendants("[M]", &host, false, -1, ""); },
            "{A}" },
        { "unique name", [](Fixture & f, Host & host) { f.set->TakeAncestorsOfSet("{S}", &host, true, 1, 1); },
            "{A}" },
    };
    check_failures(inherited, false);
    check_failures(inherited, true);

    constexpr char const * leaves =
        "GENERATE( [H].LEVELS(0).MEMBERS, DESCENDANTS( [H].CURRENTMEMBER, 2, LEAVES ) )";
    auto const take_leaves = [](Fixture & f, Host & host) { f.set->TakeLeafNodes(&host); };
    check_failures(
        {
            { "unique name", take_leaves, "{A}" },
            { "level count", take_leaves, "{A}" },
            { "calculations", take_leaves, leaves },
            { "calculation's name", take_leaves, leaves },
        },
        false);
}

}
