#pragma once
#include <odbomodule/odbomodule.h>
#include "asked_host.h"

#include <odbomodule/host/core_log.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using Strings = std::vector<std::string>;

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
    AskedDimension dimension{ "D", "[Dim]" };
    AskedHierarchy h{ &dimension, "N", "[H]" };
    AskedLevel country{ "[H].[Country]" }, city{ "[H].[City]" }, shop{ "[H].[Shop]" };
    AskedMember member{ "[H].[Japan]" };
    AskedCalculation calculation{ &h, "[H].[North]" };
    AskedCalculation child{ &h, "[H].[Japan].[South]", "[H].[Japan]" };
    KelpString condition = " c ";

    MDXSet *const set, *const other;
    MDXField *const field, *const second;
    MDXValue *const value, *const weight, *const third;
    // Of both fields; of the first; of none.
    MDXTuple *const tuple, *const single, *const empty;

    struct Texts {
        char const *set = "{A}", *other = "{B}", *field = "[F]", *second = "[G]", *value = "V", *weight = "W", *third = "X";
    };
    explicit Fixture(Classes classes = kGeneral) : Fixture(classes, Texts()) {}
    Fixture(Classes classes, Texts const & texts)
        : fGeneral(classes == kGeneral),
          generator(createMSOLAP7QueryGenerator("[Sales]", classes == kFlatDialect)),
          set(makeSet(texts.set)),
          other(makeSet(texts.other)),
          field(makeField(texts.field)),
          second(makeField(texts.second)),
          value(makeValue(texts.value)),
          weight(makeValue(texts.weight)),
          third(makeValue(texts.third)),
          tuple(makeTuple()),
          single(makeTuple()),
          empty(makeTuple())
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
    MDXSet * makeSet(KelpString const & text) const { return fGeneral ? new HostText<MDXSet>(text) : generator->GenerateSet(text); }
    MDXField * makeField(KelpString const & text) const { return fGeneral ? new HostText<MDXField>(text) : generator->GenerateField(text); }
    MDXTuple * makeTuple() const { return fGeneral ? new HostText<MDXTuple> : generator->GenerateTuple(); }
    MDXValue * makeValue(KelpString const & text) const { return fGeneral ? new HostText<MDXValue>(text) : generator->GenerateValue(text); }

    // The texts and counts of all objects but one. A tuple's text is left out: its members may be that one.
    std::string state_without(support::RefCount const * left_out) const
    {
        std::string state;
        auto const add = [&](auto *... objects) {
            ((state += objects == left_out ? "" : mdx_of(*objects) + std::to_string(count_of(*objects)) + "; "), ...);
        };
        add(set, other, field, second, value, weight, third);
        for (MDXTuple * const each : { tuple, single })
            state += std::to_string(each->FieldCount()) + "/" + std::to_string(count_of(*each)) + "; ";
        return state;
    }
};

// A row: an operation on one of the fixture's objects (named by its own words) that returns what the operation returns, the full text
// that the object has afterwards, or the error that it raises, and what is changed about the fixture before.
template <class Object>
struct OperationRow {
    char const * name;
    std::function<Object *(Fixture & f)> call;
    std::string want;
    std::function<void(Fixture & f)> given{};
};
#define CALL(...) #__VA_ARGS__, []([[maybe_unused]] Fixture & f) { return __VA_ARGS__; }
#define GIVEN(...) [](Fixture & f) { __VA_ARGS__; }

inline std::string const kNoMemory = "no memory";

inline BaseError error_with(std::uint32_t code, Strings const & inserts)
{
    BaseError error(code, "ODBOMODULE", BRIM_o::AnyError::SeverityError, BRIM_o::AnyError::NotCompleted);
    for (std::string const & insert : inserts)
        error.addInsert(insert.c_str());
    return error;
}

// The message of an error, and that of what `body` throws; empty when it throws none.
inline std::string raises(std::uint32_t code, Strings const & inserts = {})
{
    return error_with(code, inserts).getText().toUTF8();
}

inline std::string error_of(std::function<void()> const & body)
{
    try {
        body();
        return "";
    } catch (MDXError const & error) {
        return error.getText().toUTF8();
    } catch (std::bad_alloc const &) {
        return kNoMemory;
    }
}

inline std::string doubled_quotes(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\'');
    return text;
}

// Checks what holds for every operation: the text, the quoted text (read before the call too), that the object itself is
// returned with its count as it was, that the other objects keep text and count, and that an error leaves the text alone.
template <class Object>
void expect_operation(Fixture & f, OperationRow<Object> const & row)
{
    SCOPED_TRACE(row.name);
    if (row.given)
        row.given(f);
    Object & object = *std::get<Object *>(std::tuple(f.set, f.field, f.value));
    std::string const old = mdx_of(object);
    std::int32_t const count = count_of(object);
    std::string const others = f.state_without(&object);
    EXPECT_EQ(doubled_quotes(old), object.getQuotedText().toUTF8());

    std::string const error = error_of([&] { EXPECT_EQ(&object, row.call(f)); });
    std::string const have = mdx_of(object);
    EXPECT_EQ(row.want, error.empty() ? have : error);
    EXPECT_EQ(error.empty() ? have : old, object.getText().toUTF8());
    EXPECT_EQ(doubled_quotes(have), object.getQuotedText().toUTF8());
    EXPECT_EQ(count, count_of(object));
    EXPECT_EQ(others, f.state_without(&object)) << "other objects";
}

// Each row on a fixture of its own.
template <class Object, Classes classes>
void expect_operations(std::vector<OperationRow<Object>> const & rows)
{
    for (Classes const each : classes == kBoth ? std::vector{ kGeneral, kDialect } : std::vector{ classes }) {
        for (OperationRow<Object> const & row : rows) {
            Fixture f(each);
            expect_operation(f, row);
        }
    }
}

// The text of an object that was just made, which is given back.
template <class Object>
std::string text_of_new(Object * object)
{
    RefPtr<Object> const held(object);
    EXPECT_EQ(1, count_of(*object));
    return mdx_of(*object);
}

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
    {
        fAll.clear();
    }
    ~Assertions() { support_dll::setAssertionHandler(fBefore); }
    Strings take() { return std::exchange(fAll, {}); }
};
