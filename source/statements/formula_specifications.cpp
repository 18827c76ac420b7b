#include "formula_specifications.h"

#include "../expressions/mdx_field.h"
#include "../expressions/mdx_value.h"
#include "../sets/mdx_set.h"
#include "member_clauses.h"
#include "../text.h"

using namespace mdx_text;

MDXSingleFormulaSpecification::MDXSingleFormulaSpecification(KelpString const & cubeName) : fCubeName(cubeName) {}

MDXSingleFormulaSpecification::~MDXSingleFormulaSpecification() = default;

MDXSetSpecification::MDXSetSpecification(
    KelpString const & name, MDXSet * set, bool qualified, KelpString const & cubeName)
    : MDXSingleFormulaSpecification(cubeName), fSetName(name), fSet(hold(set)), fQualified(qualified)
{}

MDXSetSpecification::~MDXSetSpecification() = default;

KelpString MDXSetSpecification::getText()
{
    if (fQualified)
        return mdx<u"SET $1.$2 AS $3 ">({ fCubeName, fSetName, fSet->getText() });
    return mdx<u"SET $1 AS $2 ">({ fSetName, fSet->getText() });
}

void MDXSetSpecification::writeText(KelpString & out)
{
    out = getText();
}

MDXMemberSpecification::MDXMemberSpecification(MDXField * member, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues, bool qualified,
    KelpString const & cubeName)
    : MDXSingleFormulaSpecification(cubeName),
      fMember(hold(member)),
      fValue(hold(value)),
      fSolveOrder(solveOrder),
      fQualified(qualified),
      fPropertyNames(propertyNames),
      fPropertyValues(propertyValues)
{}

MDXMemberSpecification::~MDXMemberSpecification() = default;

KelpString MDXMemberSpecification::getText()
{
    KelpString const clauses = member_clauses(fSolveOrder, fPropertyNames, fPropertyValues);
    if (fQualified)
        return mdx<u"MEMBER $1.$2 AS $3$4 ">({ fCubeName, fMember->getText(), fValue->getText(), clauses });
    return mdx<u"MEMBER $1 AS $2$3 ">({ fMember->getText(), fValue->getText(), clauses });
}

void MDXMemberSpecification::writeText(KelpString & out)
{
    out = getText();
}
