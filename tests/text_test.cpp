#include "allocations.h"
#include "fixture.h"

#include <odbomodule/text.h>

using namespace mdx_text;

static std::size_t allocations_of(std::function<void()> const & work)
{
    std::size_t const before = gAllocations;
    work();
    return gAllocations - before;
}

// Has the fields of an expression that rewrite() uses.
struct Expression {
    KelpString fText, fQuotedText;
    bool fQuotedTextValid = false;
};

TEST(Text, TemplatesTakeTheirTextsAsTheyAre)
{
    KelpString const a("[a]");
    Expression e{ "{A}", {} };
    for (int round = 0; round < 40; ++round) { // with and without room in the old buffer
        KelpString const old = e.fText;
        e.fQuotedTextValid = true;
        EXPECT_EQ(&e, rewrite<u"F( $2, $3, $1, $2)">(&e, { e.fText, decimal(round), a }));
        EXPECT_EQ(mdx<u"F( $2, $3, $1, $2)">({ old, decimal(round), a }), e.fText);
        EXPECT_FALSE(e.fQuotedTextValid);
    }
    rewrite<u"only this">(&e);
    e.fText.reserve(100);
    rewrite<u"$1-$1">(&e, { e.fText });
    EXPECT_EQ(KelpString("only this-only this"), e.fText);
}

TEST(Text, TakesOneAllocation)
{
    Fixture f(kDialect);
    KelpString const member("[Store].[Geography].[All Stores].[O'Brien & Sons]");
    KelpString text;
    EXPECT_EQ(1u, allocations_of([&] { text = mdx<u"{ $1, $1 }.ITEM($2) $1">({ member, decimal(123456789) }); }));
    f.set->TakeName(member);
    EXPECT_GE(1u, allocations_of([&] { f.set->DrillUp(member); }));
    f.set->getQuotedText();
    EXPECT_GE(1u, allocations_of([&] { f.set->getQuotedText(); })); // a copy of what was kept
    // In a chain of wraps, most wraps fit into the buffer.
    EXPECT_GE(20u, allocations_of([&] {
        for (int i = 0; i < 1000; ++i)
            f.value->ReverseSign();
    }));
}
