#include "fixture.h"

// A separate program: the objects here are the first of their classes in the process.

// A general class and its dialect class share one counter; all statements share another.
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
        ScopedLevel const memory("MEMORY", name.c_str(), 4);
        for (auto const & [number, make] : { std::pair("(000) ", first), std::pair("(001) ", second) }) {
            support::RefCount * const object = make();
            std::string const who = "c2011000 4 MEMORY/" + name + ": " + name + number + address_of(object);
            object->unuse();
            EXPECT_EQ((Strings{ who + " created", who + " destroyed" }), lines.take());
        }
    }
}
