#include "odbomodule/statements/formula_specifications.h"

#include "odbomodule/base/mdx_error.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_value.h"
#include "odbomodule/sets/mdx_set.h"

MDXSingleFormulaSpecification::MDXSingleFormulaSpecification(KelpString const & cubeName) : fCubeName(cubeName) {}

MDXSingleFormulaSpecification::~MDXSingleFormulaSpecification() = default;

KelpString MDXSingleFormulaSpecification::prefix(bool qualified) const
{
    return qualified ? concat(fCubeName, ".") : KelpString();
}

MDXSetSpecification::MDXSetSpecification(
    KelpString const & name, MDXSet * set, bool qualified, KelpString const & cubeName)
    : MDXSingleFormulaSpecification(cubeName), fSetName(name), fSet(hold(set)), fQualified(qualified)
{}

MDXSetSpecification::~MDXSetSpecification() = default;

KelpString MDXSetSpecification::getText()
{
    return concat("SET ", prefix(fQualified), fSetName, " AS ", fSet->getText(), " ");
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

void MDXMemberSpecification::check_properties() const
{
    if (fPropertyNames.size() != fPropertyValues.size())
        throw MDXError(MDX_ERR_PROPERTY_COUNT_MISMATCH);
}

void MDXMemberSpecification::append_clauses(KelpString & text) const
{
    if (fSolveOrder > -1)
        append(text, ", SOLVE_ORDER = ", decimal(fSolveOrder));
    for (std::size_t i = 0; i < fPropertyNames.size(); ++i)
        append(text, ", ", fPropertyNames[i], " = ", fPropertyValues[i]);
    append(text, " ");
}

KelpString MDXMemberSpecification::getText()
{
    check_properties();
    KelpString const member = fMember->getText();
    KelpString text = concat("MEMBER ", prefix(fQualified), member, " AS ", fValue->getText());
    append_clauses(text);
    return text;
}

void MDXMemberSpecification::writeText(KelpString & out)
{
    out = getText();
}
