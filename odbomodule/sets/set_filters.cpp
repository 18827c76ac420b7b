#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/bad_enum.h"
#include "odbomodule/base/mdx_error.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_tuple.h"
#include "odbomodule/expressions/mdx_value.h"

#include <string_view>

static std::string_view sort_direction(std::int32_t direction)
{
    switch (direction) {
    case 0: return "ASC";
    case 1: return "DESC";
    case 2: return "BASC";
    case 3: return "BDESC";
    default: raise_bad_enum(direction, "Sort::direction");
    }
}

static std::string_view extremity_type(MDXSet::ExtremityType type)
{
    switch (type) {
    case MDXSet::Top: return "TOP";
    case MDXSet::Bottom: return "BOTTOM";
    default: raise_bad_enum(type, "ExtremityType");
    }
}

static std::string_view extremity_measure(MDXSet::ExtremityMeasure measure)
{
    switch (measure) {
    case MDXSet::Sum: return "SUM( ";
    case MDXSet::Count: return "COUNT( ";
    case MDXSet::Percent: return "PERCENT( ";
    default: raise_bad_enum(measure, "ExtremityMeasure");
    }
}

MDXSet * MDXSet::TakeFilter(MDXValue * condition)
{
    fQuotedTextValid = false;
    rewrite(fText, "FILTER( ", fText, ", ", condition->getText(), ")");
    return this;
}

MDXSet * MDXSet::TakeFilter(KelpString & condition)
{
    fQuotedTextValid = false;
    rewrite(fText, "FILTER( ", fText, ", ", condition, ")");
    return this;
}

MDXSet * MDXSet::TakeFilter(BRIM_o::Expression * condition, MDXTuple const * tuple)
{
    fQuotedTextValid = false;
    KelpString translated;
    translate_condition(translated, condition, tuple);
    rewrite(fText, "FILTER( ", fText, ", ", translated, ")");
    return this;
}

MDXSet * MDXSet::Filter(BRIM_o::Expression * expression, MDXTuple const * tuple)
{
    fQuotedTextValid = false;
    KelpString translated;
    translate_condition(translated, expression, tuple);
    fText = std::move(translated);
    return this;
}

MDXSet * MDXSet::Order(std::int32_t direction, MDXTuple const * key)
{
    fQuotedTextValid = false;
    std::string_view const name = sort_direction(direction);
    rewrite(fText, "ORDER( ", fText, ", ", key->getText(), ", ", name, " ) ");
    return this;
}

MDXSet * MDXSet::Order(std::int32_t direction, MDXValue const * key)
{
    fQuotedTextValid = false;
    std::string_view const name = sort_direction(direction);
    rewrite(fText, "ORDER( ", fText, ", ", key->getText(), ", ", name, " ) ");
    return this;
}

MDXSet * MDXSet::TakeExtremity(
    ExtremityType type, ExtremityMeasure measure, KelpString const & amount, MDXTuple const * tuple)
{
    fQuotedTextValid = false;
    std::string_view const direction = extremity_type(type);
    std::string_view const function = extremity_measure(measure);
    if (tuple != nullptr)
        rewrite(fText, direction, function, fText, ", ", amount, ", ", tuple->getText(), " ) ");
    else if (measure == Count)
        rewrite(fText, direction, function, fText, ", ", amount, " ) ");
    else
        throw MDXError(MDX_ERR_MISSING_TUPLE);
    return this;
}
