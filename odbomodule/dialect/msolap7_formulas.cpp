#include "odbomodule/dialect/msolap7_formulas.h"

#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_value.h"
#include "odbomodule/sets/mdx_set.h"

KelpString MSOLAP7SetSpecification::getText()
{
    return concat("SET ", prefix(fQualified), fSetName, " AS ' ", fSet->getQuotedText(), " ' ");
}

MSOLAP7MemberSpecification::MSOLAP7MemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues, bool qualified,
    KelpString const & cubeName)
    : MDXMemberSpecification(member, value, solveOrder, propertyNames, propertyValues, qualified, cubeName)
{}

MSOLAP7MemberSpecification::~MSOLAP7MemberSpecification() = default;

// The name stands outside the quotes, in its plain text.
KelpString MSOLAP7MemberSpecification::getText()
{
    check_properties();
    KelpString const member = fMember->getText();
    KelpString text = concat("MEMBER ", prefix(fQualified), member, " AS ' ", fValue->getQuotedText(), " ' ");
    append_clauses(text);
    return text;
}
