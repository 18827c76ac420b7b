#pragma once
#include "host_calls.h"
#include "log_lines.h"

#include <odbomodule/odbomodule.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <new>
#include <ostream>
#include <string>
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

// The number of an object's holders.
inline std::int32_t count_of(support::RefCount & object)
{
    object.use();
    return object.unuse();
}

// Returns the text of a new object and gives the object back.
template <class Object>
std::string text_of_new(Object * object)
{
    RefPtr<Object> const held(object);
    EXPECT_EQ(1, count_of(*object));
    return mdx_of(*object);
}

inline std::string doubled_quotes(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\'');
    return text;
}

// A class as a host derives it from a general class. The generator makes only dialect objects.
template <class Base>
struct General final : Base {
    using Base::Base;
};

enum Classes { kGeneral, kDialect, kFlatDialect };
inline constexpr std::initializer_list<Classes> kBoth = { kDialect, kGeneral };

// Objects to work on: expressions of the given classes, and the parts of a cube.
struct Fixture {
    struct Texts {
        char const *set = "{A}", *other = "{B}", *field = "[F]", *second = "[G]", *value = "V", *weight = "W", *third = "X";
    };

    bool const fGeneral;
    Texts const fTexts;
    std::unique_ptr<MDXQueryGenerator> generator; // on the cube [Sales]

    // The hierarchy has three levels and no calculated member; tests add `calculation` and `child`.
    HostDimension dimension{ "D", "[Dim]" };
    HostHierarchy h{ &dimension, "N", "[H]" };
    HostLevel country{ "[H].[Country]" }, city{ "[H].[City]" }, shop{ "[H].[Shop]" };
    HostMember member{ "[H].[Japan]" };
    HostCalculation calculation{ &h, "[H].[North]" };
    HostCalculation child{ &h, "[H].[Japan].[South]", "[H].[Japan]" };

    MDXSet *const set = makeSet(fTexts.set), *const other = makeSet(fTexts.other);
    MDXField *const field = makeField(fTexts.field), *const second = makeField(fTexts.second);
    MDXValue *const value = makeValue(fTexts.value), *const weight = makeValue(fTexts.weight), *const third = makeValue(fTexts.third);
    MDXTuple *const tuple = makeTuple(), *const single = makeTuple(), *const empty = makeTuple(); // of both fields, of the first, of none

    explicit Fixture(Classes classes = kGeneral) : Fixture(classes, Texts()) {}
    Fixture(Classes classes, Texts const & texts)
        : fGeneral(classes == kGeneral), fTexts(texts), generator(createMSOLAP7QueryGenerator("[Sales]", classes == kFlatDialect))
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
};

inline BaseError error_with(std::uint32_t code, Strings const & inserts)
{
    BaseError error(code, "ODBOMODULE", BRIM_o::AnyError::SeverityError, BRIM_o::AnyError::NotCompleted);
    for (std::string const & insert : inserts)
        error.addInsert(insert.c_str());
    return error;
}

// The message of this error.
inline std::string raises(std::uint32_t code, Strings const & inserts = {})
{
    return error_with(code, inserts).getText().toUTF8();
}

inline std::string const kNoMemory = "no memory";

// The message of the error that `body` throws; empty if it throws none.
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

// The assertions that fail within a scope, as "expression in file".
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
