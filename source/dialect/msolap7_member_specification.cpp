#include "msolap7_member_specification.h"

#include "../expressions/mdx_field.h"
#include "../expressions/mdx_value.h"
#include "../statements/member_clauses.h"
#include "../text.h"

using namespace mdx_text;

MSOLAP7MemberSpecification::MSOLAP7MemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues, bool qualified,
    KelpString const & cubeName)
    : MDXMemberSpecification(member, value, solveOrder, propertyNames, propertyValues, qualified, cubeName)
{}

MSOLAP7MemberSpecification::~MSOLAP7MemberSpecification() = default;

// The member's name is outside the quotes, so its plain text is used.
KelpString MSOLAP7MemberSpecification::getText()
{
    KelpString const clauses = member_clauses(fSolveOrder, fPropertyNames, fPropertyValues);
    if (fQualified)
        return mdx<u"MEMBER $1.$2 AS ' $3 ' $4 ">(
            { fCubeName, fMember->getText(), fValue->getQuotedText(), clauses });
    return mdx<u"MEMBER $1 AS ' $2 ' $3 ">({ fMember->getText(), fValue->getQuotedText(), clauses });
}
