#pragma once
#include "allocations.h"
#include "fixture.h"

#include <cmath>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

// The tables of the documents as tests; see documented_rows.py.

using namespace BRIM_o;
using memory_cube::Condition;
namespace conditions = memory_cube::conditions;

// A condition whose value is a text. The text lives until the program ends.
inline Condition text_value(char16_t const * text, ExpressionType kind = ET_VALUE)
{
    static std::vector<std::shared_ptr<OLECHAR>> texts;
    VARIANT value{};
    value.vt = VT_BSTR;
    std::shared_ptr<OLECHAR> const copy(SysAllocString(ole_characters(text)), SysFreeString); // freed if memory runs out below
    value.bstrVal = texts.emplace_back(copy).get();
    return Condition(value, kind);
}

// The fixture with the names and texts of the documents.
struct Documented : Fixture {
    Condition fGreater = conditions::mdx("a") > conditions::mdx("b");
    HostNode fTree{ fGreater };
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
        BRIM_o::Expression * tree;
        RefPtr<MDXSelectQuery> select;
        RefPtr<MDXCreateQuery> create;
        RefPtr<MDXDropQuery> drop;
        KelpString text = "c";
        Condition a = conditions::mdx("a"), b = conditions::mdx("b"), c = conditions::mdx("c");
        Condition p = conditions::value(conditions::mdx("p"));
    } names{ generator.get(), &dimension, &h, &country, &member, &calculation, &child, set, other, field, second, value, weight, third,
        single, tuple, empty, &fTree, statement<MDXSelectQuery>(MDXQuery::QT_SELECT), statement<MDXCreateQuery>(MDXQuery::QT_CREATE),
        statement<MDXDropQuery>(MDXQuery::QT_DROP) };

    explicit Documented(Classes classes) : Fixture(classes, { "s", "t", "m", "n", "x", "v", "w" })
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
        names.select->AddAxisSpecification(0, RefPtr(makeSet("s")).get(), {}, MDXSelectQuery::NES_ALL);
    }
    template <class Statement>
    RefPtr<Statement> statement(MDXQuery::QueryType type) const
    {
        return RefPtr<Statement>(
            fGeneral ? new General<Statement>("[Sales]") : static_cast<Statement *>(generator->GenerateQuery(type, nullptr)));
    }
    // The text and the number of holders of each object; for a tuple, the number of members instead of the text, which is made from theirs.
    // This also makes each object cache its quoted text.
    using State = std::map<std::string, std::string>;
    State state() const
    {
        State state;
        auto const add = [&state](std::string const & name, auto & object) {
            state[name] = mdx_of(object);
            state[name + "'s holders"] = std::to_string(count_of(object));
            EXPECT_EQ(state[name], object.getText().toUTF8());
            EXPECT_EQ(doubled_quotes(state[name]), object.getQuotedText().toUTF8());
        };
        add("set", *set), add("other", *other), add("field", *field), add("second", *second);
        add("value", *value), add("weight", *weight), add("third", *third);
        for (auto const & [name, object] : { std::pair("tuple", tuple), std::pair("single", single) })
            state[name] = std::to_string(object->FieldCount()) + ", holders: " + std::to_string(count_of(*object));
        for (MDXQuery const * const each :
            std::initializer_list<MDXQuery const *>{ names.select.get(), names.create.get(), names.drop.get() })
            state["statements"] += error_of([&] { state["statements"] += mdx_of(*each); }) + "; ";
        return state;
    }

    // Makes the held text and getText() of each object differ. The object named `own` holds its proper text and says "said". Every other
    // object holds "held" and says its proper text. So a row writes its documented text only if the operation reads the held text of its
    // own object, and getText() of its arguments. All objects must be HostText.
    void disguise(std::string const & own)
    {
        auto const disguise = [&own]<class Base>(char const * name, Base & object, char const * text) {
            auto & host = static_cast<HostText<Base> &>(object);
            host.fSays = own == name ? "said" : text;
            if (own != name)
                host.hold("held");
        };
        disguise("set", *set, "s"), disguise("other", *other, "t");
        disguise("field", *field, "m"), disguise("second", *second, "n");
        disguise("value", *value, "x"), disguise("weight", *weight, "v"), disguise("third", *third, "w");
        for (auto const & [object, text] : { std::pair(tuple, "( m, n ) "), std::pair(single, "m") })
            static_cast<HostText<MDXTuple> *>(object->AddField(second))->fSays = text;
    }

    // Lets the rows use the set, field or value named `own` of `lender`. Returns false if `own` names none of them.
    bool borrow(Documented const & lender, std::string const & own)
    {
        names.s = own == "set" ? lender.set : set;
        names.m = own == "field" ? lender.field : field;
        names.x = own == "value" ? lender.value : value;
        return own == "set" || own == "field" || own == "value";
    }

    // What a call may change. It is set by texts_of_result(), which returns the texts of what the call returned.
    //   "set", "field", "value"   the object that the call was made on
    //   "several"                 the call was made on a tuple or statement, whose parts get another holder
    //   "nothing"                 the call made a new object
    // A condition is first passed to Filter().
    std::string changed;
    Strings texts_of_result(MDXSet * own) { return (changed = own == set ? "set" : "not the own set"), Strings{ mdx_of(*own) }; }
    Strings texts_of_result(MDXField * own) { return (changed = own == field ? "field" : "not the own field"), Strings{ mdx_of(*own) }; }
    Strings texts_of_result(MDXValue * own) { return (changed = own == value ? "value" : "not the own value"), Strings{ mdx_of(*own) }; }
    Strings texts_of_result(MDXTuple * own) { return (changed = "several"), Strings{ mdx_of(*own) }; }
    Strings texts_of_result(MDXQuery const & own)
    {
        return (changed = "several"), Strings{ own.getText(false).toUTF8(), own.getText(true).toUTF8() };
    }
    template <class New>
    Strings texts_of_result(RefPtr<New> const & made)
    {
        changed = "nothing";
        EXPECT_EQ(1, count_of(*made));
        return { mdx_of(*made) };
    }
    Strings texts_of_result(Condition tree)
    {
        HostNode node(tree);
        return texts_of_result(names.s->Filter(&node, single));
    }
};

// Wraps the code of a row in a function in which s, m, k and the other names of the documents are variables.
#define WITH_NAMES(...)                                                                                                                    \
    [](Documented & f) {                                                                                                                   \
        [[maybe_unused]] auto & [generator, dimension, hierarchy, level, member, calculation, nested, s, t, m, n, x, v, w, k, pair, none,  \
            tree, select, create, drop, text, a, b, c, p] = f.names;                                                                       \
        return __VA_ARGS__;                                                                                                                \
    }

// A row: its operation, such as "s->TakeTail", its code, the expected texts, and the texts with general classes or flat names if they
// differ. Texts at the end may be left out.
struct Row {
    char const * row;
    char const * operation;
    std::function<Strings(Documented &)> code;
    Strings texts;
    Strings others{};

    // Runs the row. Returns its texts, or the number and the message of the error that it throws.
    Strings run(Documented & f) const
    {
        try {
            return code(f);
        } catch (BRIM_o::AnyError const & error) {
            EXPECT_EQ(u"ODBOMODULE 1 2", format_text("%s %d %d", error.module(), +error.level(), +error.status())) << row;
            return { std::to_string(error.code()), error.getText().toUTF8() };
        }
    }
    void expect_texts(Documented & f, Classes classes) const
    {
        Strings const & want = classes == kDialect || others.empty() ? texts : others;
        Strings have = run(f);
        have.resize(want.size());
        EXPECT_EQ(want, have) << row;
    }
};

// Checks the texts with objects of these classes, and that nothing else changes.
inline void expect_call(Row const & row, std::initializer_list<Classes> classes)
{
    for (Classes const each : classes) {
        Documented f(each);
        Documented::State before = f.state();
        row.expect_texts(f, each);
        Documented::State after = f.state();
        before[f.changed] = after[f.changed];
        EXPECT_TRUE(f.changed == "several" || before == after) << row.row;
    }
}

// Makes each call of a host object fail in turn, and then each allocation. Each time, nothing must have changed, and the repeated call must
// succeed. An operation that works in steps may leave its own object with the text of a step, but changes nothing else.
inline void expect_no_trace_of_faults(Row const & row, std::initializer_list<Classes> classes, bool bySteps = false)
{
    for (Classes const each : classes) {
        Documented done(each);
        row.run(done);
        auto const same = [&](Documented::State a, Documented::State b) {
            if (bySteps)
                a[done.changed] = b[done.changed];
            return a == b;
        };
        for (auto const fails : { fails_at_host_call, fails_at_allocation }) {
            for (std::size_t nth = 1;; ++nth) {
                Documented f(each);
                Documented::State const before = f.state();
                if (!fails(nth, [&] { row.run(f); }) || !f.changed.empty()) // the call was over when it failed
                    break;
                EXPECT_TRUE(same(before, f.state())) << row.row;
                row.run(f);
                EXPECT_TRUE(same(done.state(), f.state())) << row.row;
            }
        }
    }
}

// A table, which GoogleTest shows by the place of its first row.
template <class Row>
struct Table : std::vector<Row> {
    using std::vector<Row>::vector;
    friend void PrintTo(Table const & table, std::ostream * out)
    {
        std::string_view const row = table.front().row;
        *out << row.substr(0, row.find(": "));
    }
};
