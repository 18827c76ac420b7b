#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_tuple.h"

#include <algorithm>

MDXSet * MDXSet::TakeSubset(std::int32_t start, std::int32_t count)
{
    fQuotedTextValid = false;
    if (count > -1)
        rewrite(fText, "SUBSET( ", fText, ", ", decimal(start), ", ", decimal(count), " ) ");
    else
        rewrite(fText, "SUBSET( ", fText, ", ", decimal(start), " ) ");
    return this;
}

// Start: the lower rank less 1. Count: the difference of the ranks plus 1. The rank is spelled in three ways.
MDXSet * MDXSet::TakeSubset(MDXTuple const * first, MDXTuple const * second)
{
    fQuotedTextValid = false;
    KelpString const & s = fText;
    KelpString const a = first->getText();
    KelpString const b = second->getText();
    fText = concat("SUBSET( ", s, ", IIF( RANK( ", a, ", ", s, " ) < RANK( ", b, ", ", s, " ), RANK(", a, ", ", s,
        " ) - 1, RANK( ", b, ", ", s, " ) - 1) , IIF( RANK ( ", a, ", ", s, " ) < RANK( ", b, ", ", s, " ), RANK(",
        b, ", ", s, " ) - RANK(", a, ", ", s, " ) + 1, RANK(", a, ", ", s, " ) - RANK(", b, ", ", s, " ) + 1 ) )");
    return this;
}

// P is the start, held at the first member of the level where `lo` would go beyond it; Q less P is the count. The
// three IIF forms of P differ in their blanks.
MDXSet * MDXSet::TakeSubset(MDXTuple const * anchor, std::int32_t offset1, std::int32_t offset2)
{
    fQuotedTextValid = false;
    std::int64_t const lo = std::min(offset1, offset2);
    std::int64_t const hi = std::max(offset1, offset2);
    KelpString const member = anchor->getText();
    KelpString const level = concat("ADDCALCULATEDMEMBERS( ", member, ".LEVEL.MEMBERS )");
    KelpString const rank = concat("RANK( ", member, ", ", level, " )");
    KelpString const d = concat(rank, " - ", decimal(-lo));
    KelpString const e = concat(rank, " - ", decimal(-hi));

    KelpString p;
    KelpString q;
    if (lo >= 0) {
        p = concat("(", rank, " + ", decimal(lo), " - 1 )");
        q = concat(rank, " + ", decimal(hi));
    } else if (hi < 0) {
        p = concat("IIF( ", d, " > 0, ", d, " - 1, 0 ) ");
        q = concat("IIF( ", e, " > 0,", e, ", 0 ) ");
    } else if (hi == 0) {
        p = concat("IIF( ", d, " > 0, ", d, " -1, 0 ) ");
        q = rank;
    } else {
        p = concat("IIF( ", d, " > 0, ", d, " -1 , 0 ) ");
        q = concat(rank, " + ", decimal(hi));
    }
    fText = concat("SUBSET( ", level, ", ", p, ", ", q, " - ", p, " ) ");
    return this;
}

MDXSet * MDXSet::Rank(MDXField const * field, MDXSet const * set)
{
    fQuotedTextValid = false;
    KelpString const member = field->getText();
    fText = concat("Rank(", member, ",", set->getText(), ")");
    return this;
}

MDXSet * MDXSet::TakeRank(MDXField const * field)
{
    fQuotedTextValid = false;
    rewrite(fText, "Rank(", field->getText(), ",", fText, ")");
    return this;
}

MDXSet * MDXSet::generate(KelpString const & first, KelpString const & second)
{
    fQuotedTextValid = false;
    fText = concat("Generate( ", first, ", ", second, " ) ");
    return this;
}
