#include "fixture.h"

#include "host/core_log.h"

#include <functional>
#include <set>
#include <thread>

namespace {

// Collects what the log gets.
struct Lines {
    struct Line {
        std::uint32_t code;
        std::int32_t level;
        std::string module;
        std::string subModule;
        std::string text;
    };
    std::vector<Line> fAll;

    Lines()
    {
        support_dll::getLogObject()->setSink(
            [](void * context, std::uint32_t code, std::int32_t level, KelpString const & module, KelpString const & subModule, KelpString const & line) {
                static_cast<Lines *>(context)->fAll.push_back({ code, level, module.toUTF8(), subModule.toUTF8(), line.toUTF8() });
            },
            this);
    }
    ~Lines() { support_dll::getLogObject()->setSink(nullptr, nullptr); }

    std::string take()
    {
        std::string text;
        for (Line const & line : fAll)
            text += line.text + "\n";
        fAll.clear();
        return text;
    }
};

// Sets a level for the length of a scope.
struct Level {
    CoreLog::VerbosityType & fLevel;

    Level(char const * module, char const * subModule, std::int32_t level) : fLevel(*support_dll::getLogObject()->getModuleVerbosity(module, subModule)) { fLevel = level; }
    ~Level() { fLevel = 0; }
};

std::string gAssertions;

void collect_assertion(char const * expression, char const * file)
{
    gAssertions += std::string(expression) + " in " + file + "\n";
}

struct Assertions {
    support_dll::AssertionHandler fBefore = support_dll::setAssertionHandler(collect_assertion);

    Assertions() { gAssertions.clear(); }
    ~Assertions() { support_dll::setAssertionHandler(fBefore); }
};

class Thing final : public support::RefCount {
public:
    explicit Thing(std::function<void(Thing &)> atEnd, KelpString const & name = "Thing", std::int32_t id = 7) : RefCount(name, id), fAtEnd(std::move(atEnd)) {}
    ~Thing() override { fAtEnd(*this); }

private:
    std::function<void(Thing &)> fAtEnd;
};

std::string hexadecimal(void const * address)
{
    char text[32];
    std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address)));
    return text;
}

}

TEST(RefCount, CountsHolders)
{
    bool ended = false;
    support::RefCount * const thing = new Thing([&](Thing &) { ended = true; });
    EXPECT_EQ(2, thing->use());
    EXPECT_EQ(3, thing->use());
    EXPECT_EQ(2, thing->unuse());
    EXPECT_EQ(1, thing->unuse());
    EXPECT_FALSE(ended);
    EXPECT_EQ(0, thing->unuse());
    EXPECT_TRUE(ended);
}

TEST(RefCount, ReportsWhatIsNoOperation)
{
    Assertions const assertions;
    std::int32_t left = -1;
    (new Thing([&](Thing & dying) { left = dying.unuse(); }))->unuse();
    EXPECT_EQ("fRefCount > 0 in .\\source\\refcount\n", gAssertions);
    EXPECT_EQ(0, left);

    gAssertions.clear();
    Fixture f;
    std::int32_t const count = count_of(*f.field);
    static_cast<support::RefCount &>(*f.field) = *f.second;
    EXPECT_EQ("! \"support::RefCount::operator=\" in .\\source\\refcount\n", gAssertions);
    EXPECT_EQ(count, count_of(*f.field));
}

TEST(RefCount, WritesItsLifeToTheLog)
{
    Lines lines;
    {
        Level const memory("MEMORY", "Thing", 4);
        Level const interface("INTERFACE", "Thing", 5);
        auto * const thing = new Thing([](Thing &) {});
        std::string const address = hexadecimal(thing);
        EXPECT_EQ("Thing(007) " + address + " created\n", lines.take());
        thing->use();
        ASSERT_EQ(1u, lines.fAll.size());
        EXPECT_EQ(0xC2011000u, lines.fAll[0].code);
        EXPECT_EQ(5, lines.fAll[0].level);
        EXPECT_EQ("INTERFACE", lines.fAll[0].module);
        EXPECT_EQ("Thing", lines.fAll[0].subModule);
        EXPECT_EQ("Thing(007) " + address + " Refcount raised to 2\n", lines.take());

        // A change of level reaches live objects; each line has its own threshold.
        interface.fLevel = 4;
        thing->unuse();
        EXPECT_EQ("", lines.take());
        interface.fLevel = 6;
        memory.fLevel = 3;
        thing->unuse();
        EXPECT_EQ("Thing(007) " + address + " Refcount lowered to 0\n", lines.take());
    }
    {
        Level const memory("MEMORY", std::string(150, 'N').c_str(), 4);
        (new Thing([](Thing &) {}, KelpString(std::string(150, 'N').c_str())))->unuse();
        EXPECT_EQ(std::string(127, 'N') + "\n" + std::string(127, 'N') + "\n", lines.take());
    }
    (new Thing([](Thing &) {}))->unuse();
    EXPECT_EQ("", lines.take());
}

// One counter for a general class and its dialect class; statements share one.
TEST(RefCount, NumbersTheObjectsOfAClass)
{
    Fixture f;
    std::vector<std::string> names;
    auto const next_two = [&](char const * name, auto first, auto second) {
        Lines lines;
        Level const memory("MEMORY", name, 4);
        auto * const a = first();
        auto * const b = second();
        int id = 0;
        char text[64];
        ASSERT_EQ(2u, lines.fAll.size()) << name;
        ASSERT_EQ(1, std::sscanf(lines.fAll[0].text.c_str() + std::string(name).size(), "(%d)", &id)) << name;
        std::snprintf(text, sizeof text, "%s(%03d) %s created", name, id + 1, hexadecimal(b).c_str());
        EXPECT_EQ(text, lines.fAll[1].text);
        a->unuse();
        b->unuse();
    };
    MDXQueryGenerator & g = *f.generator;
    next_two(
        "MDXField", [] { return new General<MDXField>(KelpString("F")); }, [&] { return g.GenerateField("F"); });
    next_two(
        "MDXSet", [] { return new General<MDXSet>; }, [&] { return g.GenerateSet(); });
    next_two(
        "MDXValue", [] { return new General<MDXValue>(1); }, [&] { return g.GenerateValue(1); });
    next_two(
        "MDXTuple", [] { return new General<MDXTuple>; }, [&] { return g.GenerateTuple(); });
    next_two(
        "MDXMemberProperty", [] { return new MDXMemberProperty("a", "b"); }, [&] { return g.GenerateMemberProperty("a", "b"); });
    next_two(
        "MDXQuery", [&] { return g.GenerateQuery(MDXQuery::QT_SELECT, nullptr); }, [&] { return g.GenerateQuery(MDXQuery::QT_DROP, nullptr); });
}

TEST(RefPtr, TakesAndGivesBack)
{
    Fixture f;
    MDXSet & set = *f.set;
    {
        RefPtr<MDXSet> const held = hold(&set);
        EXPECT_EQ(2, count_of(set));
        RefPtr<MDXSet> copy(held);
        EXPECT_EQ(3, count_of(set));
        RefPtr<MDXSet> & same = copy;
        copy = same;
        EXPECT_EQ(3, count_of(set));
        copy = hold(f.other.get());
        EXPECT_EQ(2, count_of(set));
        EXPECT_EQ(2, count_of(*f.other));
        set.use();
        copy = &set; // brings its reference along
        EXPECT_EQ(3, count_of(set));
        EXPECT_EQ(1, count_of(*f.other));
        copy = RefPtr<MDXSet>();
        EXPECT_FALSE(copy);
    }
    EXPECT_EQ(1, count_of(set));
    EXPECT_FALSE(hold<MDXSet>(nullptr));
}

TEST(RefCount, HoldersOnEightThreads)
{
    bool ended = false;
    auto * const thing = new Thing([&](Thing &) { ended = true; });
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        thing->use();
        threads.emplace_back([thing] {
            for (int round = 0; round < 2000; ++round) {
                thing->use();
                thing->unuse();
            }
            thing->unuse();
        });
    }
    for (std::thread & thread : threads)
        thread.join();
    EXPECT_FALSE(ended);
    EXPECT_EQ(0, thing->unuse());
    EXPECT_TRUE(ended);
}

TEST(RefCount, ObjectsMadeOnEightThreads)
{
    Fixture f;
    Lines lines;
    {
        Level const memory("MEMORY", "MDXValue", 4);
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&f] {
                for (int round = 0; round < 100; ++round)
                    f.generator->GenerateValue(round)->unuse();
            });
        }
        for (std::thread & thread : threads)
            thread.join();
    }
    std::set<std::string> ids;
    for (Lines::Line const & line : lines.fAll) {
        if (line.text.find("created") != std::string::npos)
            ids.insert(line.text.substr(0, line.text.find(' ')));
    }
    EXPECT_EQ(800u, ids.size());
}
