#include "fixture.h"

// A program by itself: the objects here are the first of their classes in the process.

// The log gets of two objects, one after the other, that each is made, held once more, and given back. There is one counter for a general
// class and its dialect class; statements share one.
TEST(RefCount, NumbersTheObjectsOfAClassFrom0)
{
    std::unique_ptr<MDXQueryGenerator> const g(createMSOLAP7QueryGenerator("[Sales]", false));
    struct {
        std::string name;
        std::function<support::RefCount *()> first, second;
    } const classes[] = {
        { "MDXField", [] { return new General<MDXField>(KelpString("F")); }, [&] { return g->GenerateField("F"); } },
        { "MDXSet", [] { return new General<MDXSet>; }, [&] { return g->GenerateSet(); } },
        { "MDXValue", [] { return new General<MDXValue>(1); }, [&] { return g->GenerateValue(1); } },
        { "MDXTuple", [] { return new General<MDXTuple>; }, [&] { return g->GenerateTuple(); } },
        { "MDXMemberProperty", [] { return new MDXMemberProperty("a", "b"); }, [&] { return g->GenerateMemberProperty("a", "b"); } },
        { "MDXQuery", [&] { return g->GenerateQuery(MDXQuery::QT_SELECT, nullptr); },
            [&] { return g->GenerateQuery(MDXQuery::QT_DROP, nullptr); } },
    };
    for (auto const & [name, first, second] : classes) {
        LogLines lines;
        ScopedLevel const memory("MEMORY", name.c_str(), 4), counts("INTERFACE", name.c_str(), 5);
        for (auto const & [number, make] : { std::pair("(000) ", first), std::pair("(001) ", second) }) {
            support::RefCount * const object = make();
            count_of(*object);
            object->unuse();
            std::string const who = "/" + name + ": " + name + number + address_of(object);
            Strings const want{ "c2011000 4 MEMORY" + who + " created", "c2011000 5 INTERFACE" + who + " Refcount raised to 2",
                "c2011000 5 INTERFACE" + who + " Refcount lowered to 1", "c2011000 5 INTERFACE" + who + " Refcount lowered to 0",
                "c2011000 4 MEMORY" + who + " destroyed" };
            EXPECT_EQ(want, lines.take());
        }
    }
}
