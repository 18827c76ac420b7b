#include "allocations.h"
#include "fixture.h"

#include <odbomodule/statements/formula_specifications.h>

#include <utility>

namespace {

constexpr auto kAll = MDXSelectQuery::NES_ALL;

// An object that tells when it ends.
template <class Base>
struct Watched final : Base {
    std::string & fEnded;

    Watched(KelpString const & text, std::string & ended) : Base(text), fEnded(ended) {}
    ~Watched() override { fEnded += mdx_of(*this); }
};

// An object that overrides getText() with another text. Each base class has one of these three forms.
template <class Base>
struct Saying final : Base {
    using Base::Base;
    KelpString getText() { return "said"; }
    KelpString getText() const { return "said"; }
    KelpString getText(bool) const { return "said"; }
};

}

// What docs/operations.md does not show of statements.

// writeText goes through the virtual getText.
TEST(Statements, WriteWhatTheVirtualGetTextReturns)
{
    Fixture f;
    EXPECT_EQ("said", mdx_of(Saying<MDXSelectQuery>("[Sales]")));
    EXPECT_EQ("said", mdx_of(Saying<MDXCreateQuery>("[Sales]")));
    EXPECT_EQ("said", mdx_of(Saying<MDXDropQuery>("[Sales]")));
    EXPECT_TRUE(Saying<MDXDropQuery>("[Sales]").AddSetToDrop("[Team]"));
    EXPECT_TRUE(Saying<MDXSelectQuery>("[Sales]").SpecifyDrillThrough());
    EXPECT_EQ("said", mdx_of(Saying<MDXTuple>()));
    EXPECT_EQ("said", mdx_of(Saying<MDXMemberProperty>("a", "b")));
    EXPECT_EQ("said", mdx_of(Saying<MDXSetSpecification>("N", f.set, false, "[Sales]")));
    EXPECT_EQ("said", mdx_of(Saying<MDXMemberSpecification>(f.field, f.value, -1, {}, {}, false, "[Sales]")));
    EXPECT_EQ("said", mdx_of(Saying<MDXSelectQuery::MDXAxisSpecification>(0, f.set, {}, false)));
}

TEST(MDXSelectQuery, ReportsMissingAxesFirst)
{
    Fixture f;
    RefPtr const query(new General<MDXSelectQuery>("[Sales]"));
    query->AddMemberFormula(nullptr, nullptr, -1, { "no value" }, {}); // null: the axes are counted before the member and value are read
    EXPECT_EQ(raises(MDX_ERR_NO_AXES), error_of([&] { query->getText(true); }));
}

TEST(MDXSelectQuery, IsItsStoredTextAndNothingElse)
{
    RefPtr const query(new General<MDXSelectQuery>("[Sales]"));
    KelpString stored = "a text too long for a string's own room", other = " stored\n", none;
    if (fails_at_allocation(1, [&] { query->setQuery(stored); })) {
        EXPECT_EQ(raises(MDX_ERR_NO_AXES), error_of([&] { query->getText(true); }));
    }
    query->setQuery(other);
    query->AddCellProperty("more");
    EXPECT_EQ(other, query->getText(true));
    query->setQuery(none);
    EXPECT_EQ(none, query->getText(true));
}

TEST(MDXDropQuery, DropsSetsIfNoMemberCouldBeAdded)
{
    RefPtr const drop(new General<MDXDropQuery>("[Sales]"));
    bool const failed = fails_at_allocation(1, [&] { drop->AddMemberToDrop("m"); });
    EXPECT_EQ(failed ? "" : raises(MDX_ERR_MIXED_DROP), error_of([&] { drop->AddSetToDrop("[Team]"); }));
}

// A statement reads its parts each time. It releases the formulas in order, then the axes, then the slicer. A member formula
// releases its value before its member.
TEST(Statements, HoldTheirPartsAndGiveThemBackInOrder)
{
    std::string ended;
    RefPtr select(new General<MDXSelectQuery>("[Sales]"));
    RefPtr create(new General<MDXCreateQuery>("[Sales]"));
    {
        auto const set = [&](char const * text) { return RefPtr<MDXSet>(new Watched<MDXSet>(text, ended)); };
        auto const member = [&](char const * text) { return RefPtr<MDXField>(new Watched<MDXField>(text, ended)); };
        auto const value = [&](char const * text) { return RefPtr<MDXValue>(new Watched<MDXValue>(text, ended)); };
        RefPtr const axis = set("{A}"), named = set("{B}");
        RefPtr const slice = member("[S]"), defined = member("[M]");
        RefPtr const definition = value("V");
        select->AddSlicerSpecification(slice.get());
        select->AddSlicerSpecification(member("[T]").get());
        select->AddAxisSpecification(0, axis.get(), {}, kAll);
        select->AddAxisSpecification(1, set("{R}").get(), {}, static_cast<MDXSelectQuery::NonEmptyStatus>(2)); // not NON EMPTY
        select->AddMemberFormula(defined.get(), definition.get(), -1, {}, {});
        select->AddSetFormula("N", named.get());
        create->AddSetFormula("N", set("{C}").get());
        create->AddMemberFormula(member("[C]").get(), value("W").get(), -1, {}, {});
        axis->TakeTail();
        slice->MoveToParent();
        defined->ReplaceName("[O]");
        definition->Add(1);
        named->Empty();
        MDXField::unuseVector({ new Watched<MDXField>("1", ended), new Watched<MDXField>("2", ended) });
    }
    EXPECT_EQ("12", std::exchange(ended, ""));
    EXPECT_EQ(
        "WITH MEMBER [O] AS 1 + V  SET N AS {  }  SELECT TAIL( {A} )  ON COLUMNS , {R} ON ROWS FROM [Sales] WHERE ( [S].PARENT, [T] )  ",
        mdx_of(*select));
    EXPECT_EQ("", ended);
    select = nullptr;
    EXPECT_EQ("1 + V[O]{  }TAIL( {A} ) {R}[S].PARENT[T]", std::exchange(ended, ""));
    create = nullptr;
    EXPECT_EQ("{C}W[C]", ended);
}
