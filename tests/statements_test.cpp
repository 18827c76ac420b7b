#include "tests/allocations.h"
#include "tests/fixture.h"

#include "odbomodule/statements/formula_specifications.h"

namespace {

constexpr auto kAll = MDXSelectQuery::NES_ALL;

// An object that tells when it ends.
template <class Base>
struct Watched final : Base {
    std::string & fEnded;

    Watched(KelpString const & text, std::string & ended) : Base(text), fEnded(ended) {}
    ~Watched() override { fEnded += mdx_of(*this); }
};

}

// All parts at once, in both forms; each alone stands in the reference of the operations.
TEST(MDXSelectQuery, Text)
{
    Fixture f;
    RefPtr const query(new General<MDXSelectQuery>("[Sales]"));
    query->AddAxisSpecification(0, f.set, {}, kAll);
    EXPECT_TRUE(query->SpecifyDrillThrough());
    EXPECT_EQ("DRILLTHROUGH SELECT {A} ON COLUMNS FROM [Sales] ", mdx_of(*query));
    EXPECT_EQ("DRILLTHROUGH \nSELECT \n       {A} ON COLUMNS \nFROM [Sales] ", query->getText(true).toUTF8());

    query->AddAxisSpecification(1, f.other, { "P", "Q", "R" }, MDXSelectQuery::NES_NON_EMPTY);
    query->AddAxisSpecification(2, f.set, { "P" }, static_cast<MDXSelectQuery::NonEmptyStatus>(2));
    query->AddMemberFormula(f.field, f.value, 7, {}, {});
    query->AddSetFormula("N", f.other);
    query->AddSetFormula("O", f.set);
    query->AddSlicerSpecification(f.field);
    query->AddSlicerSpecification(f.second);
    query->AddCellProperty("P");
    query->AddCellProperties({});
    query->AddCellProperties({ "Q", "R" });
    EXPECT_EQ(mdx_of(*query),
        "WITH MEMBER [F] AS V, SOLVE_ORDER = 7  SET N AS {B}   SET O AS {A}  DRILLTHROUGH "
        "SELECT {A} ON COLUMNS , NON EMPTY {B} DIMENSION PROPERTIES P, Q, R ON ROWS , {A} DIMENSION PROPERTIES P ON AXIS(2) "
        "FROM [Sales] WHERE ( [F], [G] )   CELL PROPERTIES P, Q, R");
    EXPECT_EQ(query->getText(true).toUTF8(), "WITH \n"
                                             "       MEMBER [F] AS V, SOLVE_ORDER = 7 \n"
                                             "       SET N AS {B}  \n"
                                             "       SET O AS {A}  DRILLTHROUGH \n"
                                             "SELECT \n"
                                             "       {A} ON COLUMNS ,\n"
                                             "       NON EMPTY {B} DIMENSION PROPERTIES P, Q, R ON ROWS ,\n"
                                             "       {A} DIMENSION PROPERTIES P ON AXIS(2) \n"
                                             "FROM [Sales] \n"
                                             "WHERE \n"
                                             "      ( [F], [G] )   CELL PROPERTIES P, Q, R");
}

TEST(MDXSelectQuery, KeepsItsCellPropertiesWhenMemoryRunsOut)
{
    Fixture f;
    std::string const name = "a name too long for a string's own room";
    bool failed = kAllocationsFail;
    for (std::size_t nth = 1; failed; ++nth) {
        RefPtr const query(new General<MDXSelectQuery>("[Sales]"));
        query->AddAxisSpecification(0, f.set, {}, kAll);
        query->AddCellProperty(KelpString(name.c_str()));
        std::vector<KelpString> const more(2, name.c_str());
        gFailAt = nth;
        failed = error_of([&] { query->AddCellProperties(more); }) == kNoMemory;
        gFailAt = 0;
        EXPECT_EQ(
            "SELECT {A} ON COLUMNS FROM [Sales]  CELL PROPERTIES " + name + (failed ? "" : ", " + name + ", " + name), mdx_of(*query));
    }
}

TEST(MDXSelectQuery, Refusals)
{
    Fixture f;
    RefPtr const query(new General<MDXSelectQuery>("[Sales]"));
    query->AddMemberFormula(nullptr, nullptr, -1, { "no value" }, {}); // told before a text is asked for, and after a missing axis
    EXPECT_EQ(raises(MDX_ERR_NO_AXES), error_of([&] { query->getText(true); }));
    query->AddAxisSpecification(0, f.set, {}, kAll);
    EXPECT_EQ(raises(MDX_ERR_PROPERTY_COUNT_MISMATCH), error_of([&] { query->getText(true); }));
    KelpString stored = " stored\n", none; // which stand for all else, even without an axis
    query->setQuery(stored);
    query->AddCellProperty("more");
    EXPECT_EQ(stored, query->getText(true));
    RefPtr const bare(new General<MDXSelectQuery>("[Sales]"));
    bare->setQuery(none);
    EXPECT_EQ(none, bare->getText(true));
}

TEST(Statements, PartsByThemselves)
{
    Fixture f;
    RefPtr<MDXValue> const value(f.makeValue("'v'"));
    auto const member = [&](std::int32_t solveOrder, std::vector<KelpString> const & names, std::vector<KelpString> const & values,
                            bool qualified) {
        return mdx_of(MDXMemberSpecification(f.field, value.get(), solveOrder, names, values, qualified, "[Sales]"));
    };
    EXPECT_EQ("MEMBER [Sales].[F] AS 'v' ", member(INT32_MIN, {}, {}, true));
    EXPECT_EQ("MEMBER [F] AS 'v', SOLVE_ORDER = 0 ", member(0, {}, {}, false));
    EXPECT_EQ("MEMBER [F] AS 'v', P = 'x' ", member(-1, { "P" }, { "'x'" }, false));
    EXPECT_EQ("MEMBER [Sales].[F] AS 'v', SOLVE_ORDER = 2147483647, P = 1, Q =  ", member(INT32_MAX, { "P", "Q" }, { "1", "" }, true));
    EXPECT_EQ("NON EMPTY {A} DIMENSION PROPERTIES P ON AXIS(11) ", mdx_of(MDXSelectQuery::MDXAxisSpecification(11, f.set, { "P" }, true)));
    MDXMemberSpecification const holdsNone(nullptr, nullptr, 0, {}, {}, false, "[Sales]");
}

TEST(MDXCreateQuery, Text)
{
    Fixture f;
    RefPtr const query(new General<MDXCreateQuery>("[Sales]"));
    query->AddSetFormula("N", f.set->SetExpression("{'A'}"));
    query->AddMemberFormula(f.field, f.value, 0, { "P" }, { "1" });
    EXPECT_EQ("CREATE SET [Sales].N AS {'A'} MEMBER [Sales].[F] AS V, SOLVE_ORDER = 0, P = 1 ", query->getText(true).toUTF8());
    query->AddRawMemberFormula("CREATE MEMBER 'x'");
    EXPECT_EQ("CREATE MEMBER 'x'", mdx_of(*query));
    RefPtr const bare(new General<MDXCreateQuery>("[Sales]"));
    bare->AddRawMemberFormula("");
    EXPECT_EQ("", bare->getText(true).toUTF8());
}

TEST(MDXDropQuery, Text)
{
    RefPtr const members(new General<MDXDropQuery>("[Sales]"));
    RefPtr const sets(new General<MDXDropQuery>("[Sales]"));
    EXPECT_TRUE(members->AddMemberToDrop("M") && members->AddMemberToDrop("M"));
    EXPECT_TRUE(sets->AddSetToDrop("S'") && sets->AddSetToDrop(""));
    EXPECT_EQ("DROP MEMBER [Sales].M [Sales].M ", mdx_of(*members));
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
    auto * const query = new General<MDXSelectQuery>("[Sales]");
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
    EXPECT_EQ("WITH MEMBER [O] AS 1 + V  SET N AS {  }  SELECT TAIL( {A} )  ON COLUMNS FROM [Sales] WHERE [S].PARENT ", mdx_of(*query));
    EXPECT_EQ("", ended);
    query->unuse();
    EXPECT_EQ("1 + V[O]{  }TAIL( {A} ) [S].PARENT", ended);
}
