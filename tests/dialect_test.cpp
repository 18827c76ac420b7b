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
    EXPECT_EQ("[D].own", mdx_of(OwnProperty("[D]", "Size")));
}

TEST(MSOLAP7Field, KeepsTheSpellingOfItsGenerator)
{
    for (bool const flat : { false, true }) {
        Fixture f(flat ? kFlatDialect : kDialect);
        MDXQueryGenerator & g = *f.generator;
        memory_cube::Hierarchy const unnamed(&f.dimension, "", "[Unnamed]");
        EXPECT_EQ(flat ? "[D].[]" : "[Unnamed].[]", text_of_new(g.GenerateField(&unnamed, "")));
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
    Fixture f(kFlatDialect);
    f.dimension.fName = "S]";
    f.h.fName = "[G]";
    EXPECT_EQ("[S].[G]]", mdx_of(*f.field->TakeParentOfCalculation(&f.child)));
    f.child.fHierarchy = nullptr;
    EXPECT_EQ("[G]", mdx_of(*f.second->TakeParentOfCalculation(&f.child))) << "unchanged";
}

TEST(MSOLAP7Set, WritesCalculationsInTheirOrder)
{
    Fixture f(kDialect);
    EXPECT_EQ("{A}", mdx_of(*f.set->StripCalculations(&f.h, true))) << "the hierarchy has none";
    EXPECT_EQ("UNION( HIERARCHIZE( {A} ) , {  } )", mdx_of(*f.set->Hierarchize(true, &f.h, true, {})));
    f.h.fCalculations = { { 7, &f.calculation }, { -3, &f.child } };
    f.set->SetExpression("{A}")->StripCalculations(&f.h, true);
    EXPECT_EQ("EXCEPT( {A}, { [H].[North], [H].[Japan].[South] } ) ", mdx_of(*f.set));
    f.h.fCalculations = { { 1, &f.child } };
    EXPECT_EQ("UNION( HIERARCHIZE( EXCEPT( {B}, { [H].[Japan].[South] } )  ) , { [H].[Japan].[South], [H].[North] } )",
        mdx_of(*f.other->Hierarchize(true, &f.h, true, { &f.child, &f.calculation })));
}

TEST(MSOLAP7SelectQuery, HasNoDrillThrough)
{
    EXPECT_FALSE(memory_cube::Maker("[Sales]").select()->SpecifyDrillThrough());
}
