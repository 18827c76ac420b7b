#include "tests/fixture.h"

#include "odbomodule/base/text.h"

#include <cstdlib>
#include <new>

// Every allocation that the test makes on this thread goes through here, so that it can be counted or fail: also those
// of the libraries, except on Windows, where a DLL brings its own.
static thread_local std::size_t gAllocations = 0;
static thread_local std::size_t gFailAt = 0; // 1 fails the next one; 0 none

[[gnu::noinline]] void * operator new(std::size_t size) // since gcc takes an inlined pair for a mismatch
{
    ++gAllocations;
    bool const fails = gFailAt > 0 && --gFailAt == 0;
    void * const memory = fails ? nullptr : std::malloc(size + (size == 0));
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void * memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void * memory, std::size_t) noexcept { std::free(memory); }

static std::size_t allocations_of(std::function<void()> const & work) {
    std::size_t const before = gAllocations;
    work();
    return gAllocations - before;
}

TEST(Text, PiecesAreJoinedAndRewrittenAsTheyAre) {
    EXPECT_EQ(KelpString("a -5, [b]"), concat("a ", decimal(-5), KelpString(", "), std::string_view("[b]")));
    EXPECT_EQ(KelpString("-2147483649-9223372036854775808"), concat(decimal(std::int64_t{ INT32_MIN } - 1), decimal(INT64_MIN)));
    KelpString text("{A}");
    for (int round = 0; round < 40; ++round) { // with and without room in the old buffer
        KelpString const old = text;
        rewrite(text, "F( ", text, ", ", decimal(round), ")");
        EXPECT_EQ(concat("F( ", old, ", ", decimal(round), ")"), text);
    }
    rewrite(text, "only this");
    text.reserve(100);
    rewrite(text, text, "-", text);
    EXPECT_EQ(KelpString("only this-only this"), text);
}

TEST(Text, OneAllocationForAText) {
    Fixture f(kDialect);
    KelpString const member("[Store].[Geography].[All Stores].[O'Brien & Sons]");
    KelpString text;
    EXPECT_EQ(1u, allocations_of([&] { text = concat("{ ", member, ", ", member, " }.ITEM(", decimal(123456789), ") ", member); }));
    f.set->TakeName(member);
    EXPECT_GE(1u, allocations_of([&] { f.set->DrillUp(member); }));
    // A chain of wraps finds room most of the time.
    EXPECT_GE(20u, allocations_of([&] {
        for (int i = 0; i < 1000; ++i)
            f.value->ReverseSign();
    }));
}

#if !defined(_WIN32) // where the libraries' allocations do not fail by gFailAt

// Makes each allocation that an operation could want fail in turn, until it gets all that it wants.
static void fail_each(char const * name, MDXSet * (*call)(Fixture &)) {
    for (std::size_t nth = 1; nth < 100; ++nth) {
        Fixture f(kDialect);
        f.set->TakeName(KelpString("a set whose text is too long for a string's own room"));
        KelpString const old = f.set->getText();
        gFailAt = nth;
        try {
            call(f);
            EXPECT_TRUE(std::exchange(gFailAt, 0u) > 0 && nth > 1) << name;
            return;
        } catch (std::bad_alloc const &) {
            EXPECT_EQ(old, f.set->getText()) << name;
        }
    }
    ADD_FAILURE() << name << " goes on failing";
}

TEST(Text, AFailedAllocationLeavesTheOldText) {
    fail_each(CALL(*f.set *= *f.other));
    fail_each(CALL(f.set->TakeSubset(f.tuple, f.single)));
    fail_each(CALL(f.set->TakeAncestorsOfMember(KelpString("[M]"), true, 5)));
    fail_each(CALL(f.set->TakeFilter(f.value)));
    fail_each(CALL(f.makeField(f.set->getText())->unuse(), f.set)); // nor does it leave anything behind, which a leak checker sees
}

#endif
