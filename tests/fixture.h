#pragma once
#include "memory_cube.h"
#include "odbomodule.h"

#include "host/core_log.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

// GoogleTest shows texts through this.
inline void PrintTo(KelpString const & text, std::ostream * out)
{
    *out << '|' << text << '|';
}

// The text of an expression or statement, in UTF-8 as all texts of tests.
template <class Object>
std::string mdx_of(Object && object)
{
    KelpString text("stale");
    object.writeText(text);
    return text.toUTF8();
}

// The general classes, which the generator does not hand out, as a host could derive them.
template <class Base>
struct General final : Base {
    using Base::Base;
};

enum Classes { kGeneral, kDialect, kFlatDialect, kBoth };

// What a row works on, made afresh for each. Sets, fields and values are of the classes that it is made for.
struct Fixture {
    explicit Fixture(Classes classes = kGeneral);
    ~Fixture();
    Fixture(Fixture const &) = delete;
    Fixture & operator=(Fixture const &) = delete;

    // With a reference for the caller.
    MDXSet * makeSet(KelpString const & text) const { return fGeneral ? new General<MDXSet>(text) : generator->GenerateSet(text); }
    MDXField * makeField(KelpString const & text) const { return fGeneral ? new General<MDXField>(text) : generator->GenerateField(text); }
    MDXValue * makeValue(KelpString const & text) const { return fGeneral ? new General<MDXValue>(text) : generator->GenerateValue(text); }

    bool fGeneral;
    std::unique_ptr<MDXQueryGenerator> generator; // on the cube [Sales]

    // The cube's parts; the hierarchy has three levels and no calculated member at first.
    memory_cube::Dimension dimension{ "Store", "[Store]" };
    memory_cube::Hierarchy hierarchy{ &dimension, "Geo", "[Store].[Geo]" };
    memory_cube::Level country{ "[Store].[Geo].[Country]" }, city{ "[Store].[Geo].[City]" }, shop{ "[Store].[Geo].[Shop]" };
    memory_cube::Member member{ "[Store].[Geo].[Japan]" };
    memory_cube::Calculation calculation{ &hierarchy, "[Store].[Geo].[North]" };
    memory_cube::Calculation child{ &hierarchy, "[Store].[Geo].[Japan].[South]", "[Store].[Geo].[Japan]" };

    MDXSet *const set = makeSet("{A}"), *const other = makeSet("{B}");
    MDXField *const field = makeField("[F]"), *const second = makeField("[G]");
    MDXValue *const value = makeValue("V"), *const weight = makeValue("W"), *const third = makeValue("X");
    // Of [F] and [G]; of [F]; of no field.
    MDXTuple *const tuple = generator->GenerateTuple(), *const single = generator->GenerateTuple(), *const empty = generator->GenerateTuple();
};

// A row: an operation on one of the fixture's objects (told by its own words) that returns what the operation returns,
// and the full text that the object has afterwards, or the error that it raises.
template <class Object>
struct Row {
    char const * name;
    Object * (*call)(Fixture & f);
    std::string want;
};
#define CALL(...) #__VA_ARGS__, []([[maybe_unused]] Fixture & f) { return __VA_ARGS__; }

// An MDXError with its inserts, and what `body` throws of it, as one text; empty when it throws none.
std::string raises(std::uint32_t code, std::string const & inserts = "");
std::string error_of(std::function<void()> const & body);

// The count of an object, which a reference to and fro tells.
std::int32_t count_of(support::RefCount & object);

std::string doubled_quotes(std::string text);

// The texts and counts of all but one object.
std::string state_of(Fixture & f, support::RefCount const * but);

// Runs each row on a fresh fixture and checks what holds for all: the text, the quoted text (read before the call
// too), that the object itself is returned with its count as it was, that the other objects keep text and count, and
// that an error leaves the text alone.
template <class Object, Classes classes>
void check(std::vector<Row<Object>> const & rows)
{
    for (Classes const each : classes == kBoth ? std::vector{ kGeneral, kDialect } : std::vector{ classes }) {
        for (Row<Object> const & row : rows) {
            SCOPED_TRACE(row.name);
            Fixture f(each);
            Object & object = *std::get<Object *>(std::tuple(f.set, f.field, f.value));
            std::string const old = mdx_of(object);
            std::int32_t const count = count_of(object);
            std::string const others = state_of(f, &object);
            EXPECT_EQ(doubled_quotes(old), object.getQuotedText().toUTF8());

            std::string const error = error_of([&] { EXPECT_EQ(&object, row.call(f)); });
            std::string const have = mdx_of(object);
            EXPECT_EQ(row.want, error.empty() ? have : error);
            EXPECT_EQ(error.empty() ? have : old, object.getText().toUTF8());
            EXPECT_EQ(doubled_quotes(have), object.getQuotedText().toUTF8());
            EXPECT_EQ(count, count_of(object));
            EXPECT_EQ(others, state_of(f, &object)) << "other objects";
        }
    }
}

// The text of an object that was just made and is given back.
template <class Object>
std::string made(Object * object)
{
    RefPtr<Object> const held(object);
    EXPECT_EQ(1, count_of(*object));
    return mdx_of(*object);
}

using Strings = std::vector<std::string>;

// Takes what the log gets for the length of a scope, as "code level module/part: text" with the code in hexadecimal.
struct LogLines {
    Strings fAll;

    LogLines();
    ~LogLines() { support_dll::getLogObject()->setSink(nullptr, nullptr); }
    LogLines(LogLines const &) = delete;
    LogLines & operator=(LogLines const &) = delete;
    Strings take() { return std::exchange(fAll, {}); }
};

// Takes the assertions that fail within a scope, as "expression in file".
struct Assertions {
    static inline Strings fAll;
    support_dll::AssertionHandler const fBefore;

    Assertions() : fBefore(support_dll::setAssertionHandler([](char const * expression, char const * file) { fAll.push_back(std::string(expression) + " in " + file); })) {}
    ~Assertions() { support_dll::setAssertionHandler(fBefore); }
    Strings take() { return std::exchange(fAll, {}); }
};
