#pragma once
#include "allocations.h"
#include "fixture.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// The tables of the documents as tests; see documented_rows.cmake.

using namespace BRIM_o;
using memory_cube::Condition;

// A value that is a text, which is kept.
inline Condition text_value(char16_t const * text, ExpressionType kind = ET_VALUE)
{
    static std::vector<std::shared_ptr<OLECHAR>> texts;
    Condition value(kind);
    value.fValue.vt = VT_BSTR;
    value.fValue.bstrVal = texts.emplace_back(SysAllocString(ole_characters(text)), SysFreeString).get();
    return value;
}

// The fixture with the names and texts of the documents.
struct Documented : Fixture {
    RefPtr<MDXSelectQuery> const fSelect;
    RefPtr<MDXCreateQuery> const fCreate;
    RefPtr<MDXDropQuery> const fDrop;
    Condition fGreater = memory_cube::mdx("a") > memory_cube::mdx("b");
    AskedNode fTree{ fGreater };
    struct Names {
        MDXQueryGenerator * generator;
        BRIM_o::Dimension * dimension;
        BRIM_o::Hierarchy * hierarchy;
        BRIM_o::Level * level;
        BRIM_o::Member * member;
        BRIM_o::Calculation *calculation, *nested;
        MDXSet *s, *t;
        MDXField *m, *n;
        MDXValue *x, *v, *w;
        MDXTuple *k, *pair, *none;
        MDXSelectQuery * select;
        MDXCreateQuery * create;
        MDXDropQuery * drop;
        BRIM_o::Expression * tree;
        KelpString text = "c";
        Condition a = memory_cube::mdx("a"), b = memory_cube::mdx("b"), c = memory_cube::mdx("c");
        Condition p = memory_cube::value(memory_cube::mdx("p"));
    } names{ generator.get(), &dimension, &h, &country, &member, &calculation, &child, set, other, field, second, value, weight, third,
        single, tuple, empty, fSelect.get(), fCreate.get(), fDrop.get(), &fTree };

    explicit Documented(Classes classes)
        : Fixture(classes, { "s", "t", "m", "n", "x", "v", "w" }),
          fSelect(statement<MDXSelectQuery>(MDXQuery::QT_SELECT)),
          fCreate(statement<MDXCreateQuery>(MDXQuery::QT_CREATE)),
          fDrop(statement<MDXDropQuery>(MDXQuery::QT_DROP))
    {
        dimension.fName = "Store";
        dimension.fUniqueName = "[Store]";
        h.fName = "Geo";
        h.fUniqueName = "[Store].[Geo]";
        country.fUniqueName = "[Store].[Geo].[Country]";
        member.fUniqueName = "[Store].[Geo].[Japan]";
        calculation.fUniqueName = "[Store].[Geo].[North]";
        child.fUniqueName = "[Store].[Geo].[South]";
        child.fParentUniqueName = member.fUniqueName;
        h.fCalculations = { { 1, &calculation } };
        fSelect->AddAxisSpecification(0, RefPtr(makeSet("s")).get(), {}, MDXSelectQuery::NES_ALL);
    }
    template <class Statement>
    RefPtr<Statement> statement(MDXQuery::QueryType type) const
    {
        return RefPtr<Statement>(
            fGeneral ? new General<Statement>("[Sales]") : static_cast<Statement *>(generator->GenerateQuery(type, nullptr)));
    }
    State state() const
    {
        State state = Fixture::state();
        for (MDXQuery const * const query : std::initializer_list<MDXQuery const *>{ fSelect.get(), fCreate.get(), fDrop.get() })
            state["statements"] += error_of([&] { state["statements"] += mdx_of(*query); }) + "; ";
        return state;
    }

    // What a call returns, as texts. The type says what has changed: an own object, several, or nothing because an object is new. A
    // condition is for a filter.
    Strings told(MDXSet * own) { return { text_of_own(own) }; }
    Strings told(MDXField * own) { return { text_of_own(own) }; }
    Strings told(MDXValue * own) { return { text_of_own(own) }; }
    Strings told(MDXTuple * own) { return (changed = "several"), Strings{ mdx_of(*own) }; }
    template <class Statement>
    requires std::is_base_of_v<MDXQuery, Statement> Strings told(Statement * own)
    {
        changed = "several";
        return { own->getText(false).toUTF8(), own->getText(true).toUTF8() };
    }
    template <class New>
    Strings told(RefPtr<New> const & made)
    {
        changed = "nothing";
        EXPECT_EQ(1, count_of(*made));
        return { mdx_of(*made) };
    }
    Strings told(Condition tree)
    {
        AskedNode node(tree);
        return told(set->Filter(&node, single));
    }
};

// Code of a row, with the names of the documents.
#define WITH_NAMES(...)                                                                                                                    \
    [](Documented & f) {                                                                                                                   \
        [[maybe_unused]] auto & [generator, dimension, hierarchy, level, member, calculation, nested, s, t, m, n, x, v, w, k, pair, none,  \
            select, create, drop, tree, text, a, b, c, p] = f.names;                                                                       \
        return __VA_ARGS__;                                                                                                                \
    }

// Runs the code, and gives what it has told, or the number and the message of the error that it has raised.
struct Code {
    std::function<Strings(Documented & f)> run;

    template <class Call>
    Code(Call call)
        : run([call](Documented & f) -> Strings {
              try {
                  if constexpr (std::is_void_v<std::invoke_result_t<Call, Documented &>>)
                      return call(f), Strings{};
                  else
                      return f.told(call(f));
              } catch (BRIM_o::AnyError const & error) {
                  EXPECT_EQ(u"ODBOMODULE 1 2", format_text("%s %d %d", error.module(), +error.level(), +error.status()));
                  return { std::to_string(error.code()), error.getText().toUTF8() };
              }
          })
    {}
};

// A row: what its code tells, of which the last texts may be missing, and what it tells of other classes, or with flat names.
struct Row {
    char const * row;
    Code code;
    Strings texts;
    Strings others{};

    void expect_texts(Documented & f, Classes classes) const
    {
        Strings const & want = classes == kDialect || others.empty() ? texts : others;
        Strings have = code.run(f);
        have.resize(want.size());
        EXPECT_EQ(want, have) << row;
    }
};

// General objects of the host that say another text than they hold. An operation reads what its own object holds and what its arguments
// say.
struct Disguised : Documented {
    explicit Disguised(std::string const & own) : Documented(kGeneral)
    {
        disguise(*set, "s", own == "set"), disguise(*other, "t");
        disguise(*field, "m", own == "field"), disguise(*second, "n");
        disguise(*value, "x", own == "value"), disguise(*weight, "v"), disguise(*third, "w");
        tuple->AddField(second);
        single->AddField(second);
        static_cast<HostText<MDXTuple> *>(tuple)->fSays = "( m, n ) ";
        static_cast<HostText<MDXTuple> *>(single)->fSays = "m";
    }
    template <class Base>
    static void disguise(Base & object, char const * text, bool isOwn = false)
    {
        auto & host = static_cast<HostText<Base> &>(object);
        host.fSays = isOwn ? "said" : text;
        if (!isOwn)
            host.hold("held");
    }
};

// What holds for a call in each of these classes: its texts, and that nothing else changes.
inline void expect_call(Row const & row, std::initializer_list<Classes> classes)
{
    for (Classes const each : classes) {
        Documented f(each);
        Fixture::State before = f.state();
        row.expect_texts(f, each);
        Fixture::State after = f.state();
        before[f.changed] = after[f.changed];
        EXPECT_TRUE(f.changed == "several" || before == after) << row.row;
    }
}

// Has each question to the host fail in turn, and then each allocation. Everything is as it was afterwards, and the call does what it
// should when it is repeated. An operation that goes by steps may leave its own object with the text of a step.
inline void expect_no_trace_of_faults(Row const & row, std::initializer_list<Classes> classes, bool bySteps = false)
{
    SCOPED_TRACE(row.row);
    for (Classes const each : classes) {
        Documented done(each);
        row.code.run(done);
        for (auto const fails : { fails_at_question, fails_at_allocation }) {
            for (std::size_t nth = 1;; ++nth) {
                Documented f(each);
                Fixture::State const before = f.state();
                if (!fails(nth, [&] { row.code.run(f); }) || !f.changed.empty()) // or telling its text failed
                    break;
                EXPECT_TRUE(before == f.state() || bySteps) << nth;
                row.code.run(f);
                EXPECT_TRUE(done.state() == f.state() || bySteps) << nth;
            }
        }
    }
}

// A table, which GoogleTest shows by the place with which its first row begins.
template <class Row>
struct Table : std::vector<Row> {
    using std::vector<Row>::vector;
    friend void PrintTo(Table const & table, std::ostream * out)
    {
        std::string_view const row = table.front().row;
        *out << row.substr(0, row.find(": "));
    }
};
