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
[[gnu::noinline]] void operator delete(void * memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void * memory, std::size_t) noexcept
{
    std::free(memory);
}

static std::size_t allocations_of(std::function<void()> const & work)
{
    std::size_t const before = gAllocations;
    work();
    return gAllocations - before;
}

// As an expression, for what rewrites one.
struct Expression {
    KelpString fText, fQuotedText;
    bool fQuotedTextValid = false;
};

TEST(Text, RowsTakeTheirTextsAsTheyAre)
{
    KelpString const a("[a]");
    EXPECT_EQ(KelpString("-5, [a][a]b"), mdx<u"$2, $1$1$3">({ a, decimal(-5), std::u16string_view(u"b") }));
    EXPECT_EQ(KelpString("-2147483649-9223372036854775808"), mdx<u"$1$2">({ decimal(std::int64_t{ INT32_MIN } - 1), decimal(INT64_MIN) }));
    KelpString grown("x");
    append<u", $1">(grown, { a });
    append<u" }">(grown);
    EXPECT_EQ(KelpString("x, [a] }"), grown);

    Expression e{ "{A}", {} };
    for (int round = 0; round < 40; ++round) { // with and without room in the old buffer
        KelpString const old = e.fText;
        e.fQuotedTextValid = true;
        EXPECT_EQ(&e, rewrite<u"F( $2, $1, $2)">(&e, { e.fText, decimal(round) }));
        EXPECT_EQ(mdx<u"F( $2, $1, $2)">({ old, decimal(round) }), e.fText);
        EXPECT_FALSE(e.fQuotedTextValid);
    }
    rewrite<u"only this">(&e);
    e.fText.reserve(100);
    rewrite<u"$1-$1">(&e, { e.fText });
    EXPECT_EQ(KelpString("only this-only this"), e.fText);
}

TEST(Text, OneAllocationForAText)
{
    Fixture f(kDialect);
    KelpString const member("[Store].[Geography].[All Stores].[O'Brien & Sons]");
    KelpString text;
    EXPECT_EQ(1u, allocations_of([&] { text = mdx<u"{ $1, $1 }.ITEM($2) $1">({ member, decimal(123456789) }); }));
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
static void fail_each(char const * name, MDXSet * (*call)(Fixture &))
{
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

TEST(Text, AFailedAllocationLeavesTheOldText)
{
    fail_each(CALL(*f.set *= *f.other));
    fail_each(CALL(f.set->TakeSubset(f.tuple, f.single)));
    fail_each(CALL(f.set->TakeAncestorsOfMember(KelpString("[M]"), true, 5)));
    fail_each(CALL(f.set->TakeFilter(f.value)));
    fail_each(CALL(f.makeField(f.set->getText())->unuse(), f.set)); // nor does it leave anything behind, which a leak checker sees
}

#endif
