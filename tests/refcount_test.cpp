#include "allocations.h"
#include "fixture.h"

namespace {

struct Thing final : support::RefCount {
    explicit Thing(KelpString const & name = "Thing") : RefCount(name, 7) {}
};

}

TEST(RefCount, DropsALineForWhichMemoryRunsOut)
{
    if (!kAllocationsFail)
        GTEST_SKIP() << "a DLL has its own operator new";
    ScopedLevel const counts("INTERFACE", "Thing", 5);
    LogLines lines;
    auto * const thing = new Thing;
    EXPECT_FALSE(fails_at_allocation(1, [thing] { EXPECT_EQ(2, thing->use()); }));
    EXPECT_EQ(Strings{}, lines.take());
    EXPECT_EQ(1, thing->unuse());
    EXPECT_EQ(0, thing->unuse());
}

// Its operator delete keeps the storage, as a pool does.
struct KeptThing final : support::RefCount {
    KeptThing() : RefCount("Thing", 7) {}
    static void operator delete(void * storage) { fEnded = storage; }
    inline static void * fEnded = nullptr;
};

TEST(RefCount, ReportsAnUnuseAfterTheEndIfTheStorageIsKept)
{
#ifdef SANITIZED
    GTEST_SKIP() << "the sanitizers report the call first";
#endif
    Assertions assertions;
    support::RefCount * const thing = new KeptThing;
    EXPECT_EQ(0, thing->unuse());
    EXPECT_EQ(0, thing->unuse());
    EXPECT_EQ(Strings{ "fRefCount > 0 in .\\source\\refcount" }, assertions.take());
    ::operator delete(std::exchange(KeptThing::fEnded, nullptr));
}

TEST(RefCount, WritesItsLifeToTheLog)
{
    LogLines lines;
    ScopedLevel const memory("MEMORY", "Thing", 4);
    ScopedLevel const counts("INTERFACE", "Thing", 5);
    auto * const thing = new Thing;
    thing->use();
    // A change of level reaches live objects; each line has its own threshold.
    counts.fLevel = 4;
    thing->unuse();
    count_of(*thing);
    counts.fLevel = 6;
    thing->use();
    counts.fLevel = 5;
    thing->unuse();
    thing->unuse();
    memory.fLevel = 3;
    counts.fLevel = 4;
    (new Thing)->unuse();
    std::string const address = address_of(thing);
    Strings const want = {
        "c2011000 4 MEMORY/Thing: Thing(007) " + address + " created",
        "c2011000 5 INTERFACE/Thing: Thing(007) " + address + " Refcount raised to 2",
        "c2011000 6 INTERFACE/Thing: Thing(007) " + address + " Refcount raised to 2",
        "c2011000 5 INTERFACE/Thing: Thing(007) " + address + " Refcount lowered to 1",
        "c2011000 5 INTERFACE/Thing: Thing(007) " + address + " Refcount lowered to 0",
        "c2011000 4 MEMORY/Thing: Thing(007) " + address + " destroyed",
    };
    EXPECT_EQ(want, lines.take());

    std::string const name(150, 'N'); // too long for a line, which is cut
    ScopedLevel const namedMemory("MEMORY", name.c_str(), 4);
    (new Thing(name.c_str()))->unuse();
    EXPECT_EQ(Strings(2, "c2011000 4 MEMORY/" + name + ": " + std::string(127, 'N')), lines.take());
}

// The base RefCount is constructed first. If reading an argument then throws, the log still has both lines.
TEST(RefCount, LogsAnObjectWhoseConstructorThrows)
{
    Fixture f;
    LogLines lines;
    ScopedLevel const memory("MEMORY", "MDXSet", 4);
    ScopedLevel const fields("MEMORY", "MDXField", 4);
    EXPECT_EQ(raises(MDX_ERR_EMPTY_TUPLE), error_of([&] { return f.generator->GenerateSet(std::vector{ f.empty }); }));
    gOnHostCall = [] { throw std::bad_alloc(); };
    EXPECT_EQ(kNoMemory, error_of([&] { return f.generator->GenerateSet(&f.h); }));
    EXPECT_EQ(kNoMemory, error_of([&] { return f.generator->GenerateField(&f.member); }));
    gOnHostCall = nullptr;
    std::string ends;
    for (std::string const & line : lines.fAll)
        ends += line.substr(line.rfind(' '));
    EXPECT_EQ(" created destroyed created destroyed created destroyed", ends);
}

// The statement takes over the first reference to its new slicer tuple, so no change of the count is logged.
TEST(RefCount, TellsNothingOfANewSlicer)
{
    Fixture f;
    RefPtr<MDXQuery> const query(f.generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr));
    LogLines lines;
    ScopedLevel const counts("INTERFACE", "MDXTuple", 5);
    static_cast<MDXSelectQuery &>(*query).AddSlicerSpecification(f.field);
    EXPECT_EQ(Strings{}, lines.take());
}

TEST(RefPtr, TakesAndGivesBack)
{
    Fixture f;
    {
        RefPtr<MDXSet> const held = hold(f.set);
        RefPtr<MDXSet> copy(held);
        RefPtr<MDXSet> & same = copy;
        copy = same;
        copy = std::move(same);
        EXPECT_EQ(3, count_of(*f.set));
        copy = hold(f.other);
        EXPECT_EQ(2, count_of(*f.set));
        f.set->use();
        copy = f.set; // takes over that reference
        EXPECT_EQ(1, count_of(*f.other));
        RefPtr<MDXSet> moved(std::move(copy)); // without a count
        EXPECT_TRUE(moved && !copy);
        copy = std::move(moved);
        EXPECT_TRUE(copy && !moved);
        EXPECT_EQ(3, count_of(*f.set));
        moved = held;
        EXPECT_EQ(4, count_of(*f.set));
    }
    EXPECT_EQ(1, count_of(*f.set));
    RefPtr<MDXSet> copy(hold<MDXSet>(nullptr));
    EXPECT_FALSE(copy = RefPtr<MDXSet>());
    RefPtr<MDXSet> const none(copy);
    RefPtr<support::RefCount> const base(none);
    EXPECT_FALSE((copy = none) || base);
}

TEST(RefPtr, TakesAReferenceThatItsOwnObjectHolds)
{
    struct Link final : support::RefCount {
        RefPtr<Link> fNext;
        Link() : RefCount("Link", 0) {}
    };
    RefPtr<Link> link(new Link);
    link->fNext = RefPtr<Link>(new Link);
    link = link->fNext; // which ends the object that held it
    EXPECT_EQ(1, count_of(*link));
}
