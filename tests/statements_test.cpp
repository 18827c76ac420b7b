#include "fixture.h"

#include "statements/formula_specifications.h"

namespace {

constexpr auto kAll = MDXSelectQuery::NES_ALL;

// A general statement that has {A} on its columns, of which a row gets what it adds parts to.
struct SelectRow {
    char const * name;
    void (*build)(Fixture &, MDXSelectQuery &);
    char const * singleLine;
    char const * multiLine;
};

template <class Query>
Held<Query> make()
{
    return Held<Query>(new General<Query>("[Sales]"));
}

template <class Query>
std::string written(Query const & query)
{
    KelpString text("stale");
    query.writeText(text);
    return text.toUTF8();
}

// An object that tells when it ends.
template <class Base>
struct Watched final : Base {
    Watched(KelpString const & text, std::string & ended) : Base(text), fEnded(ended) {}
    ~Watched() override { fEnded += this->getText().toUTF8(); }

    std::string & fEnded;
};

}

TEST(MDXSelectQuery, Text)
{
    SelectRow const rows[] = {
        { "one formula, slicer of one",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddMemberFormula(f.field.get(), f.value.get(), -1, {}, {});
                q.AddSlicerSpecification(f.field.get());
            },
            "WITH MEMBER [F] AS V SELECT {A} ON COLUMNS FROM [Sales] WHERE [F] ",
            "WITH \n       MEMBER [F] AS V \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \nWHERE \n      [F] " },
        { "drill-through, three axes",
            [](Fixture & f, MDXSelectQuery & q) {
                EXPECT_TRUE(q.SpecifyDrillThrough());
                q.AddAxisSpecification(1, f.other.get(), { "P", "Q", "R" }, MDXSelectQuery::NES_NON_EMPTY);
                q.AddAxisSpecification(2, f.set.get(), { "P" }, static_cast<MDXSelectQuery::NonEmptyStatus>(2));
            },
            "DRILLTHROUGH SELECT {A} ON COLUMNS , NON EMPTY {B} DIMENSION PROPERTIES P, Q, R ON ROWS , {A} DIMENSION PROPERTIES P ON AXIS(2) FROM [Sales] ",
            "DRILLTHROUGH \nSELECT \n       {A} ON COLUMNS ,\n       NON EMPTY {B} DIMENSION PROPERTIES P, Q, R ON ROWS ,\n       {A} DIMENSION PROPERTIES P ON AXIS(2) \nFROM [Sales] " },
        { "three formulas, drill-through, slicer of two, cell properties",
            [](Fixture & f, MDXSelectQuery & q) {
                q.SpecifyDrillThrough();
                q.AddMemberFormula(f.field.get(), f.value.get(), 7, {}, {});
                q.AddSetFormula("N", f.other.get());
                q.AddSetFormula("O", f.set.get());
                q.AddSlicerSpecification(f.field.get());
                q.AddSlicerSpecification(f.second.get());
                q.AddCellProperty("P");
                q.AddCellProperties({});
                q.AddCellProperties({ "Q", "R" });
            },
            "WITH MEMBER [F] AS V, SOLVE_ORDER = 7  SET N AS {B}   SET O AS {A}  DRILLTHROUGH SELECT {A} ON COLUMNS FROM [Sales] "
            "WHERE ( [F], [G] )   CELL PROPERTIES P, Q, R",
            "WITH \n       MEMBER [F] AS V, SOLVE_ORDER = 7 \n       SET N AS {B}  \n       SET O AS {A}  DRILLTHROUGH \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] "
            "\nWHERE \n      ( [F], [G] )   CELL PROPERTIES P, Q, R" },
    };
    for (SelectRow const & row : rows) {
        Fixture f;
        Held<MDXSelectQuery> const query = make<MDXSelectQuery>();
        query->AddAxisSpecification(0, f.set.get(), {}, kAll);
        row.build(f, *query);
        EXPECT_EQ(row.singleLine, query->getText(false).toUTF8()) << row.name;
        EXPECT_EQ(row.multiLine, query->getText(true).toUTF8()) << row.name;
        EXPECT_EQ(row.singleLine, written(*query)) << row.name;
    }
}

TEST(MDXSelectQuery, Refusals)
{
    Fixture f;
    Held<MDXSelectQuery> const query = make<MDXSelectQuery>();
    expect_error(Raises{ MDX_ERR_NO_AXES }, [&] { query->getText(true); });
    auto const add = [&](std::int32_t axis) { return query->AddAxisSpecification(axis, f.set.get(), {}, kAll); };
    for (std::int32_t const axis : { 1, -1 })
        expect_error(Raises{ MDX_ERR_AXIS_OUT_OF_ORDER }, [&] { add(axis); });
    add(0);
    for (std::int32_t const axis : { 0, 2 })
        expect_error(Raises{ MDX_ERR_AXIS_OUT_OF_ORDER }, [&] { add(axis); });
    EXPECT_EQ(2, count_of(*f.set));
    EXPECT_EQ("\nSELECT \n       {A} ON COLUMNS \nFROM [Sales] ", query->getText(true).toUTF8());
    query->AddMemberFormula(f.field.get(), f.value.get(), -1, { "no value" }, {});
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { query->getText(true); });
    for (KelpString text : { " stored\n", "" }) { // stands for all else, even when it is empty
        query->setQuery(text);
        EXPECT_EQ(text, query->getText(true));
    }
}

TEST(Statements, PartsByThemselves)
{
    Fixture f;
    using Texts = std::vector<KelpString>;
    auto const member = [&](std::int32_t solveOrder, Texts const & names, Texts const & values, bool qualified) {
        KelpString written;
        MDXMemberSpecification(f.field.get(), f.makeValue("'v'").get(), solveOrder, names, values, qualified, "[Sales]").writeText(written);
        return written.toUTF8();
    };
    EXPECT_EQ("MEMBER [Sales].[F] AS 'v' ", member(INT32_MIN, {}, {}, true));
    EXPECT_EQ("MEMBER [F] AS 'v', SOLVE_ORDER = 0 ", member(0, {}, {}, false));
    EXPECT_EQ("MEMBER [F] AS 'v', P = 'x' ", member(-1, { "P" }, { "'x'" }, false));
    EXPECT_EQ("MEMBER [Sales].[F] AS 'v', SOLVE_ORDER = 2147483647, P = 1, Q =  ", member(INT32_MAX, { "P", "Q" }, { "1", "" }, true));
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { member(3, {}, { "1" }, false); });
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { member(3, { "P", "Q" }, { "1" }, false); });
    KelpString text;
    MDXSelectQuery::MDXAxisSpecification(11, f.set.get(), { "P" }, true).writeText(text);
    EXPECT_EQ("NON EMPTY {A} DIMENSION PROPERTIES P ON AXIS(11) ", text.toUTF8());
    MDXSetSpecification("N", f.set.get(), false, "[Sales]").writeText(text);
    EXPECT_EQ("SET N AS {A} ", text.toUTF8());
    MDXSelectQuery::MDXAxisSpecification const holdsNone(0, nullptr, {}, false);
    MDXSetSpecification const namesNone("N", nullptr, false, "C");
    MDXMemberSpecification const definesNone(nullptr, nullptr, 0, {}, {}, false, "C");
}

TEST(MDXCreateQuery, Text)
{
    Fixture f;
    Held<MDXCreateQuery> const query = make<MDXCreateQuery>();
    expect_error(Raises{ MDX_ERR_NO_FORMULAS }, [&] { query->getText(false); });
    query->AddSetFormula("N", f.makeSet("{'A'}").get());
    query->AddMemberFormula(f.field.get(), f.value.get(), 0, { "P" }, { "1" });
    EXPECT_EQ("CREATE SET [Sales].N AS {'A'} MEMBER [Sales].[F] AS V, SOLVE_ORDER = 0, P = 1 ", query->getText(true).toUTF8());
    query->AddMemberFormula(f.field.get(), f.value.get(), 0, { "P" }, {});
    expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { query->getText(false); });
    query->AddRawMemberFormula("CREATE MEMBER 'x'");
    EXPECT_EQ("CREATE MEMBER 'x'", written(*query));
    query->AddRawMemberFormula("");
    EXPECT_EQ("", query->getText(true).toUTF8());
}

TEST(MDXDropQuery, Text)
{
    Held<MDXDropQuery> const members = make<MDXDropQuery>();
    Held<MDXDropQuery> const sets = make<MDXDropQuery>();
    expect_error(Raises{ MDX_ERR_NOTHING_TO_DROP }, [&] { members->getText(false); });
    EXPECT_TRUE(members->AddMemberToDrop("M") && members->AddMemberToDrop("M"));
    EXPECT_TRUE(sets->AddSetToDrop("S'") && sets->AddSetToDrop(""));
    expect_error(Raises{ MDX_ERR_MIXED_DROP }, [&] { members->AddSetToDrop("S"); });
    expect_error(Raises{ MDX_ERR_MIXED_DROP }, [&] { sets->AddMemberToDrop("M"); });
    EXPECT_EQ("DROP MEMBER [Sales].M [Sales].M ", written(*members));
    EXPECT_EQ("DROP SET [Sales].S' [Sales]. ", sets->getText(true).toUTF8());
}

// A statement reads its parts afresh. Formulas end in their order, then axes, then the slicer; a member formula gives
// back its value first.
TEST(Statements, HoldTheirPartsAndGiveThemBackInOrder)
{
    std::string ended;
    auto * const axis = new Watched<MDXSet>("{A}", ended);
    auto * const slice = new Watched<MDXField>("[S]", ended);
    auto * const member = new Watched<MDXField>("[M]", ended);
    auto * const value = new Watched<MDXValue>("V", ended);
    auto * const named = new Watched<MDXSet>("{B}", ended);
    Held<MDXSelectQuery> query = make<MDXSelectQuery>();
    query->AddSlicerSpecification(slice);
    query->AddAxisSpecification(0, axis, {}, kAll);
    query->AddMemberFormula(member, value, -1, {}, {});
    query->AddSetFormula("N", named);
    for (support::RefCount * const object : std::vector<support::RefCount *>{ axis, slice, member, value, named })
        EXPECT_EQ(1, object->unuse());
    axis->TakeTail();
    slice->MoveToParent();
    member->ReplaceName("[O]");
    value->Add(1);
    named->Empty();
    EXPECT_EQ("WITH MEMBER [O] AS 1 + V  SET N AS {  }  SELECT TAIL( {A} )  ON COLUMNS FROM [Sales] WHERE [S].PARENT ", written(*query));
    EXPECT_EQ("", ended);
    query.reset();
    EXPECT_EQ("1 + V[O]{  }TAIL( {A} ) [S].PARENT", ended);
}
