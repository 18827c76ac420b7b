#include "mdx_set.h"

#include "../expressions/mdx_field.h"
#include "../expressions/mdx_tuple.h"
#include "../text.h"

#include <algorithm>

using namespace mdx_text;

MDXSet * MDXSet::TakeSubset(std::int32_t start, std::int32_t count)
{
    if (count > -1)
        return rewrite<u"SUBSET( $1, $2, $3 ) ">(this, { fText, decimal(start), decimal(count) });
    return rewrite<u"SUBSET( $1, $2 ) ">(this, { fText, decimal(start) });
}

// The start is the lower rank minus 1, the count is the difference of the ranks plus 1. The calls of RANK differ in
// their blanks on purpose.
MDXSet * MDXSet::TakeSubset(MDXTuple const * first, MDXTuple const * second)
{
    return rewrite<u"SUBSET( $1"
                   u", IIF( RANK( $2, $1 ) < RANK( $3, $1 ), RANK($2, $1 ) - 1, RANK( $3, $1 ) - 1) "
                   u", IIF( RANK ( $2, $1 ) < RANK( $3, $1 )"
                   u", RANK($3, $1 ) - RANK($2, $1 ) + 1, RANK($2, $1 ) - RANK($3, $1 ) + 1 ) )">(
        this, { fText, first->getText(), second->getText() });
}

// The subset goes from the lower offset to the higher one, counted from the rank of the anchor. If the lower one is
// before the first member of the level, `start` is that member. The count is `end` minus `start`. The three IIF
// forms of `start` differ in their blanks.
MDXSet * MDXSet::TakeSubset(MDXTuple const * anchor, std::int32_t offset1, std::int32_t offset2)
{
    std::int64_t const low = std::min(offset1, offset2);
    std::int64_t const high = std::max(offset1, offset2);
    KelpString const member = anchor->getText();
    KelpString const level = mdx<u"ADDCALCULATEDMEMBERS( $1.LEVEL.MEMBERS )">({ member });
    KelpString const rank = mdx<u"RANK( $1, $2 )">({ member, level });

    KelpString start;
    KelpString end;
    if (low >= 0) {
        start = mdx<u"($1 + $2 - 1 )">({ rank, decimal(low) });
        end = mdx<u"$1 + $2">({ rank, decimal(high) });
    } else if (high < 0) {
        start = mdx<u"IIF( $1 - $2 > 0, $1 - $2 - 1, 0 ) ">({ rank, decimal(-low) });
        end = mdx<u"IIF( $1 - $2 > 0,$1 - $2, 0 ) ">({ rank, decimal(-high) });
    } else if (high == 0) {
        start = mdx<u"IIF( $1 - $2 > 0, $1 - $2 -1, 0 ) ">({ rank, decimal(-low) });
        end = rank;
    } else {
        start = mdx<u"IIF( $1 - $2 > 0, $1 - $2 -1 , 0 ) ">({ rank, decimal(-low) });
        end = mdx<u"$1 + $2">({ rank, decimal(high) });
    }
    return rewrite<u"SUBSET( $1, $2, $3 - $2 ) ">(this, { level, start, end });
}

MDXSet * MDXSet::Rank(MDXField const * field, MDXSet const * set)
{
    return rewrite<u"Rank($1,$2)">(this, { field->getText(), set->getText() });
}

MDXSet * MDXSet::TakeRank(MDXField const * field)
{
    return rewrite<u"Rank($1,$2)">(this, { field->getText(), fText });
}

MDXSet * MDXSet::generate(KelpString const & first, KelpString const & second)
{
    return rewrite<u"Generate( $1, $2 ) ">(this, { first, second });
}
