#include "mdx_set.h"

#include "../expressions/mdx_tuple.h"
#include "../expressions/mdx_value.h"
#include "../frame/mdx_error.h"
#include "../text.h"

#include <string_view>
#include <utility>

using namespace mdx_text;

MDXSet * MDXSet::TakeFilter(MDXValue * condition)
{
    return rewrite<u"FILTER( $1, $2)">(this, { fText, condition->getText() });
}

MDXSet * MDXSet::TakeFilter(KelpString & condition)
{
    return rewrite<u"FILTER( $1, $2)">(this, { fText, condition });
}

MDXSet * MDXSet::TakeFilter(BRIM_o::Expression * condition, MDXTuple const * tuple)
{
    KelpString translated;
    translate_condition(translated, condition, tuple);
    return rewrite<u"FILTER( $1, $2)">(this, { fText, translated });
}

MDXSet * MDXSet::Filter(BRIM_o::Expression * expression, MDXTuple const * tuple)
{
    KelpString translated;
    translate_condition(translated, expression, tuple);
    return rewrite(this, std::move(translated));
}

static std::u16string_view sort_direction(std::int32_t direction)
{
    switch (direction) {
    case 0: return u"ASC";
    case 1: return u"DESC";
    case 2: return u"BASC";
    case 3: return u"BDESC";
    default: raise_bad_enum(direction, "Sort::direction");
    }
}

MDXSet * MDXSet::Order(std::int32_t direction, MDXTuple const * key)
{
    std::u16string_view const name = sort_direction(direction);
    return rewrite<u"ORDER( $1, $2, $3 ) ">(this, { fText, key->getText(), name });
}

MDXSet * MDXSet::Order(std::int32_t direction, MDXValue const * key)
{
    std::u16string_view const name = sort_direction(direction);
    return rewrite<u"ORDER( $1, $2, $3 ) ">(this, { fText, key->getText(), name });
}

MDXSet * MDXSet::TakeExtremity(
    ExtremityType type, ExtremityMeasure measure, KelpString const & amount, MDXTuple const * tuple)
{
    if (type != Top && type != Bottom)
        raise_bad_enum(type, "ExtremityType");
    if (measure != Sum && measure != Count && measure != Percent)
        raise_bad_enum(measure, "ExtremityMeasure");
    if (tuple == nullptr && measure != Count)
        throw MDXError(MDX_ERR_MISSING_TUPLE);

    static constexpr std::u16string_view kFunctions[2][3] = {
        { u"TOPSUM", u"TOPCOUNT", u"TOPPERCENT" },
        { u"BOTTOMSUM", u"BOTTOMCOUNT", u"BOTTOMPERCENT" },
    };
    std::u16string_view const function = kFunctions[type][measure];
    if (tuple == nullptr)
        return rewrite<u"$1( $2, $3 ) ">(this, { function, fText, amount });
    return rewrite<u"$1( $2, $3, $4 ) ">(this, { function, fText, amount, tuple->getText() });
}
