#pragma once
#include "memory_cube.h"
#include "odbomodule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// GoogleTest shows texts through this.
inline void PrintTo(KelpString const & text, std::ostream * out)
{
    *out << '|' << text << '|';
}

// What ends counted objects in tests.
struct GiveBack {
    template <class Object>
    void operator()(Object * object) const
    {
        object->unuse();
    }
};
template <class Object>
using Held = std::unique_ptr<Object, GiveBack>;

// The general classes, which the generator does not hand out, as a host could derive them.
template <class Base>
struct General final : Base {
    using Base::Base;

private:
    ~General() override = default;
};

// What a row works on: made afresh for each row. `Dialect` takes set, field and value from a generator.
struct Fixture {
    explicit Fixture(bool dialect = false, bool flatHierarchyNames = false);

    bool fDialect;
    std::unique_ptr<MDXQueryGenerator> generator; // on the cube [Sales]

    // The cube's parts; the hierarchy has three levels and no calculated member at first.
    memory_cube::Dimension dimension{ "Store", "[Store]" };
    memory_cube::Hierarchy hierarchy{ &dimension, "Geo", "[Store].[Geo]" };
    memory_cube::Level country{ "[Store].[Geo].[Country]" };
    memory_cube::Level city{ "[Store].[Geo].[City]" };
    memory_cube::Level shop{ "[Store].[Geo].[Shop]" };
    memory_cube::Member member{ "[Store].[Geo].[Japan]" };
    memory_cube::Calculation calculation{ &hierarchy, "[Store].[Geo].[North]" };
    memory_cube::Calculation child{ &hierarchy, "[Store].[Geo].[Japan].[South]", "[Store].[Geo].[Japan]" };

    // Objects with short texts: {A}, {B}, [F], [G], V, W; a tuple of [F] and [G], one of [F], one without a field.
    Held<MDXSet> set;
    Held<MDXSet> other;
    Held<MDXField> field;
    Held<MDXField> second;
    Held<MDXValue> value;
    Held<MDXValue> weight;
    Held<MDXTuple> tuple;
    Held<MDXTuple> single;
    Held<MDXTuple> empty;

    Held<MDXSet> makeSet(KelpString const & text) const;
    Held<MDXField> makeField(KelpString const & text) const;
    Held<MDXValue> makeValue(KelpString const & text) const;
};

// An error that a row expects in the place of a text: the code, and its inserts.
struct Raises {
    std::uint32_t code;
    std::vector<std::string> inserts = {};
};

using Expected = std::variant<std::string, Raises>;

// What a row calls: an expression on the fixture `f`.
#define CALL(...) []([[maybe_unused]] Fixture & f) { return __VA_ARGS__; }

// A row: a name, an operation on one of the fixture's objects that returns what the operation returns, and the full
// text (in UTF-8) that the object has afterwards, or the error that it raises.
struct SetRow {
    char const * name;
    MDXSet * (*call)(Fixture &);
    Expected want;
};
struct FieldRow {
    char const * name;
    MDXField * (*call)(Fixture &);
    Expected want;
};
struct ValueRow {
    char const * name;
    MDXValue * (*call)(Fixture &);
    Expected want;
};

// Runs each row on a fresh fixture and checks what holds for all: the text, the quoted text (read before the call
// too), that the object itself is returned with its count as it was, that the other objects keep text and count, and
// that an error leaves the text alone.
void check(std::vector<SetRow> const & rows, bool dialect = false, bool flatHierarchyNames = false);
void check_both(std::vector<SetRow> const & rows); // that the dialect inherits
void check(std::vector<FieldRow> const & rows, bool dialect = false, bool flatHierarchyNames = false);
void check(std::vector<ValueRow> const & rows, bool dialect = false, bool flatHierarchyNames = false);

// Takes what the log gets for the length of a scope, as "code level module/part: text" with the code in hexadecimal.
struct LogLines {
    std::vector<std::string> fAll;

    LogLines();
    ~LogLines();
    LogLines(LogLines const &) = delete;
    LogLines & operator=(LogLines const &) = delete;
    std::vector<std::string> take() { return std::exchange(fAll, {}); }
};

// The count of an object, which a reference to and fro tells.
std::int32_t count_of(support::RefCount & object);

// Calls `body` and compares the MDXError that it throws with `want`; fails when it throws none.
void expect_error(Raises const & want, std::string const & name, void (*body)(void *), void * context);

template <class Body>
void expect_error(Raises const & want, Body body, std::string const & name = "")
{
    expect_error(
        want, name, [](void * context) { (*static_cast<Body *>(context))(); }, &body);
}
