#include "fixture.h"

#include "host/core_log.h"

#include <functional>
#include <set>
#include <thread>

namespace {

using Strings = std::vector<std::string>;

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
    return KelpString(format_text("%x", reinterpret_cast<std::uintptr_t>(address))).toUTF8();
}

template <class Body>
void on_eight_threads(Body const & body)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(body);
    for (std::thread & thread : threads)
        thread.join();
}

}

TEST(RefCount, CountsHoldersOnEightThreads)
{
    bool ended = false;
    support::RefCount * const thing = new Thing([&](Thing &) { ended = true; });
    EXPECT_EQ(2, thing->use());
    EXPECT_EQ(3, thing->use());
    EXPECT_EQ(2, thing->unuse());
    on_eight_threads([thing] {
        for (int round = 0; round < 2000; ++round) {
            thing->use();
            thing->unuse();
        }
    });
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
    LogLines lines;
    {
        Level const memory("MEMORY", "Thing", 4);
        Level const counts("INTERFACE", "Thing", 5);
        auto * const thing = new Thing([](Thing &) {});
        std::string const address = hexadecimal(thing);
        thing->use();
        EXPECT_EQ((Strings{ "c2011000 4 MEMORY/Thing: Thing(007) " + address + " created", "c2011000 5 INTERFACE/Thing: Thing(007) " + address + " Refcount raised to 2" }),
            lines.take());

        // A change of level reaches live objects; each line has its own threshold.
        counts.fLevel = 4;
        thing->unuse();
        EXPECT_EQ(Strings{}, lines.take());
        counts.fLevel = 6;
        thing->unuse();
        EXPECT_EQ((Strings{ "c2011000 6 INTERFACE/Thing: Thing(007) " + address + " Refcount lowered to 0", "c2011000 4 MEMORY/Thing: Thing(007) " + address + " destroyed" }),
            lines.take());
        memory.fLevel = 3;
        (new Thing([](Thing &) {}))->unuse();
        EXPECT_EQ(1u, lines.take().size());
    }
    std::string const name(150, 'N');
    Level const memory("MEMORY", name.c_str(), 4);
    (new Thing([](Thing &) {}, KelpString(name.c_str())))->unuse();
    std::string const cut = "c2011000 4 MEMORY/" + name + ": " + std::string(127, 'N');
    EXPECT_EQ((Strings{ cut, cut }), lines.take());
}

// One counter for a general class and its dialect class; statements share one.
TEST(RefCount, NumbersTheObjectsOfAClass)
{
    using Objects = std::vector<support::RefCount *>;
    struct Row {
        std::string name;
        Objects (*makeTwo)(Fixture &);
    };
    Row const rows[] = {
        { "MDXField", CALL(Objects{ new General<MDXField>(KelpString("F")), f.generator->GenerateField("F") }) },
        { "MDXSet", CALL(Objects{ new General<MDXSet>, f.generator->GenerateSet() }) },
        { "MDXValue", CALL(Objects{ new General<MDXValue>(1), f.generator->GenerateValue(1) }) },
        { "MDXTuple", CALL(Objects{ new General<MDXTuple>, f.generator->GenerateTuple() }) },
        { "MDXMemberProperty", CALL(Objects{ new MDXMemberProperty("a", "b"), f.generator->GenerateMemberProperty("a", "b") }) },
        { "MDXQuery", CALL(Objects{ f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr), f.generator->GenerateQuery(MDXQuery::QT_DROP, nullptr) }) },
    };
    for (Row const & row : rows) {
        Fixture f;
        LogLines lines;
        Level const memory("MEMORY", row.name.c_str(), 4);
        Objects const objects = row.makeTwo(f);
        std::string const start = "c2011000 4 MEMORY/" + row.name + ": " + row.name + "(";
        ASSERT_EQ(2u, lines.fAll.size()) << row.name;
        ASSERT_EQ(start, lines.fAll[0].substr(0, start.size()));
        int const id = std::stoi(lines.fAll[0].substr(start.size())) + 1;
        EXPECT_EQ(start + (id < 10 ? "00" : id < 100 ? "0" : "") + std::to_string(id) + ") " + hexadecimal(objects[1]) + " created", lines.fAll[1]);
        objects[0]->unuse();
        objects[1]->unuse();
    }
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
