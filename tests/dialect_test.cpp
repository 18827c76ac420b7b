#include "tests/fixture.h"

#include <stdexcept>

TEST(Dialect, Factories)
{
    Fixture f(kDialect);
    MDXQueryGenerator & g = *f.generator;
    EXPECT_EQ("AddCalculatedMembers([H].members)", text_of_new(g.GenerateSet(&f.h)));
    EXPECT_EQ(" { [G], [F], [G] } ", text_of_new(g.GenerateSet(std::vector{ f.second, f.field, f.second })));
    EXPECT_EQ(" {  } ", text_of_new(g.GenerateSet(std::vector<MDXField *>{})));
    EXPECT_EQ(" { ( [F], [G] ) , [F] } ", text_of_new(g.GenerateSet(std::vector{ f.tuple, f.single })));
    EXPECT_EQ(raises(MDX_ERR_EMPTY_TUPLE), error_of([&] { g.GenerateSet(std::vector{ f.single, f.empty }); }));
    EXPECT_EQ("[H].[City].MEMBERS ", text_of_new(g.GenerateSet(&f.city)));
    EXPECT_EQ(" 'x' ", text_of_new(g.GenerateSet(" 'x' ")));
    EXPECT_EQ("{A}", text_of_new(g.GenerateSet(f.set)));
    EXPECT_EQ("{  }", text_of_new(g.GenerateSet()));
    EXPECT_EQ("-2147483648", text_of_new(g.GenerateValue(INT32_MIN)));
    EXPECT_EQ(" 1 ", text_of_new(g.GenerateValue(" 1 ")));
    RefPtr<MDXMemberProperty> const property(g.GenerateMemberProperty("[D]", "Size]"));
    EXPECT_EQ("[D].[Size]]", mdx_of(*property));
    EXPECT_EQ("[Size]]", property->getPropertyUniqueName().toUTF8());
}

TEST(Dialect, FieldFactories)
{
    for (bool const flat : { false, true }) {
        Fixture f(flat ? kFlatDialect : kDialect);
        MDXQueryGenerator & g = *f.generator;
        memory_cube::Hierarchy const unnamed(&f.dimension, "", "[Unnamed]");
        memory_cube::Calculation const under(&unnamed, "[C]", "[P]");
        EXPECT_EQ("A.[x]y]", text_of_new(g.GenerateField("A", "x]y")));
        EXPECT_EQ("[F]", text_of_new(g.GenerateField(f.field)));
        EXPECT_EQ("[H].[City].[x]y]", text_of_new(g.GenerateField(&f.city, "x]y")));
        EXPECT_EQ("[Dim].DEFAULTMEMBER", text_of_new(g.GenerateField(&f.dimension)));
        EXPECT_EQ("[H].[Japan]", text_of_new(g.GenerateField(&f.member)));
        EXPECT_EQ(" 'x' ", text_of_new(g.GenerateField(" 'x' ")));
        EXPECT_EQ("[H].DEFAULTMEMBER", text_of_new(g.GenerateField(&f.h)));
        EXPECT_EQ(flat ? "[D.N].[x]]y]" : "[H].[x]]y]", text_of_new(g.GenerateField(&f.h, "x]y")));
        EXPECT_EQ(flat ? "[D].[]" : "[Unnamed].[]", text_of_new(g.GenerateField(&unnamed, "")));
        EXPECT_EQ(flat ? "[D.N].[x]y]" : "[H].[x]y]", text_of_new(g.GenerateField(&f.calculation, "x]y")));
        EXPECT_EQ(flat ? "[D.N].[x]" : "[H].[x]", text_of_new(g.GenerateField(&f.child, "x")));
        EXPECT_EQ(flat ? "[D].[x]" : "[Unnamed].[x]", text_of_new(g.GenerateField(&under, "x")));
        EXPECT_EQ(flat ? 0 : 4, g.GetServerType());
    }
}

// What a row changes about the cube comes before the comma.
TEST(Dialect, Operations)
{
    expect_operations<MDXField, kFlatDialect>({
        { CALL(f.field->TakeParentOfCalculation(&f.child)), "[D.N]" },
        { CALL(f.dimension.fName = "S]", f.h.fName = "[G]", f.field->TakeParentOfCalculation(&f.child)), "[S].[G]]" },
    });
    expect_operations<MDXField, kDialect>({
        { CALL(f.field->TakeParentOfCalculation(&f.child)), "[H]" },
        { CALL(f.child.fHierarchy = nullptr, f.field->TakeParentOfCalculation(&f.child)), "[F]" },
    });
    expect_operations<MDXValue, kDialect>({
        { CALL(f.value->TakeProperty(f.field, "cAPTION")), "[F].Name" },
        { CALL(f.value->TakeProperty(f.field, "dESCRIPTION")), "[F].Name" },
        { CALL(f.value->TakeProperty(f.field, "Captions")), "[F].Properties(\"Captions\")" },
    });
    expect_operations<MDXSet, kDialect>({
        { CALL(f.set->StripCalculations(nullptr, false)), "STRIPCALCULATEDMEMBERS( {A} ) " },
        { CALL(f.set->StripCalculations(&f.h, true)), "{A}" },
        { CALL(f.h.fCalculations = { { 7, &f.calculation }, { -3, &f.child } }, f.set->StripCalculations(&f.h, true)),
            "EXCEPT( {A}, { [H].[North], [H].[Japan].[South] } ) " },
        { CALL(f.set->Hierarchize(true, nullptr, true, { &f.child })), "HIERARCHIZE( {A} ) " },
        { CALL(f.set->Hierarchize(false, &f.h, false, { &f.child })),
            "UNION( HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) , { [H].[Japan].[South] } )" },
        { CALL(f.h.fCalculations = { { 1, &f.child } }, f.set->Hierarchize(true, &f.h, true, { &f.child, &f.calculation })),
            "UNION( HIERARCHIZE( EXCEPT( {A}, { [H].[Japan].[South] } )  ) , { [H].[Japan].[South], [H].[North] } )" },
        { CALL(f.set->Hierarchize(true, &f.h, true, {})), "UNION( HIERARCHIZE( {A} ) , {  } )" },
        { CALL(f.set->HierarchizeCalculations(true)), "{A}" },
        { CALL(f.h.fCalculations = { { 1, &f.child } }, f.set->TakeLeafNodes(&f.h)), "[H].LEVELS(2).MEMBERS " },
        { CALL(f.set->TakeAncestorsOfSet("{S}", &f.h, false, -1, 2)),
            " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER.PARENT.PARENT, [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { CALL(f.set->TakeAncestorsOfSet("{S}", &f.h, true, 1, -1)),
            " GENERATE( {S} , { { ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER.PARENT, [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
            "{ ANCESTOR( [H].CURRENTMEMBER.PARENT, { [H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
        { CALL(f.set->TakeAncestorsOfSet("{S}", &f.h, false, -1, -1)),
            " GENERATE( {S} , { ANCESTOR( [H].CURRENTMEMBER, {[H].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { CALL(f.set->TakeSiblings(f.field, nullptr)),
            "STRTOSET( IIF( [F].LEVEL.UNIQUENAME = [F].HIERARCHY.LEVELS(0).UNIQUENAME, \"[F].HIERARCHY.LEVELS(0).MEMBERS\", \"[F].PARENT.CHILDREN\" ) ) " },
        { CALL(f.set->TakeChildren(f.other, &f.h, true, -1, "[L]")),
            "GENERATE( {B}, GENERATE( [H].CURRENTMEMBER.CHILDREN, DESCENDANTS( [H].CURRENTMEMBER, [L], SELF_AND_BEFORE ) ) )" },
        { CALL(f.set->TakeChildren(f.other, &f.h, false, 3, "[L]")),
            "GENERATE( {B}, GENERATE( [H].CURRENTMEMBER.CHILDREN, DESCENDANTS( [H].CURRENTMEMBER, [L], SELF ) ) )" },
        { CALL(f.set->TakeChildren(f.other, &f.h, false, -1, "")), "GENERATE( {B}, [H].CURRENTMEMBER.CHILDREN )" },
        { CALL(f.set->TakeChildren(f.set, &f.h, true, 0, "")), "GENERATE( {A}, [H].CURRENTMEMBER.CHILDREN )+{A}" },
    });
}

// A calculation that the host cannot name any more.
struct Nameless final : BRIM_o::Calculation {
    BRIM_o::Hierarchy const * getHierarchy() const override { return nullptr; }
    KelpString getUniqueName() const override { throw std::runtime_error("host"); }
    KelpString getParentUniqueName() const override { return {}; }
};

TEST(Dialect, HierarchizeKeepsWhatItHasDone)
{
    Fixture f(kDialect);
    Nameless nameless;
    EXPECT_THROW(f.set->Hierarchize(true, &f.h, false, { &nameless }), std::runtime_error);
    EXPECT_EQ("HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) ", mdx_of(*f.set));
}

TEST(Dialect, Statements)
{
    Fixture f(kFlatDialect);
    auto const make = [&](MDXQuery::QueryType type) { return f.generator->GenerateQuery(type, nullptr); };
    RefPtr<MDXSelectQuery> const select(dynamic_cast<MDXSelectQuery *>(make(MDXQuery::QT_SELECT)));
    RefPtr<MDXCreateQuery> const create(dynamic_cast<MDXCreateQuery *>(make(MDXQuery::QT_CREATE)));
    RefPtr<MDXDropQuery> const drop(dynamic_cast<MDXDropQuery *>(make(MDXQuery::QT_DROP)));
    EXPECT_EQ(raises(33648758, "3, QueryType"), error_of([&] { make(static_cast<MDXQuery::QueryType>(3)); }));
    RefPtr<MDXValue> const value(f.makeValue("'v'"));
    f.generator = nullptr; // its objects outlive it
    f.set->SetExpression("{'A'}");
    EXPECT_FALSE(select->SpecifyDrillThrough());
    select->AddMemberFormula(f.field, value.get(), 3, { "FORMAT_STRING" }, { "'#,#'" });
    select->AddMemberFormula(f.second->ReplaceName("[G's]"), f.weight, -1, {}, {});
    select->AddSetFormula("N", f.set);
    select->AddAxisSpecification(0, f.set, {}, MDXSelectQuery::NES_NON_EMPTY);
    select->AddAxisSpecification(1, f.other, { "P", "Q" }, MDXSelectQuery::NES_ALL);
    select->AddSlicerSpecification(f.field->TakeParentOfCalculation(&f.child));
    select->AddSlicerSpecification(f.second);
    select->AddCellProperties({ "FORMATTED_VALUE" });
    EXPECT_EQ(mdx_of(*select),
        "WITH MEMBER [D.N] AS ' ''v'' ' , SOLVE_ORDER = 3, FORMAT_STRING = '#,#'  MEMBER [G's] AS ' W '    SET N AS ' {''A''} '  "
        "SELECT NON EMPTY {'A'} ON COLUMNS , {B} DIMENSION PROPERTIES P, Q ON ROWS FROM [Sales] WHERE ( [D.N], [G's] )   CELL PROPERTIES FORMATTED_VALUE");
    select->AddMemberFormula(f.field, f.value, -1, { "P" }, {});
    EXPECT_EQ(raises(MDX_ERR_PROPERTY_COUNT_MISMATCH), error_of([&] { select->getText(false); }));

    create->AddMemberFormula(f.field, value.get(), 0, {}, {});
    create->AddSetFormula("N", f.set);
    EXPECT_EQ("CREATE MEMBER [Sales].[D.N] AS ' ''v'' ' , SOLVE_ORDER = 0 SET [Sales].N AS ' {''A''} ' ", create->getText(true).toUTF8());
    drop->AddSetToDrop("S");
    EXPECT_EQ("DROP SET [Sales].S ", mdx_of(*drop));
}

TEST(Dialect, ErrorsAreCaughtAsWhatTheyAre)
{
    Fixture f;
    auto const generate = [&] { f.generator->GenerateQuery(static_cast<MDXQuery::QueryType>(3), nullptr); };
    EXPECT_THROW(generate(), BaseError);
    try {
        generate();
    } catch (BRIM_o::AnyError const & error) {
        EXPECT_EQ(KelpString("ODBOMODULE 1 2: The value 3 is out of range for the enumeration QueryType."),
            KelpString(format_text("%s %d %d: %s", error.module(), +error.level(), +error.status(), error.getText())));
    }
}
