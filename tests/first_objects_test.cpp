#include "fixture.h"

// A program by itself: the objects here are the first of their classes in the process.

namespace {

using Maker = std::function<support::RefCount *()>;

// What the log gets of two objects that are made, held once more and given back, one after the other.
void expect_lives(std::string const & name, Maker const & makeFirst, Maker const & makeSecond)
{
    LogLines lines;
    ScopedLevel const memory("MEMORY", name.c_str(), 4), counts("INTERFACE", name.c_str(), 5);
    for (auto const & [number, make] : { std::pair("000", makeFirst), std::pair("001", makeSecond) }) {
        support::RefCount * const object = make();
        count_of(*object);
        object->unuse();
        std::string const who = "/" + name + ": " + name + "(" + number + ") " +
                                KelpString(format_text("%x", reinterpret_cast<std::uintptr_t>(object))).toUTF8();
        EXPECT_EQ(lines.take(), (Strings{ "c2011000 4 MEMORY" + who + " created", "c2011000 5 INTERFACE" + who + " Refcount raised to 2",
                                    "c2011000 5 INTERFACE" + who + " Refcount lowered to 1",
                                    "c2011000 5 INTERFACE" + who + " Refcount lowered to 0", "c2011000 4 MEMORY" + who + " destroyed" }));
    }
}

}

// One counter for a general class and its dialect class; statements share one.
TEST(RefCount, NumbersTheObjectsOfAClassFrom0)
{
    std::unique_ptr<MDXQueryGenerator> const g(createMSOLAP7QueryGenerator("[Sales]", false));
    expect_lives(
        "MDXField", [] { return new General<MDXField>(KelpString("F")); }, [&] { return g->GenerateField("F"); });
    expect_lives(
        "MDXSet", [] { return new General<MDXSet>; }, [&] { return g->GenerateSet(); });
    expect_lives(
        "MDXValue", [] { return new General<MDXValue>(1); }, [&] { return g->GenerateValue(1); });
    expect_lives(
        "MDXTuple", [] { return new General<MDXTuple>; }, [&] { return g->GenerateTuple(); });
    expect_lives(
        "MDXMemberProperty", [] { return new MDXMemberProperty("a", "b"); }, [&] { return g->GenerateMemberProperty("a", "b"); });
    expect_lives(
        "MDXQuery", [&] { return g->GenerateQuery(MDXQuery::QT_SELECT, nullptr); },
        [&] { return g->GenerateQuery(MDXQuery::QT_DROP, nullptr); });
}
