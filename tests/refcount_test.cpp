#include "tests/fixture.h"

#include <set>
#include <thread>

namespace {

// Sets a level for the length of a scope.
struct Level {
    CoreLog::VerbosityType & fLevel;

    Level(char const * module, KelpString const & part, std::int32_t level)
        : fLevel(*support_dll::getLogObject()->getModuleVerbosity(module, part))
    {
        fLevel = level;
    }
    ~Level() { fLevel = 0; }
};

struct Thing final : support::RefCount {
    std::function<void(Thing &)> fAtEnd;

    explicit Thing(std::function<void(Thing &)> atEnd, KelpString const & name = "Thing") : RefCount(name, 7), fAtEnd(std::move(atEnd)) {}
    ~Thing() override { fAtEnd(*this); }
};

void on_eight_threads(std::function<void()> const & body)
{
    std::vector<std::jthread> threads; // which end before it does
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(body);
}

}

TEST(RefCount, CountsHoldersOnEightThreads)
{
    int ends = 0;
    auto * const thing = new Thing([&](Thing &) { ++ends; });
    EXPECT_EQ(2, thing->use());
    on_eight_threads([thing] {
        for (int round = 0; round < 2000; ++round) {
            thing->use();
            thing->unuse();
        }
    });
    EXPECT_EQ(1, thing->unuse());
    EXPECT_EQ(0, thing->unuse());
    EXPECT_EQ(1, ends);
}

TEST(RefCount, ReportsAnUnuseTooMany)
{
    Assertions assertions;
    std::int32_t left = -1;
    (new Thing([&](Thing & dying) { left = dying.unuse(); }))->unuse();
    EXPECT_EQ(Strings{ "fRefCount > 0 in .\\source\\refcount" }, assertions.take());
    EXPECT_EQ(0, left);
}

TEST(RefCount, WritesItsLifeToTheLog)
{
    LogLines lines;
    Level const memory("MEMORY", "Thing", 4);
    Level const counts("INTERFACE", "Thing", 5);
    auto * const thing = new Thing([](Thing &) {});
    std::string const whole = "Thing(007) " + KelpString(format_text("%x", reinterpret_cast<std::uintptr_t>(thing))).toUTF8();
    std::string const start = "c2011000 5 INTERFACE/Thing: " + whole;
    thing->use();
    // A change of level reaches live objects; each line has its own threshold.
    counts.fLevel = 4;
    thing->unuse();
    counts.fLevel = 6;
    thing->use();
    counts.fLevel = 5;
    thing->unuse();
    thing->unuse();
    memory.fLevel = 3;
    counts.fLevel = 4;
    (new Thing([](Thing &) {}))->unuse();
    EXPECT_EQ(lines.take(), (Strings{ "c2011000 4 MEMORY/Thing: " + whole + " created", start + " Refcount raised to 2",
                                "c2011000 6 INTERFACE/Thing: " + whole + " Refcount raised to 2", start + " Refcount lowered to 1",
                                start + " Refcount lowered to 0", "c2011000 4 MEMORY/Thing: " + whole + " destroyed" }));

    std::string const name(150, 'N');
    Level const cut("MEMORY", name.c_str(), 4);
    (new Thing([](Thing &) {}, KelpString(name.c_str())))->unuse();
    EXPECT_EQ(Strings(2, "c2011000 4 MEMORY/" + name + ": " + std::string(127, 'N')), lines.take());
}

// One counter for a general class and its dialect class; statements share one.
TEST(RefCount, NumbersTheObjectsOfAClass)
{
    Fixture f;
    MDXQueryGenerator & g = *f.generator;
    std::tuple<std::string, std::function<support::RefCount *()>, std::function<support::RefCount *()>> const rows[] = {
        { "MDXField", [] { return new General<MDXField>(KelpString("F")); }, [&] { return g.GenerateField("F"); } },
        { "MDXSet", [] { return new General<MDXSet>; }, [&] { return g.GenerateSet(); } },
        { "MDXValue", [] { return new General<MDXValue>(1); }, [&] { return g.GenerateValue(1); } },
        { "MDXTuple", [] { return new General<MDXTuple>; }, [&] { return g.GenerateTuple(); } },
        { "MDXMemberProperty", [] { return new MDXMemberProperty("a", "b"); }, [&] { return g.GenerateMemberProperty("a", "b"); } },
        { "MDXQuery", [&] { return g.GenerateQuery(MDXQuery::QT_SELECT, nullptr); },
            [&] { return g.GenerateQuery(MDXQuery::QT_DROP, nullptr); } },
    };
    for (auto const & [name, first, second] : rows) {
        LogLines lines;
        Level const memory("MEMORY", name.c_str(), 4);
        RefPtr<support::RefCount> const objects[] = { RefPtr(first()), RefPtr(second()) };
        std::string const start = "c2011000 4 MEMORY/" + name + ": " + name + "(";
        ASSERT_EQ(2u, lines.fAll.size()) << name;
        ASSERT_EQ(start + start, lines.fAll[0].substr(0, start.size()) + lines.fAll[1].substr(0, start.size()));
        EXPECT_EQ(std::stoi(lines.fAll[0].substr(start.size())) + 1, std::stoi(lines.fAll[1].substr(start.size()))) << name;
    }
}

TEST(RefPtr, TakesAndGivesBack)
{
    Fixture f;
    {
        RefPtr<MDXSet> const held = hold(f.set);
        RefPtr<MDXSet> copy(held);
        RefPtr<MDXSet> & same = copy;
        copy = same;
        EXPECT_EQ(3, count_of(*f.set));
        copy = hold(f.other);
        EXPECT_EQ(2, count_of(*f.set));
        copy = f.set; // brings its reference along
        f.set->use();
        EXPECT_EQ(3, count_of(*f.set));
        EXPECT_EQ(1, count_of(*f.other));
    }
    EXPECT_EQ(1, count_of(*f.set));
    EXPECT_FALSE(hold<MDXSet>(nullptr));
}

TEST(RefCount, ObjectsMadeOnEightThreads)
{
    Fixture f;
    LogLines lines;
    Level const memory("MEMORY", "MDXValue", 4);
    on_eight_threads([&f] {
        for (int round = 0; round < 100; ++round)
            f.generator->GenerateValue(round)->unuse();
    });
    std::set<std::string> ids;
    for (std::string const & line : lines.fAll)
        ids.insert(line.substr(0, line.find(')')));
    EXPECT_EQ(1600u, lines.fAll.size());
    EXPECT_EQ(800u, ids.size());
}
