#include "mdx_value.h"

#include "../text.h"
#include "../sets/mdx_set.h"

// The family on a set: its row with the last value, and without.
template <compiled::Literal whole, compiled::Literal withoutLast>
static MDXValue * statistic(MDXValue * value, MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return second != nullptr ? rewrite_in_turn<whole>(value, set, first, second)
                             : rewrite_in_turn<withoutLast>(value, set, first);
}

MDXValue * MDXValue::TakeCovariance(
    MDXSet const * set, MDXValue const * first, MDXValue const * second, bool unbiased)
{
    if (unbiased)
        return statistic<u"COVARIANCEN($1, $2, $3 ) ", u"COVARIANCEN($1, $2 ) ">(this, set, first, second);
    return statistic<u"COVARIANCE($1, $2, $3 ) ", u"COVARIANCE($1, $2 ) ">(this, set, first, second);
}

MDXValue * MDXValue::TakeLinRegVariance(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic<u"LINREGVARIANCE($1, $2, $3 ) ", u"LINREGVARIANCE($1, $2 ) ">(this, set, first, second);
}

MDXValue * MDXValue::TakeLinRegR2(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic<u"LINREGR2($1, $2, $3 ) ", u"LINREGR2($1, $2 ) ">(this, set, first, second);
}

MDXValue * MDXValue::TakeLinRegSlope(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic<u"LINREGSLOPE($1, $2, $3 ) ", u"LINREGSLOPE($1, $2 ) ">(this, set, first, second);
}

MDXValue * MDXValue::TakeLinRegIntercept(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic<u"LINREGINTERCEPT($1, $2, $3 ) ", u"LINREGINTERCEPT($1, $2 ) ">(this, set, first, second);
}

MDXValue * MDXValue::TakeLinRegPoint(
    MDXValue const * at, MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    if (second != nullptr)
        return rewrite_in_turn<u"LINREGPOINT($1, $2, $3, $4 ) ">(this, at, set, first, second);
    return rewrite_in_turn<u"LINREGPOINT($1, $2, $3 ) ">(this, at, set, first);
}

MDXValue * MDXValue::TakeCorrelation(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic<u"CORRELATION($1, $2, $3 ) ", u"CORRELATION($1, $2 ) ">(this, set, first, second);
}
