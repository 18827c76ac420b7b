#include "fixture.h"

namespace {

// Takes over an object that a factory made, and gives its text.
template <class Object>
std::string made(Object * object)
{
    Held<Object> const held(object);
    EXPECT_EQ(1, count_of(*held));
    return held->getText().toUTF8();
}

template <class Query>
Held<Query> statement(Fixture const & f, MDXQuery::QueryType type)
{
    auto * const query = dynamic_cast<Query *>(f.generator->GenerateQuery(type, nullptr));
    EXPECT_NE(nullptr, query);
    EXPECT_EQ(1, count_of(*query));
    return Held<Query>(query);
}

}

TEST(Dialect, Factories)
{
    Fixture f(true);
    MDXQueryGenerator & g = *f.generator;
    std::vector<MDXField *> const fields{ f.field.get(), f.second.get() };
    std::vector<MDXTuple *> tuples{ f.tuple.get(), f.single.get() };
    EXPECT_EQ("AddCalculatedMembers([Store].[Geo].members)", made(g.GenerateSet(&f.hierarchy)));
    EXPECT_EQ(" { [F], [G] } ", made(g.GenerateSet(fields)));
    EXPECT_EQ(" { ( [F], [G] ) , [F] } ", made(g.GenerateSet(tuples)));
    EXPECT_EQ("[Store].[Geo].[City].MEMBERS ", made(g.GenerateSet(&f.city)));
    EXPECT_EQ(" 'x' ", made(g.GenerateSet(" 'x' ")));
    EXPECT_EQ("{A}", made(g.GenerateSet(f.set.get())));
    EXPECT_EQ("{  }", made(g.GenerateSet()));
    tuples.push_back(f.empty.get());
    expect_error(Raises{ MDX_ERR_EMPTY_TUPLE }, [&] { g.GenerateSet(tuples); });
    EXPECT_EQ("0", made(g.GenerateValue(0)));
    EXPECT_EQ("-2147483648", made(g.GenerateValue(INT32_MIN)));
    EXPECT_EQ(" 1 ", made(g.GenerateValue(" 1 ")));
    Held<MDXMemberProperty> const property(g.GenerateMemberProperty("[Store]", "Size]"));
    KelpString written;
    property->writeText(written);
    EXPECT_EQ("[Store].[Size]]", written.toUTF8());
    EXPECT_EQ("[Size]]", property->getPropertyUniqueName().toUTF8());
}

TEST(Dialect, FieldFactories)
{
    for (bool const flat : { false, true }) {
        Fixture f(true, flat);
        MDXQueryGenerator & g = *f.generator;
        memory_cube::Hierarchy const unnamed(&f.dimension, "", "[Unnamed]");
        memory_cube::Calculation const under(&unnamed, "[C]", "[P]");
        EXPECT_EQ("A.[x]y]", made(g.GenerateField("A", "x]y")));
        EXPECT_EQ("[F]", made(g.GenerateField(f.field.get())));
        EXPECT_EQ("[Store].[Geo].[City].[x]y]", made(g.GenerateField(&f.city, "x]y")));
        EXPECT_EQ("[Store].DEFAULTMEMBER", made(g.GenerateField(&f.dimension)));
        EXPECT_EQ("[Store].[Geo].[Japan]", made(g.GenerateField(&f.member)));
        EXPECT_EQ(" 'x' ", made(g.GenerateField(" 'x' ")));
        EXPECT_EQ("[Store].[Geo].DEFAULTMEMBER", made(g.GenerateField(&f.hierarchy)));

        EXPECT_EQ(flat ? "[Store.Geo].[x]]y]" : "[Store].[Geo].[x]]y]", made(g.GenerateField(&f.hierarchy, "x]y")));
        EXPECT_EQ(flat ? "[Store].[]" : "[Unnamed].[]", made(g.GenerateField(&unnamed, "")));
        EXPECT_EQ(flat ? "[Store.Geo].[x]y]" : "[Store].[Geo].[x]y]", made(g.GenerateField(&f.calculation, "x]y")));
        EXPECT_EQ(flat ? "[Store.Geo].[x]" : "[Store].[Geo].[x]", made(g.GenerateField(&f.child, "x")));
        EXPECT_EQ(flat ? "[Store].[x]" : "[Unnamed].[x]", made(g.GenerateField(&under, "x")));
        EXPECT_EQ(flat ? 0 : 4, static_cast<int>(g.GetServerType()));
    }
}

TEST(Dialect, ParentOfCalculation)
{
    // What a row changes about the cube comes before the comma.
    std::vector<FieldRow> const flat = {
        { "below a member", CALL(f.field->TakeParentOfCalculation(&f.child)), "[Store.Geo]" },
        { "brackets are not doubled", CALL(f.dimension.fName = "S]", f.hierarchy.fName = "[G]", f.field->TakeParentOfCalculation(&f.child)), "[S].[G]]" },
    };
    std::vector<FieldRow> const unique = {
        { "below a member", CALL(f.field->TakeParentOfCalculation(&f.child)), "[Store].[Geo]" },
        { "no hierarchy", CALL(f.child.fHierarchy = nullptr, f.field->TakeParentOfCalculation(&f.child)), "[F]" },
    };
    check(flat, true, true);
    check(unique, true, false);
}

TEST(Dialect, Properties)
{
    std::vector<ValueRow> const rows = {
        { "caption", CALL(f.value->TakeProperty(f.field.get(), "Caption")), "[F].Name" },
        { "description", CALL(f.value->TakeProperty(f.field.get(), "dESCRIPTION")), "[F].Name" },
        { "other", CALL(f.value->TakeProperty(f.field.get(), "Captions")), "[F].Properties(\"Captions\")" },
    };
    check(rows, true);
}

TEST(Dialect, Sets)
{
    std::vector<SetRow> const rows = {
        { "strip", CALL(f.set->StripCalculations(nullptr, false)), "STRIPCALCULATEDMEMBERS( {A} ) " },
        { "strip none by name", CALL(f.set->StripCalculations(&f.hierarchy, true)), "{A}" },
        { "strip by name, in the host's order", CALL(f.hierarchy.fCalculations = { { 7, &f.calculation }, { -3, &f.child } }, f.set->StripCalculations(&f.hierarchy, true)),
            "EXCEPT( {A}, { [Store].[Geo].[North], [Store].[Geo].[Japan].[South] } ) " },
        { "hierarchize without a hierarchy", CALL(f.set->Hierarchize(true, nullptr, true, { &f.child })), "HIERARCHIZE( {A} ) " },
        { "hierarchize, post", CALL(f.set->Hierarchize(false, &f.hierarchy, false, { &f.child })),
            "UNION( HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) , { [Store].[Geo].[Japan].[South] } )" },
        { "hierarchize by name", CALL(f.hierarchy.fCalculations = { { 1, &f.child } }, f.set->Hierarchize(true, &f.hierarchy, true, { &f.child, &f.calculation })),
            "UNION( HIERARCHIZE( EXCEPT( {A}, { [Store].[Geo].[Japan].[South] } )  ) , { [Store].[Geo].[Japan].[South], [Store].[Geo].[North] } )" },
        { "hierarchize with nothing to put back", CALL(f.set->Hierarchize(true, &f.hierarchy, true, {})), "UNION( HIERARCHIZE( {A} ) , {  } )" },
        { "hierarchize calculations", CALL(f.set->HierarchizeCalculations(true)), "{A}" },
        { "leaves beside a calculation", CALL(f.hierarchy.fCalculations = { { 1, &f.child } }, f.set->TakeLeafNodes(&f.hierarchy)), "[Store].[Geo].LEVELS(2).MEMBERS " },
        { "ancestors, open count", CALL(f.set->TakeAncestorsOfSet("{S}", &f.hierarchy, false, -1, 2)),
            " GENERATE( {S} , { ANCESTOR( [Store].[Geo].CURRENTMEMBER, {[Store].[Geo].CURRENTMEMBER.PARENT.PARENT, [Store].[Geo].CURRENTMEMBER.PARENT, "
            "[Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "all ancestors, open count", CALL(f.set->TakeAncestorsOfSet("{S}", &f.hierarchy, true, -1, 1)),
            " GENERATE( {S} , { { ANCESTOR( [Store].[Geo].CURRENTMEMBER.PARENT, { [Store].[Geo].CURRENTMEMBER.PARENT, [Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, "
            "{ ANCESTOR( [Store].[Geo].CURRENTMEMBER.PARENT, { [Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
        { "ancestors, nothing but open", CALL(f.set->TakeAncestorsOfSet("{S}", &f.hierarchy, false, -1, -1)),
            " GENERATE( {S} , { ANCESTOR( [Store].[Geo].CURRENTMEMBER, {[Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "siblings", CALL(f.set->TakeSiblings(f.field.get(), nullptr)),
            "STRTOSET( IIF( [F].LEVEL.UNIQUENAME = [F].HIERARCHY.LEVELS(0).UNIQUENAME, \"[F].HIERARCHY.LEVELS(0).MEMBERS\", \"[F].PARENT.CHILDREN\" ) ) " },
        { "children to a level", CALL(f.set->TakeChildren(f.other.get(), &f.hierarchy, true, -1, "[L]")),
            "GENERATE( {B}, GENERATE( [Store].[Geo].CURRENTMEMBER.CHILDREN, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [L], SELF_AND_BEFORE ) ) )" },
        { "children at a level", CALL(f.set->TakeChildren(f.other.get(), &f.hierarchy, false, 3, "[L]")),
            "GENERATE( {B}, GENERATE( [Store].[Geo].CURRENTMEMBER.CHILDREN, DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [L], SELF ) ) )" },
        { "children", CALL(f.set->TakeChildren(f.other.get(), &f.hierarchy, false, -1, "")), "GENERATE( {B}, [Store].[Geo].CURRENTMEMBER.CHILDREN )" },
        { "own children and itself", CALL(f.set->TakeChildren(f.set.get(), &f.hierarchy, true, 0, "")), "GENERATE( {A}, [Store].[Geo].CURRENTMEMBER.CHILDREN )+{A}" },
    };
    check(rows, true);
}

TEST(Dialect, Statements)
{
    Fixture f(true);
    Held<MDXField> const member = f.makeField("[M]'s");
    Held<MDXValue> const value = f.makeValue("'v'");
    Held<MDXSet> const set = f.makeSet("{'A'}");
    auto const select = statement<MDXSelectQuery>(f, MDXQuery::QT_SELECT);
    select->AddMemberFormula(member.get(), value.get(), 3, { "FORMAT_STRING" }, { "'#,#'" });
    select->AddMemberFormula(f.field.get(), f.value.get(), -1, {}, {});
    select->AddSetFormula("N", set.get());
    select->AddAxisSpecification(0, f.set.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
    select->AddAxisSpecification(1, f.other.get(), { "P", "Q" }, MDXSelectQuery::NES_ALL);
    select->AddSlicerSpecification(f.field.get());
    select->AddSlicerSpecification(f.second.get());
    select->AddCellProperties({ "FORMATTED_VALUE" });
    EXPECT_FALSE(select->SpecifyDrillThrough());
    EXPECT_EQ("WITH MEMBER [M]'s AS ' ''v'' ' , SOLVE_ORDER = 3, FORMAT_STRING = '#,#'  MEMBER [F] AS ' V '    SET N AS ' {''A''} '  "
              "SELECT NON EMPTY {A} ON COLUMNS , {B} DIMENSION PROPERTIES P, Q ON ROWS FROM [Sales] WHERE ( [F], [G] )   CELL PROPERTIES FORMATTED_VALUE",
        select->getText(false).toUTF8());
    select->AddMemberFormula(f.field.get(), f.value.get(), -1, { "P" }, {});
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { select->getText(false); });

    auto const create = statement<MDXCreateQuery>(f, MDXQuery::QT_CREATE);
    create->AddMemberFormula(member.get(), value.get(), 0, {}, {});
    create->AddSetFormula("N", set.get());
    EXPECT_EQ("CREATE MEMBER [Sales].[M]'s AS ' ''v'' ' , SOLVE_ORDER = 0 SET [Sales].N AS ' {''A''} ' ", create->getText(true).toUTF8());

    auto const drop = statement<MDXDropQuery>(f, MDXQuery::QT_DROP);
    drop->AddSetToDrop("S");
    EXPECT_EQ("DROP SET [Sales].S ", drop->getText(false).toUTF8());
}

TEST(Dialect, ObjectsOutliveTheirGenerator)
{
    Fixture f(true, true);
    auto const query = statement<MDXSelectQuery>(f, MDXQuery::QT_SELECT);
    f.generator.reset();
    query->AddAxisSpecification(0, f.set.get(), {}, MDXSelectQuery::NES_ALL);
    query->AddSlicerSpecification(f.field->TakeParentOfCalculation(&f.child));
    EXPECT_EQ("SELECT {A} ON COLUMNS FROM [Sales] WHERE [Store.Geo] ", query->getText(false).toUTF8());
}

TEST(Dialect, ErrorsAreCaughtAsWhatTheyAre)
{
    Fixture f;
    auto const generate = [&] { f.generator->GenerateQuery(static_cast<MDXQuery::QueryType>(3), nullptr); };
    expect_error(Raises{ 33648758, { "3", "QueryType" } }, generate);
    EXPECT_THROW(generate(), BaseError);
    try {
        generate();
    } catch (BRIM_o::AnyError const & error) {
        EXPECT_EQ("ODBOMODULE", error.module().toUTF8());
        EXPECT_EQ(1, static_cast<int>(error.level()));
        EXPECT_EQ(2, static_cast<int>(error.status()));
        EXPECT_LT(error.hResult(), 0);
        EXPECT_EQ(nullptr, error.getInsert(2));
        EXPECT_EQ("The value 3 is out of range for the enumeration QueryType.", error.getText().toUTF8());
    }
    auto const query = statement<MDXSelectQuery>(f, MDXQuery::QT_SELECT);
    expect_error(Raises{ 33648747 }, [&] { query->getText(false); });
}
