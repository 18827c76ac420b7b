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

template <class Error, class Body, class Look>
int caught_as(Body const & body, Look const & look)
{
    try {
        body();
    } catch (Error const & error) {
        look(error);
        return 1;
    }
    return 0;
}

}

TEST(Dialect, SetFactories)
{
    for (bool const flat : { false, true }) {
        Fixture f(true, flat);
        MDXQueryGenerator & g = *f.generator;
        std::vector<MDXField *> const fields{ f.field.get(), f.second.get() };
        std::vector<MDXTuple *> tuples{ f.tuple.get(), f.single.get() };
        EXPECT_EQ("AddCalculatedMembers([Store].[Geo].members)", made(g.GenerateSet(&f.hierarchy)));
        EXPECT_EQ(" { [F], [G] } ", made(g.GenerateSet(fields)));
        EXPECT_EQ(" { ( [F], [G] ) , [F] } ", made(g.GenerateSet(tuples)));
        EXPECT_EQ(" {  } ", made(g.GenerateSet(std::vector<MDXTuple *>())));
        EXPECT_EQ("[Store].[Geo].[City].MEMBERS ", made(g.GenerateSet(&f.city)));
        EXPECT_EQ(" 'x' ", made(g.GenerateSet(" 'x' ")));
        EXPECT_EQ("{A}", made(g.GenerateSet(f.set.get())));
        EXPECT_EQ("{  }", made(g.GenerateSet()));
        tuples.push_back(f.empty.get());
        expect_error(Raises{ MDX_ERR_EMPTY_TUPLE }, [&] { g.GenerateSet(tuples); });
    }
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
    }
}

TEST(Dialect, OtherFactories)
{
    for (bool const flat : { false, true }) {
        Fixture f(true, flat);
        MDXQueryGenerator & g = *f.generator;
        EXPECT_EQ("0", made(g.GenerateValue(0)));
        EXPECT_EQ("-2147483648", made(g.GenerateValue(INT32_MIN)));
        EXPECT_EQ(" 1 ", made(g.GenerateValue(" 1 ")));
        EXPECT_EQ("[Store].[Size]]", made(g.GenerateMemberProperty("[Store]", "Size]")));
        Held<MDXMemberProperty> const property(g.GenerateMemberProperty("Store", "[Size]"));
        KelpString written;
        property->writeText(written);
        EXPECT_EQ("Store.[[Size]]", written.toUTF8());
        EXPECT_EQ("[[Size]]", property->getPropertyUniqueName().toUTF8());
        Held<MDXTuple> const tuple(g.GenerateTuple());
        EXPECT_EQ(1, count_of(*tuple));
        expect_error(Raises{ MDX_ERR_EMPTY_TUPLE }, [&] { tuple->getText(); });
        EXPECT_EQ(flat ? 0 : 4, static_cast<int>(g.GetServerType()));
    }
}

TEST(Dialect, ParentOfCalculation)
{
    std::vector<FieldRow> const flat = {
        { "at the top", [](Fixture & f) { return f.field->TakeParentOfCalculation(&f.calculation); },
            "[Store.Geo]" },
        { "below a member", [](Fixture & f) { return f.field->TakeParentOfCalculation(&f.child); }, "[Store.Geo]" },
        { "brackets are not doubled",
            [](Fixture & f) {
                f.dimension.fName = "S]";
                f.hierarchy.fName = "[G]";
                return f.field->TakeParentOfCalculation(&f.child);
            },
            "[S].[G]]" },
    };
    std::vector<FieldRow> const unique = {
        { "at the top", [](Fixture & f) { return f.field->TakeParentOfCalculation(&f.calculation); },
            "[Store].[Geo]" },
        { "below a member", [](Fixture & f) { return f.field->TakeParentOfCalculation(&f.child); },
            "[Store].[Geo]" },
        { "no hierarchy",
            [](Fixture & f) {
                f.child.fHierarchy = nullptr;
                return f.field->TakeParentOfCalculation(&f.child);
            },
            "[F]" },
    };
    check(flat, true, true);
    check(unique, true, false);
}

TEST(Dialect, Properties)
{
    std::vector<ValueRow> const rows = {
        { "caption", [](Fixture & f) { return f.value->TakeProperty(f.field.get(), "Caption"); }, "[F].Name" },
        { "description", [](Fixture & f) { return f.value->TakeProperty(f.field.get(), "dESCRIPTION"); },
            "[F].Name" },
        { "other", [](Fixture & f) { return f.value->TakeProperty(f.field.get(), "Captions"); },
            "[F].Properties(\"Captions\")" },
        { "no name", [](Fixture & f) { return f.value->TakeProperty(f.field.get(), ""); }, "[F].Properties(\"\")" },
        { "caption of a field", [](Fixture & f) { return f.value->TakeCaption(f.field.get()); }, "[F].CAPTION " },
    };
    check(rows, true);
}

TEST(Dialect, Sets)
{
    std::vector<SetRow> const rows = {
        { "strip", [](Fixture & f) { return f.set->StripCalculations(nullptr, false); },
            "STRIPCALCULATEDMEMBERS( {A} ) " },
        { "strip none by name", [](Fixture & f) { return f.set->StripCalculations(&f.hierarchy, true); }, "{A}" },
        { "strip by name, in the host's order",
            [](Fixture & f) {
                f.hierarchy.fCalculations = { { 7, &f.calculation }, { -3, &f.child } };
                return f.set->StripCalculations(&f.hierarchy, true);
            },
            "EXCEPT( {A}, { [Store].[Geo].[North], [Store].[Geo].[Japan].[South] } ) " },
        { "hierarchize without a hierarchy",
            [](Fixture & f) { return f.set->Hierarchize(true, nullptr, true, { &f.child }); },
            "HIERARCHIZE( {A} ) " },
        { "hierarchize", [](Fixture & f) { return f.set->Hierarchize(false, &f.hierarchy, false, { &f.child }); },
            "UNION( HIERARCHIZE( STRIPCALCULATEDMEMBERS( {A} )  ) , { [Store].[Geo].[Japan].[South] } )" },
        { "hierarchize by name",
            [](Fixture & f) {
                f.hierarchy.fCalculations = { { 1, &f.child } };
                return f.set->Hierarchize(true, &f.hierarchy, true, { &f.child, &f.calculation });
            },
            "UNION( HIERARCHIZE( EXCEPT( {A}, { [Store].[Geo].[Japan].[South] } )  ) , "
            "{ [Store].[Geo].[Japan].[South], [Store].[Geo].[North] } )" },
        { "hierarchize with nothing to put back",
            [](Fixture & f) { return f.set->Hierarchize(true, &f.hierarchy, true, {}); },
            "UNION( HIERARCHIZE( {A} ) , {  } )" },
        { "hierarchize calculations", [](Fixture & f) { return f.set->HierarchizeCalculations(true); }, "{A}" },
        { "leaves of three levels", [](Fixture & f) { return f.set->TakeLeafNodes(&f.hierarchy); },
            "[Store].[Geo].LEVELS(2).MEMBERS " },
        { "leaves of one level",
            [](Fixture & f) {
                f.hierarchy.fLevels.resize(1);
                f.hierarchy.fCalculations = { { 1, &f.child } };
                return f.set->TakeLeafNodes(&f.hierarchy);
            },
            "[Store].[Geo].LEVELS(0).MEMBERS " },
        { "ancestors, open count",
            [](Fixture & f) { return f.set->TakeAncestorsOfSet("{S}", &f.hierarchy, false, -1, 2); },
            " GENERATE( {S} , { ANCESTOR( [Store].[Geo].CURRENTMEMBER, {[Store].[Geo].CURRENTMEMBER.PARENT.PARENT, "
            "[Store].[Geo].CURRENTMEMBER.PARENT, [Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "all ancestors, open count",
            [](Fixture & f) { return f.set->TakeAncestorsOfSet("{S}", &f.hierarchy, true, -1, 1); },
            " GENERATE( {S} , { { ANCESTOR( [Store].[Geo].CURRENTMEMBER.PARENT, { [Store].[Geo].CURRENTMEMBER.PARENT, "
            "[Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) }, { ANCESTOR( [Store].[Geo].CURRENTMEMBER.PARENT, "
            "{ [Store].[Geo].CURRENTMEMBER}.ITEM(0).ITEM(0).LEVEL ) } } ) " },
        { "ancestors, nothing but open",
            [](Fixture & f) { return f.set->TakeAncestorsOfSet("{S}", &f.hierarchy, false, -1, -1); },
            " GENERATE( {S} , { ANCESTOR( [Store].[Geo].CURRENTMEMBER, {[Store].[Geo].CURRENTMEMBER}"
            ".ITEM(0).ITEM(0).LEVEL )  } ) " },
        { "siblings", [](Fixture & f) { return f.set->TakeSiblings(f.field.get(), nullptr); },
            "STRTOSET( IIF( [F].LEVEL.UNIQUENAME = [F].HIERARCHY.LEVELS(0).UNIQUENAME, "
            "\"[F].HIERARCHY.LEVELS(0).MEMBERS\", \"[F].PARENT.CHILDREN\" ) ) " },
        { "children to a level",
            [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, true, -1, "[L]"); },
            "GENERATE( {B}, GENERATE( [Store].[Geo].CURRENTMEMBER.CHILDREN, "
            "DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [L], SELF_AND_BEFORE ) ) )" },
        { "children at a level",
            [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, false, 3, "[L]"); },
            "GENERATE( {B}, GENERATE( [Store].[Geo].CURRENTMEMBER.CHILDREN, "
            "DESCENDANTS( [Store].[Geo].CURRENTMEMBER, [L], SELF ) ) )" },
        { "children", [](Fixture & f) { return f.set->TakeChildren(f.other.get(), &f.hierarchy, false, -1, ""); },
            "GENERATE( {B}, [Store].[Geo].CURRENTMEMBER.CHILDREN )" },
        { "own children and itself",
            [](Fixture & f) { return f.set->TakeChildren(f.set.get(), &f.hierarchy, true, 0, ""); },
            "GENERATE( {A}, [Store].[Geo].CURRENTMEMBER.CHILDREN )+{A}" },
    };
    check(rows, true);
}

TEST(Dialect, SelectWithEverything)
{
    Fixture f(true);
    auto const query = statement<MDXSelectQuery>(f, MDXQuery::QT_SELECT);
    Held<MDXValue> const value = f.makeValue("'v'");
    Held<MDXField> const member = f.makeField("[M]'s");
    query->AddMemberFormula(member.get(), value.get(), 3, { "FORMAT_STRING" }, { "'#,#'" });
    query->AddMemberFormula(f.field.get(), f.value.get(), -1, {}, {});
    query->AddSetFormula("N", f.makeSet("{'A'}").get());
    query->AddAxisSpecification(0, f.set.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
    query->AddAxisSpecification(1, f.other.get(), { "P", "Q" }, MDXSelectQuery::NES_ALL);
    query->AddAxisSpecification(2, f.set.get(), {}, MDXSelectQuery::NES_ALL);
    query->AddSlicerSpecification(f.field.get());
    query->AddSlicerSpecification(f.second.get());
    query->AddCellProperty("VALUE");
    query->AddCellProperties({ "FORMATTED_VALUE" });
    EXPECT_FALSE(query->SpecifyDrillThrough());
    EXPECT_EQ("WITH MEMBER [M]'s AS ' ''v'' ' , SOLVE_ORDER = 3, FORMAT_STRING = '#,#'  MEMBER [F] AS ' V '    "
              "SET N AS ' {''A''} '  SELECT NON EMPTY {A} ON COLUMNS , {B} DIMENSION PROPERTIES P, Q ON ROWS , "
              "{A} ON AXIS(2) FROM [Sales] WHERE ( [F], [G] )   CELL PROPERTIES VALUE, FORMATTED_VALUE",
        query->getText(false).toUTF8());
    EXPECT_EQ("WITH \n       MEMBER [M]'s AS ' ''v'' ' , SOLVE_ORDER = 3, FORMAT_STRING = '#,#' "
              "\n       MEMBER [F] AS ' V '   \n       SET N AS ' {''A''} '  "
              "\nSELECT \n       NON EMPTY {A} ON COLUMNS ,\n       {B} DIMENSION PROPERTIES P, Q ON ROWS ,"
              "\n       {A} ON AXIS(2) \nFROM [Sales] \nWHERE \n      ( [F], [G] )   "
              "CELL PROPERTIES VALUE, FORMATTED_VALUE",
        query->getText(true).toUTF8());
    EXPECT_EQ("'v'", value->getText().toUTF8());
    query->AddMemberFormula(f.field.get(), f.value.get(), -1, { "P" }, {});
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { query->getText(false); });
}

TEST(Dialect, CreateAndDrop)
{
    Fixture f(true);
    auto const create = statement<MDXCreateQuery>(f, MDXQuery::QT_CREATE);
    create->AddMemberFormula(f.field.get(), f.value.get(), 0, {}, {});
    create->AddSetFormula("N", f.set.get());
    create->AddMemberFormula(f.second.get(), f.makeValue("'").get(), -1, {}, {});
    EXPECT_EQ("CREATE MEMBER [Sales].[F] AS ' V ' , SOLVE_ORDER = 0 SET [Sales].N AS ' {A} ' "
              "MEMBER [Sales].[G] AS ' '' '  ",
        create->getText(true).toUTF8());
    create->AddMemberFormula(f.field.get(), f.value.get(), 0, {}, { "1" });
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { create->getText(false); });
    create->AddRawMemberFormula("raw 'x'");
    EXPECT_EQ("raw 'x'", create->getText(false).toUTF8());

    auto const drop = statement<MDXDropQuery>(f, MDXQuery::QT_DROP);
    expect_error(Raises{ MDX_ERR_NOTHING_TO_DROP }, [&] { drop->getText(false); });
    drop->AddSetToDrop("S");
    drop->AddSetToDrop("T");
    EXPECT_EQ("DROP SET [Sales].S [Sales].T ", drop->getText(false).toUTF8());
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
    auto const look = [](BRIM_o::AnyError const & error) {
        EXPECT_EQ(33648758u, error.code());
        EXPECT_EQ("ODBOMODULE", error.module().toUTF8());
        EXPECT_EQ(1, static_cast<int>(error.level()));
        EXPECT_EQ(2, static_cast<int>(error.status()));
        EXPECT_LT(error.hResult(), 0);
        ASSERT_EQ(2, error.numInserts());
        EXPECT_EQ("-7", error.getInsert(0)->getText().toUTF8());
        EXPECT_EQ("QueryType", error.getInsert(1)->getText().toUTF8());
        EXPECT_EQ(nullptr, error.getInsert(2));
        EXPECT_EQ("The value -7 is out of range for the enumeration QueryType.", error.getText().toUTF8());
    };
    auto const generate = [&](int type = -7) {
        f.generator->GenerateQuery(static_cast<MDXQuery::QueryType>(type), nullptr);
    };
    EXPECT_EQ(3, caught_as<MDXError>(generate, look) + caught_as<BaseError>(generate, look) +
                     caught_as<BRIM_o::AnyError>(generate, look));
    expect_error(Raises{ 33648758, { "3", "QueryType" } }, [&] { generate(3); });
    expect_error(Raises{ 33648758, { "7", "QueryType" } }, [&] { generate(7); });
    auto const query = statement<MDXSelectQuery>(f, MDXQuery::QT_SELECT);
    expect_error(Raises{ 33648747 }, [&] { query->getText(false); });
}
