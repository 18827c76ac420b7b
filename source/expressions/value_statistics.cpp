#include "mdx_value.h"

#include "../sets/mdx_set.h"
#include "../text.h"

#include <string_view>

using namespace mdx_text;

// keyword(at, set, first, second ). A null `at` or `second` is left out. The text is written in place, so an
// argument that is `value` itself supplies the unfinished text.
static MDXValue * statistic(MDXValue * value, std::u16string_view keyword, MDXValue const * at, MDXSet const * set,
    MDXValue const * first, MDXValue const * second)
{
    rewrite(value, KelpString::Base(keyword));
    KelpString & text = TextFields::text(value);
    text += u"(";
    if (at != nullptr) {
        text += at->getText();
        text += u", ";
    }
    text += set->getText();
    text += u", ";
    text += first->getText();
    if (second != nullptr) {
        text += u", ";
        text += second->getText();
    }
    text += u" ) ";
    return value;
}

MDXValue * MDXValue::TakeCovariance(
    MDXSet const * set, MDXValue const * first, MDXValue const * second, bool unbiased)
{
    return statistic(this, unbiased ? u"COVARIANCEN" : u"COVARIANCE", nullptr, set, first, second);
}

MDXValue * MDXValue::TakeLinRegVariance(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic(this, u"LINREGVARIANCE", nullptr, set, first, second);
}

MDXValue * MDXValue::TakeLinRegR2(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic(this, u"LINREGR2", nullptr, set, first, second);
}

MDXValue * MDXValue::TakeLinRegSlope(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic(this, u"LINREGSLOPE", nullptr, set, first, second);
}

MDXValue * MDXValue::TakeLinRegIntercept(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic(this, u"LINREGINTERCEPT", nullptr, set, first, second);
}

MDXValue * MDXValue::TakeLinRegPoint(
    MDXValue const * at, MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic(this, u"LINREGPOINT", at, set, first, second);
}

MDXValue * MDXValue::TakeCorrelation(MDXSet const * set, MDXValue const * first, MDXValue const * second)
{
    return statistic(this, u"CORRELATION", nullptr, set, first, second);
}
