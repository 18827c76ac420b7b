#include "mdx_create_query.h"

#include "../frame/mdx_error.h"
#include "formula_specifications.h"

MDXCreateQuery::MDXCreateQuery(KelpString const & cubeName) : MDXQuery(cubeName)
{
    fQueryType = QT_CREATE;
}

MDXCreateQuery::~MDXCreateQuery()
{
    // Hosts see the order in which references are given back, and a vector may destroy its elements in any order.
    for (auto & formula : fFormulas)
        formula.reset();
}

KelpString MDXCreateQuery::getText(bool) const
{
    if (fUseRawFormula)
        return fRawFormula;
    if (fFormulas.empty())
        throw MDXError(MDX_ERR_NO_FORMULAS);

    KelpString text = u"CREATE ";
    for (auto const & formula : fFormulas)
        text += formula->getText();
    return text;
}

void MDXCreateQuery::writeText(KelpString & out) const
{
    out = getText(false);
}

void MDXCreateQuery::AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues)
{
    fFormulas.push_back(std::make_unique<MDXMemberSpecification>(
        name, value, solveOrder, propertyNames, propertyValues, true, fCubeName));
}

void MDXCreateQuery::AddSetFormula(KelpString const & name, MDXSet * set)
{
    fFormulas.push_back(std::make_unique<MDXSetSpecification>(name, set, true, fCubeName));
}

void MDXCreateQuery::AddRawMemberFormula(KelpString const & text)
{
    fRawFormula = text;
    fUseRawFormula = true;
}
