#include "fixture.h"

#include <odbomodule/dialect/msolap7_member_property.h>

struct OwnProperty final : MSOLAP7MemberProperty {
    using MSOLAP7MemberProperty::MSOLAP7MemberProperty;
    KelpString getPropertyUniqueName() const override { return "own"; }
};

template <class Number>
concept MakesAValue = requires(MDXQueryGenerator & generator, Number number)
{
    generator.GenerateValue(number);
};
static_assert(MakesAValue<int> && MakesAValue<char const *> && !MakesAValue<double>);

// What docs/operations.md does not show of the dialect.

TEST(MSOLAP7MemberProperty, BracketsItsName)
{
    Fixture const f(kDialect);
    RefPtr<MDXMemberProperty> const property(f.generator->GenerateMemberProperty("[D]", "Size]"));
    EXPECT_EQ("[Size]]", property->getPropertyUniqueName().toUTF8());
    EXPECT_EQ("[D].own", mdx_of(OwnProperty("[D]", "Size")));
}

TEST(MSOLAP7Field, KeepsTheSpellingOfItsGenerator)
{
    for (bool const flat : { false, true }) {
        Fixture f(flat ? kFlatDialect : kDialect);
        MDXQueryGenerator & g = *f.generator;
        memory_cube::Hierarchy const unnamed(&f.dimension, "", "[Unnamed]");
        memory_cube::Calculation const under(&unnamed, "[C]", "[P]");
        EXPECT_EQ(flat ? "[D].[]" : "[Unnamed].[]", text_of_new(g.GenerateField(&unnamed, "")));
        EXPECT_EQ(flat ? "[D].[x]" : "[Unnamed].[x]", text_of_new(g.GenerateField(&under, "x")));
        memory_cube::Calculation const homeless(nullptr, "[C]", "[P]"); // stays as the general class writes it
        EXPECT_EQ("[P].[x]", text_of_new(g.GenerateField(&homeless, "x")));
        EXPECT_EQ(flat ? 0 : 4, g.GetServerType());
        MDXField * const fields[] = { g.GenerateField("A", "B"), g.GenerateField(f.field), g.GenerateField(&f.city, "x"),
            g.GenerateField(&f.calculation, "x"), g.GenerateField(&f.dimension), g.GenerateField(&f.member), g.GenerateField("x"),
            g.GenerateField(&f.h, "x"), g.GenerateField(&f.h) };
        for (MDXField * const field : fields)
            EXPECT_EQ(flat ? "[D.N]" : "[H]", text_of_new(field->TakeParentOfCalculation(&f.child)));
    }
}

TEST(MSOLAP7Field, TakesTheParentOfACalculation)
{
    expect_operation(
        { kFlatDialect }, CALL(f.field->TakeParentOfCalculation(&f.child)), "[S].[G]]", GIVEN(f.dimension.fName = "S]"; f.h.fName = "[G]"));
    expect_operation({ kDialect }, CALL(f.field->TakeParentOfCalculation(&f.child)), "[F]", GIVEN(f.child.fHierarchy = nullptr));
}

TEST(MSOLAP7Set, WritesCalculationsInTheirOrder)
{
    expect_operation({ kDialect }, CALL(f.set->StripCalculations(&f.h, true)), "{A}");
    expect_operation({ kDialect }, CALL(f.set->StripCalculations(&f.h, true)), "EXCEPT( {A}, { [H].[North], [H].[Japan].[South] } ) ",
        GIVEN(f.h.fCalculations = { { 7, &f.calculation }, { -3, &f.child } }));
    expect_operation({ kDialect }, CALL(f.set->Hierarchize(true, &f.h, true, { &f.child, &f.calculation })),
        "UNION( HIERARCHIZE( EXCEPT( {A}, { [H].[Japan].[South] } )  ) , { [H].[Japan].[South], [H].[North] } )",
        GIVEN(f.h.fCalculations = { { 1, &f.child } }));
    expect_operation({ kDialect }, CALL(f.set->Hierarchize(true, &f.h, true, {})), "UNION( HIERARCHIZE( {A} ) , {  } )");
}

TEST(Dialect, QuotesDefinitionsAndNoNames)
{
    Fixture f(kDialect);
    RefPtr const create(static_cast<MDXCreateQuery *>(f.generator->GenerateQuery(MDXQuery::QT_CREATE, nullptr)));
    create->AddMemberFormula(f.second->ReplaceName("[G's]"), f.value, 0, {}, {});
    create->AddSetFormula("N", f.set->SetExpression("{'A'}"));
    EXPECT_EQ("CREATE MEMBER [Sales].[G's] AS ' V ' , SOLVE_ORDER = 0 SET [Sales].N AS ' {''A''} ' ", create->getText(true).toUTF8());
}

TEST(MSOLAP7SelectQuery, HasNoDrillThrough)
{
    EXPECT_FALSE(memory_cube::Maker("[Sales]").select()->SpecifyDrillThrough());
}
