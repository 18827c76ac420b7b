#pragma once
#include "examples/memory_cube.h"
#include "odbomodule/odbomodule.h"

#include "odbomodule/host/core_log.h"

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

// The count of an object, which a reference to and fro tells.
inline std::int32_t count_of(support::RefCount & object)
{
    object.use();
    return object.unuse();
}

// The general classes, which the generator does not hand out, as a host could derive them.
template <class Base>
struct General final : Base {
    using Base::Base;
};

enum Classes { kGeneral, kDialect, kFlatDialect, kBoth };

// What a row works on, made afresh for each. Sets, fields and values are of the classes that it is made for.
struct Fixture {
    bool fGeneral;
    std::unique_ptr<MDXQueryGenerator> generator; // on the cube [Sales]

    // The cube's parts; the hierarchy `h` has three levels and no calculated member at first.
    memory_cube::Dimension dimension{ "D", "[Dim]" };
    memory_cube::Hierarchy h{ &dimension, "N", "[H]" };
    memory_cube::Level country{ "[H].[Country]" }, city{ "[H].[City]" }, shop{ "[H].[Shop]" };
    memory_cube::Member member{ "[H].[Japan]" };
    memory_cube::Calculation calculation{ &h, "[H].[North]" };
    memory_cube::Calculation child{ &h, "[H].[Japan].[South]", "[H].[Japan]" };
    KelpString condition = " c ";

    MDXSet *const set = makeSet("{A}"), *const other = makeSet("{B}");
    MDXField *const field = makeField("[F]"), *const second = makeField("[G]");
    MDXValue *const value = makeValue("V"), *const weight = makeValue("W"), *const third = makeValue("X");
    // Of [F] and [G]; of [F]; of no field.
    MDXTuple *const tuple = generator->GenerateTuple(), *const single = generator->GenerateTuple(),
                    *const empty = generator->GenerateTuple();

    explicit Fixture(Classes classes = kGeneral)
        : fGeneral(classes == kGeneral), generator(createMSOLAP7QueryGenerator("[Sales]", classes == kFlatDialect))
    {
        h.fLevels = { &country, &city, &shop };
        tuple->AddField(field)->AddField(second);
        single->AddField(field);
    }
    ~Fixture()
    {
        for (support::RefCount * const object :
            std::initializer_list<support::RefCount *>{ set, other, field, second, value, weight, third, tuple, single, empty })
            object->unuse();
    }
    // With a reference for the caller.
    MDXSet * makeSet(KelpString const & text) const { return fGeneral ? new General<MDXSet>(text) : generator->GenerateSet(text); }
    MDXField * makeField(KelpString const & text) const { return fGeneral ? new General<MDXField>(text) : generator->GenerateField(text); }
    MDXValue * makeValue(KelpString const & text) const { return fGeneral ? new General<MDXValue>(text) : generator->GenerateValue(text); }

    // The texts and counts of all but one object. A tuple's text is left out, which may be that of the very object.
    std::string state(support::RefCount const * but) const
    {
        std::string all = condition.toUTF8();
        auto const add = [&](auto *... objects) {
            ((all += objects == but ? "" : mdx_of(*objects) + std::to_string(count_of(*objects)) + "; "), ...);
        };
        add(set, other, field, second, value, weight, third);
        for (MDXTuple * const each : { tuple, single })
            all += std::to_string(each->FieldCount()) + "/" + std::to_string(count_of(*each)) + "; ";
        return all;
    }
};

// A row: an operation on one of the fixture's objects (told by its own words) that returns what the operation returns,
// and the full text that the object has afterwards, or the error that it raises.
template <class Object>
struct OperationRow {
    char const * name;
    Object * (*call)(Fixture & f);
    std::string want;
};
#define CALL(...) #__VA_ARGS__, []([[maybe_unused]] Fixture & f) { return __VA_ARGS__; }

// An MDXError with its inserts, and what `body` throws of it, as one text; empty when it throws none.
inline std::string raises(std::uint32_t code, std::string const & inserts = "")
{
    return "error " + std::to_string(code) + " (" + inserts + ")";
}

inline std::string error_of(std::function<void()> const & body)
{
    try {
        body();
        return "";
    } catch (MDXError const & error) {
        std::string inserts;
        for (std::int32_t i = 0; i < error.numInserts(); ++i)
            inserts += (i == 0 ? "" : ", ") + error.getInsert(i)->getText().toUTF8();
        return raises(error.code(), inserts);
    }
}

inline std::string doubled_quotes(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\'');
    return text;
}

// Runs each row on a fresh fixture and checks what holds for all: the text, the quoted text (read before the call
// too), that the object itself is returned with its count as it was, that the other objects keep text and count, and
// that an error leaves the text alone.
template <class Object, Classes classes>
void check(std::vector<OperationRow<Object>> const & rows)
{
    for (Classes const each : classes == kBoth ? std::vector{ kGeneral, kDialect } : std::vector{ classes }) {
        for (OperationRow<Object> const & row : rows) {
            SCOPED_TRACE(row.name);
            Fixture f(each);
            Object & object = *std::get<Object *>(std::tuple(f.set, f.field, f.value));
            std::string const old = mdx_of(object);
            std::int32_t const count = count_of(object);
            std::string const others = f.state(&object);
            EXPECT_EQ(doubled_quotes(old), object.getQuotedText().toUTF8());

            std::string const error = error_of([&] { EXPECT_EQ(&object, row.call(f)); });
            std::string const have = mdx_of(object);
            EXPECT_EQ(row.want, error.empty() ? have : error);
            EXPECT_EQ(error.empty() ? have : old, object.getText().toUTF8());
            EXPECT_EQ(doubled_quotes(have), object.getQuotedText().toUTF8());
            EXPECT_EQ(count, count_of(object));
            EXPECT_EQ(others, f.state(&object)) << "other objects";
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

    LogLines() { support_dll::getLogObject()->setSink(take_line, this); }
    ~LogLines() { support_dll::getLogObject()->setSink(nullptr, nullptr); }
    Strings take() { return std::exchange(fAll, {}); }
    static void take_line(
        void * lines, std::uint32_t code, std::int32_t level, KelpString const & module, KelpString const & part, KelpString const & line)
    {
        static_cast<LogLines *>(lines)->fAll.push_back(
            KelpString(format_text("%x %d %s/%s: %s", code, level, module, part, line)).toUTF8());
    }
};

// Takes the assertions that fail within a scope, as "expression in file".
struct Assertions {
    static inline Strings fAll;
    support_dll::AssertionHandler const fBefore;

    Assertions()
        : fBefore(support_dll::setAssertionHandler(
              [](char const * expression, char const * file) { fAll.push_back(std::string(expression) + " in " + file); }))
    {}
    ~Assertions() { support_dll::setAssertionHandler(fBefore); }
    Strings take() { return std::exchange(fAll, {}); }
};
