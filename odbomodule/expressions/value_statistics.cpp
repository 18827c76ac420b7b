#include "odbomodule/expressions/mdx_value.h"

#include "odbomodule/base/text.h"
#include "odbomodule/sets/mdx_set.h"

// The texts are built in place, one piece after the other: a value that is its own argument reads what there is.

void MDXValue::add_last_argument(MDXValue const * value)
{
    if (value != nullptr) {
        append(fText, ", ");
        append(fText, value->getText());
    }
    append(fText, " ) ");
}

MDXValue * MDXValue::take_statistic(
    char const * keyword, MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    fQuotedTextValid = false;
    fText = keyword;
    append(fText, "(");
    append(fText, set->getText());
    append(fText, ", ");
    append(fText, first->getText());
    add_last_argument(second);
    return this;
}

MDXValue * MDXValue::TakeCovariance(
    MDXSet const * set, MDXValue const * first, MDXValue const * second, bool unbiased)
{
    return take_statistic(unbiased ? "COVARIANCEN" : "COVARIANCE", set, first, second);
}

MDXValue * MDXValue::TakeLinRegVariance(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return take_statistic("LINREGVARIANCE", set, first, second);
}

MDXValue * MDXValue::TakeLinRegR2(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return take_statistic("LINREGR2", set, first, second);
}

MDXValue * MDXValue::TakeLinRegSlope(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return take_statistic("LINREGSLOPE", set, first, second);
}

MDXValue * MDXValue::TakeLinRegIntercept(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return take_statistic("LINREGINTERCEPT", set, first, second);
}

MDXValue * MDXValue::TakeLinRegPoint(
    MDXValue const * at, MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    fQuotedTextValid = false;
    fText = "LINREGPOINT";
    append(fText, "(");
    append(fText, at->getText());
    append(fText, ", ");
    append(fText, set->getText());
    append(fText, ", ");
    append(fText, first->getText());
    add_last_argument(second);
    return this;
}

MDXValue * MDXValue::TakeCorrelation(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return take_statistic("CORRELATION", set, first, second);
}
