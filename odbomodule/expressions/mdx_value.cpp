#include "odbomodule/expressions/mdx_value.h"

#include "odbomodule/base/object_class.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/member_names.h"
#include "odbomodule/sets/mdx_set.h"

#include <utility>

static support::ObjectClass gClass{ u"MDXValue" };

MDXValue::MDXValue(KelpString && text) : RefCount(gClass), fText(std::move(text)) {}

MDXValue::MDXValue(KelpString const & text) : MDXValue(KelpString(text)) {}

MDXValue::MDXValue(std::int32_t value) : MDXValue(concat(decimal(value))) {}

MDXValue::~MDXValue() = default;

KelpString MDXValue::getText() const
{
    return fText;
}

KelpString MDXValue::getQuotedText()
{
    if (!fQuotedTextValid) {
        quote_member_name(fQuotedText, fText);
        fQuotedTextValid = true;
    }
    return fQuotedText;
}

void MDXValue::writeText(KelpString & out) const
{
    out = fText;
}

MDXValue * MDXValue::TakeCount(MDXSet const * set)
{
    fQuotedTextValid = false;
    fText = concat("COUNT( ", set->getText(), " )");
    return this;
}

MDXValue * MDXValue::TakeUniqueName(MDXField const * field)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".UNIQUENAME ");
    return this;
}

MDXValue * MDXValue::TakeName(MDXField const * field)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".NAME ");
    return this;
}

MDXValue * MDXValue::TakeCaption(MDXField const * field)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".CAPTION ");
    return this;
}

MDXValue * MDXValue::TakeDescription(MDXField const * field)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".DESCRIPTION ");
    return this;
}

MDXValue * MDXValue::TakeSum(MDXSet const * set)
{
    fQuotedTextValid = false;
    fText = concat("SUM( ", set->getText(), " )");
    return this;
}

MDXValue * MDXValue::TakeMin(MDXSet const * set)
{
    fQuotedTextValid = false;
    fText = concat("MIN( ", set->getText(), " )");
    return this;
}

MDXValue * MDXValue::TakeMax(MDXSet const * set)
{
    fQuotedTextValid = false;
    fText = concat("MAX( ", set->getText(), " )");
    return this;
}

MDXValue * MDXValue::TakeAverage(MDXSet const * set)
{
    fQuotedTextValid = false;
    fText = concat("AVG( ", set->getText(), " )");
    return this;
}

MDXValue * MDXValue::Add(std::int32_t number)
{
    fQuotedTextValid = false;
    rewrite(fText, decimal(number), " + ", fText);
    return this;
}

MDXValue * MDXValue::ReverseSign()
{
    fQuotedTextValid = false;
    rewrite(fText, "- ( ", fText, " ) ");
    return this;
}

MDXValue * MDXValue::TakeProperty(MDXField const * field, KelpString const & name)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".Properties(\"", name, "\")");
    return this;
}

MDXValue * MDXValue::TakeEquality(KelpString text)
{
    fQuotedTextValid = false;
    rewrite(fText, fText, " = ", text);
    return this;
}

MDXValue * MDXValue::TakeEquality(std::int32_t number)
{
    fQuotedTextValid = false;
    rewrite(fText, fText, " = ", decimal(number));
    return this;
}
