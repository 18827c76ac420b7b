#include "fixture.h"

#include "statements/formula_specifications.h"

namespace {

using Strings = std::vector<KelpString>;

constexpr auto kAll = MDXSelectQuery::NES_ALL;
constexpr auto kNonEmpty = MDXSelectQuery::NES_NON_EMPTY;

// A general statement, of which a row gets what it adds parts to.
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
        { "one axis", [](Fixture & f, MDXSelectQuery & q) { q.AddAxisSpecification(0, f.set.get(), {}, kAll); },
            "SELECT {A} ON COLUMNS FROM [Sales] ", "\nSELECT \n       {A} ON COLUMNS \nFROM [Sales] " },
        { "three axes, non-empty, with properties",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddAxisSpecification(0, f.set.get(), { "P" }, kNonEmpty);
                q.AddAxisSpecification(1, f.other.get(), { "P", "Q", "R" }, kAll);
                q.AddAxisSpecification(2, f.set.get(), {}, static_cast<MDXSelectQuery::NonEmptyStatus>(2));
            },
            "SELECT NON EMPTY {A} DIMENSION PROPERTIES P ON COLUMNS , "
            "{B} DIMENSION PROPERTIES P, Q, R ON ROWS , {A} ON AXIS(2) FROM [Sales] ",
            "\nSELECT \n       NON EMPTY {A} DIMENSION PROPERTIES P ON COLUMNS ,"
            "\n       {B} DIMENSION PROPERTIES P, Q, R ON ROWS ,\n       {A} ON AXIS(2) \nFROM [Sales] " },
        { "one formula",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddAxisSpecification(0, f.set.get(), {}, kAll);
                q.AddMemberFormula(f.field.get(), f.value.get(), -1, {}, {});
            },
            "WITH MEMBER [F] AS V SELECT {A} ON COLUMNS FROM [Sales] ",
            "WITH \n       MEMBER [F] AS V \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] " },
        { "three formulas, and drill-through",
            [](Fixture & f, MDXSelectQuery & q) {
                EXPECT_TRUE(q.SpecifyDrillThrough());
                q.AddMemberFormula(f.field.get(), f.value.get(), 7, {}, {});
                q.AddSetFormula("N", f.other.get());
                q.AddSetFormula("O", f.set.get());
                q.AddAxisSpecification(0, f.set.get(), {}, kAll);
            },
            "WITH MEMBER [F] AS V, SOLVE_ORDER = 7  SET N AS {B}   SET O AS {A}  DRILLTHROUGH "
            "SELECT {A} ON COLUMNS FROM [Sales] ",
            "WITH \n       MEMBER [F] AS V, SOLVE_ORDER = 7 \n       SET N AS {B}  \n       SET O AS {A}  DRILLTHROUGH "
            "\nSELECT \n       {A} ON COLUMNS \nFROM [Sales] " },
        { "drill-through alone",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddAxisSpecification(0, f.set.get(), {}, kAll);
                q.SpecifyDrillThrough();
            },
            "DRILLTHROUGH SELECT {A} ON COLUMNS FROM [Sales] ",
            "DRILLTHROUGH \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] " },
        { "slicer of one",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddAxisSpecification(0, f.set.get(), {}, kAll);
                q.AddSlicerSpecification(f.field.get());
            },
            "SELECT {A} ON COLUMNS FROM [Sales] WHERE [F] ",
            "\nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \nWHERE \n      [F] " },
        { "slicer of two, and cell properties",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddAxisSpecification(0, f.set.get(), {}, kAll);
                q.AddSlicerSpecification(f.field.get());
                q.AddSlicerSpecification(f.second.get());
                q.AddCellProperty("P");
                q.AddCellProperties({});
                q.AddCellProperties({ "Q", "R" });
            },
            "SELECT {A} ON COLUMNS FROM [Sales] WHERE ( [F], [G] )   CELL PROPERTIES P, Q, R",
            "\nSELECT \n       {A} ON COLUMNS \nFROM [Sales] \nWHERE \n      ( [F], [G] )   CELL PROPERTIES P, Q, R" },
        { "stored query",
            [](Fixture & f, MDXSelectQuery & q) {
                q.AddMemberFormula(f.field.get(), f.value.get(), -1, { "no value" }, {});
                KelpString text("old");
                q.setQuery(text);
                text = " new\n";
                q.setQuery(text);
                EXPECT_EQ(" new\n", text.toUTF8());
            },
            " new\n", " new\n" },
        { "empty stored query",
            [](Fixture &, MDXSelectQuery & q) {
                KelpString text;
                q.setQuery(text);
            },
            "", "" },
    };
    for (SelectRow const & row : rows) {
        Fixture f;
        Held<MDXSelectQuery> const query = make<MDXSelectQuery>();
        row.build(f, *query);
        EXPECT_EQ(row.singleLine, query->getText(false).toUTF8()) << row.name;
        EXPECT_EQ(row.multiLine, query->getText(true).toUTF8()) << row.name;
        EXPECT_EQ(row.singleLine, written(*query)) << row.name;
    }
}

TEST(MDXSelectQuery, AxesComeInOrder)
{
    Fixture f;
    Held<MDXSelectQuery> const query = make<MDXSelectQuery>();
    expect_error(Raises{ MDX_ERR_NO_AXES }, [&] { query->getText(true); });
    expect_error(Raises{ MDX_ERR_NO_AXES }, [&] { written(*query); });
    auto const refuses = [&](std::int32_t axis) {
        expect_error(
            Raises{ MDX_ERR_AXIS_OUT_OF_ORDER },
            [&] { query->AddAxisSpecification(axis, f.other.get(), {}, kAll); }, std::to_string(axis));
    };
    refuses(1);
    refuses(-1);
    refuses(INT32_MIN);
    query->AddAxisSpecification(0, f.set.get(), {}, kAll);
    refuses(0);
    refuses(2);
    EXPECT_EQ(1, count_of(*f.other));
    EXPECT_EQ("SELECT {A} ON COLUMNS FROM [Sales] ", query->getText(false).toUTF8());
}

TEST(MDXAxisSpecification, Text)
{
    Fixture f;
    KelpString text;
    {
        MDXSelectQuery::MDXAxisSpecification axis(11, f.set.get(), { "P" }, true);
        MDXSelectQuery::MDXAxisSpecification lowest(INT32_MIN, f.set.get(), {}, false);
        EXPECT_EQ(3, count_of(*f.set));
        axis.writeText(text);
        EXPECT_EQ("NON EMPTY {A} DIMENSION PROPERTIES P ON AXIS(11) ", text.toUTF8());
        EXPECT_EQ("{A} ON AXIS(-2147483648) ", lowest.getText().toUTF8());
    }
    EXPECT_EQ(1, count_of(*f.set));
    MDXSelectQuery::MDXAxisSpecification const holdsNone(0, nullptr, {}, false);
}

TEST(Formulas, MemberText)
{
    struct {
        std::int32_t solveOrder;
        Strings names;
        Strings values;
        bool qualified;
        char const * text; // null where the lists do not fit
    } const rows[] = {
        { -1, {}, {}, false, "MEMBER [F] AS V " },
        { INT32_MIN, {}, {}, true, "MEMBER [Sales].[F] AS V " },
        { 0, {}, {}, false, "MEMBER [F] AS V, SOLVE_ORDER = 0 " },
        { INT32_MAX, {}, {}, false, "MEMBER [F] AS V, SOLVE_ORDER = 2147483647 " },
        { -2, { "P" }, { "'x'" }, false, "MEMBER [F] AS V, P = 'x' " },
        { 3, { "P", "Q" }, { "1", "" }, true, "MEMBER [Sales].[F] AS V, SOLVE_ORDER = 3, P = 1, Q =  " },
        { 3, { "P" }, {}, false, nullptr },
        { 3, {}, { "1" }, false, nullptr },
        { 3, { "P", "Q" }, { "1" }, false, nullptr },
    };
    Fixture f;
    for (auto const & row : rows) {
        MDXMemberSpecification formula(
            f.field.get(), f.value.get(), row.solveOrder, row.names, row.values, row.qualified, "[Sales]");
        KelpString text("old");
        if (row.text != nullptr) {
            EXPECT_EQ(row.text, formula.getText().toUTF8());
            formula.writeText(text);
            EXPECT_EQ(row.text, text.toUTF8());
        } else {
            expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { formula.getText(); });
            expect_error(Raises{ MDX_ERR_PROPERTY_COUNT_MISMATCH }, [&] { formula.writeText(text); });
        }
    }
    EXPECT_EQ(1, count_of(*f.value));
    MDXMemberSpecification const holdsNone(nullptr, nullptr, 0, {}, {}, false, "C");
}

TEST(Formulas, SetText)
{
    Fixture f;
    KelpString text;
    MDXSetSpecification plain(" N", f.makeSet("'A'").get(), false, "[Sales]");
    MDXSetSpecification qualified("N", f.set.get(), true, "[Sales]");
    EXPECT_EQ("SET  N AS 'A' ", plain.getText().toUTF8());
    qualified.writeText(text);
    EXPECT_EQ("SET [Sales].N AS {A} ", text.toUTF8());
    EXPECT_EQ(2, count_of(*f.set));
    MDXSetSpecification const holdsNone("N", nullptr, false, "C");
}

TEST(MDXCreateQuery, Text)
{
    Fixture f;
    Held<MDXCreateQuery> const query = make<MDXCreateQuery>();
    expect_error(Raises{ MDX_ERR_NO_FORMULAS }, [&] { query->getText(false); });
    expect_error(Raises{ MDX_ERR_NO_FORMULAS }, [&] { written(*query); });
    query->AddSetFormula("N", f.set.get());
    EXPECT_EQ("CREATE SET [Sales].N AS {A} ", query->getText(true).toUTF8());
    query->AddMemberFormula(f.field.get(), f.value.get(), 0, { "P" }, { "1" });
    for (bool const multiLine : { false, true })
        EXPECT_EQ("CREATE SET [Sales].N AS {A} MEMBER [Sales].[F] AS V, SOLVE_ORDER = 0, P = 1 ",
            query->getText(multiLine).toUTF8());
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
    expect_error(Raises{ MDX_ERR_NOTHING_TO_DROP }, [&] { written(*members); });
    EXPECT_TRUE(members->AddMemberToDrop("M"));
    EXPECT_TRUE(members->AddMemberToDrop("M"));
    EXPECT_TRUE(sets->AddSetToDrop("S'"));
    EXPECT_TRUE(sets->AddSetToDrop(""));
    expect_error(Raises{ MDX_ERR_MIXED_DROP }, [&] { members->AddSetToDrop("S"); });
    expect_error(Raises{ MDX_ERR_MIXED_DROP }, [&] { sets->AddMemberToDrop("M"); });
    for (bool const multiLine : { false, true }) {
        EXPECT_EQ("DROP MEMBER [Sales].M [Sales].M ", members->getText(multiLine).toUTF8());
        EXPECT_EQ("DROP SET [Sales].S' [Sales]. ", sets->getText(multiLine).toUTF8());
    }
    EXPECT_EQ("DROP MEMBER [Sales].M [Sales].M ", written(*members));
}

TEST(Statements, HoldWhatTheyAreGiven)
{
    Fixture f;
    Held<MDXSelectQuery> query = make<MDXSelectQuery>();
    Held<MDXField> const slice = f.makeField("S");
    query->AddAxisSpecification(0, f.set.get(), {}, kAll);
    query->AddAxisSpecification(1, f.set.get(), {}, kAll);
    EXPECT_EQ(3, count_of(*f.set));
    query->AddSlicerSpecification(slice.get());
    EXPECT_EQ(2, count_of(*slice));
    query->AddSetFormula("N", f.other.get());
    EXPECT_EQ(2, count_of(*f.other));
    query->AddMemberFormula(slice.get(), f.value.get(), -1, {}, {});
    EXPECT_EQ(3, count_of(*slice));
    EXPECT_EQ(2, count_of(*f.value));
    EXPECT_EQ("WITH SET N AS {B}  MEMBER S AS V  SELECT {A} ON COLUMNS , {A} ON ROWS FROM [Sales] WHERE S ",
        query->getText(false).toUTF8());

    f.set->TakeTail();
    f.other->Empty();
    slice->MoveToParent();
    f.value->Add(1);
    EXPECT_EQ("WITH SET N AS {  }  MEMBER S.PARENT AS 1 + V  SELECT TAIL( {A} )  ON COLUMNS , TAIL( {A} )  ON ROWS "
              "FROM [Sales] WHERE S.PARENT ",
        query->getText(false).toUTF8());
    query.reset();
    for (std::int32_t const count : { count_of(*f.set), count_of(*f.other), count_of(*slice), count_of(*f.value) })
        EXPECT_EQ(1, count);
}

// Formulas end in their order, then axes, then the slicer; a member formula gives back its value first.
TEST(Statements, GiveBackInOrder)
{
    std::string ended;
    auto * const axis = new Watched<MDXSet>("axis ", ended);
    auto * const slice = new Watched<MDXField>("slice ", ended);
    auto * const member = new Watched<MDXField>("member ", ended);
    auto * const value = new Watched<MDXValue>("value ", ended);
    auto * const named = new Watched<MDXSet>("named ", ended);
    Held<MDXSelectQuery> query = make<MDXSelectQuery>();
    query->AddSlicerSpecification(slice);
    query->AddAxisSpecification(0, axis, {}, kAll);
    query->AddMemberFormula(member, value, -1, {}, {});
    query->AddSetFormula("N", named);
    for (support::RefCount * const object : std::vector<support::RefCount *>{ axis, slice, member, value, named })
        EXPECT_EQ(1, object->unuse());
    EXPECT_EQ("", ended);
    query.reset();
    EXPECT_EQ("value member named axis slice ", ended);
}
