#include "mdx_value.h"

#include "mdx_field.h"
#include "../object_class.h"
#include "../sets/mdx_set.h"
#include "../text.h"

#include <utility>

using namespace mdx_text;

static constinit support::ObjectClass gClass{ u"MDXValue" };

MDXValue::MDXValue(KelpString const & text) : RefCount(gClass), fText(text) {}

MDXValue::MDXValue(KelpString && text) : RefCount(gClass), fText(std::move(text)) {}

MDXValue::MDXValue(std::int32_t value) : RefCount(gClass), fText(mdx<u"$1">({ decimal(value) })) {}

MDXValue::~MDXValue() = default;

MDXValue & MDXValue::operator=(MDXValue const & other)
{
    RefCount::operator=(other);
    assign_texts(this, &other);
    return *this;
}

KelpString MDXValue::getText() const
{
    return fText;
}

KelpString MDXValue::getQuotedText()
{
    return quoted_text(this);
}

void MDXValue::writeText(KelpString & out) const
{
    out = fText;
}

MDXValue * MDXValue::TakeCount(MDXSet const * set)
{
    return rewrite<u"COUNT( $1 )">(this, { set->getText() });
}

MDXValue * MDXValue::TakeUniqueName(MDXField const * field)
{
    return rewrite<u"$1.UNIQUENAME ">(this, { field->getText() });
}

MDXValue * MDXValue::TakeName(MDXField const * field)
{
    return rewrite<u"$1.NAME ">(this, { field->getText() });
}

MDXValue * MDXValue::TakeCaption(MDXField const * field)
{
    return rewrite<u"$1.CAPTION ">(this, { field->getText() });
}

MDXValue * MDXValue::TakeDescription(MDXField const * field)
{
    return rewrite<u"$1.DESCRIPTION ">(this, { field->getText() });
}

MDXValue * MDXValue::TakeSum(MDXSet const * set)
{
    return rewrite<u"SUM( $1 )">(this, { set->getText() });
}

MDXValue * MDXValue::TakeMin(MDXSet const * set)
{
    return rewrite<u"MIN( $1 )">(this, { set->getText() });
}

MDXValue * MDXValue::TakeMax(MDXSet const * set)
{
    return rewrite<u"MAX( $1 )">(this, { set->getText() });
}

MDXValue * MDXValue::TakeAverage(MDXSet const * set)
{
    return rewrite<u"AVG( $1 )">(this, { set->getText() });
}

MDXValue * MDXValue::Add(std::int32_t number)
{
    return rewrite<u"$1 + $2">(this, { decimal(number), fText });
}

MDXValue * MDXValue::ReverseSign()
{
    return rewrite<u"- ( $1 ) ">(this, { fText });
}

MDXValue * MDXValue::TakeProperty(MDXField const * field, KelpString const & name)
{
    return rewrite<u"$1.Properties(\"$2\")">(this, { field->getText(), name });
}

MDXValue * MDXValue::TakeEquality(KelpString text)
{
    return rewrite<u"$1 = $2">(this, { fText, text });
}

MDXValue * MDXValue::TakeEquality(std::int32_t number)
{
    return rewrite<u"$1 = $2">(this, { fText, decimal(number) });
}
