#include "msolap7_queries.h"

#include "msolap7_formulas.h"
#include "msolap7_select_query.h"
#include "msolap7_set_specification.h"

void MSOLAP7SelectQuery::AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues)
{
    fFormulas.push_back(std::make_unique<MSOLAP7MemberSpecification>(
        name, value, solveOrder, propertyNames, propertyValues, false, fCubeName));
}

void MSOLAP7SelectQuery::AddSetFormula(KelpString const & name, MDXSet * set)
{
    fFormulas.push_back(std::make_unique<MSOLAP7SetSpecification>(name, set, false, fCubeName));
}

bool MSOLAP7SelectQuery::SpecifyDrillThrough()
{
    return false;
}

MSOLAP7CreateQuery::MSOLAP7CreateQuery(KelpString const & cubeName) : MDXCreateQuery(cubeName) {}

MSOLAP7CreateQuery::~MSOLAP7CreateQuery() = default;

void MSOLAP7CreateQuery::AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues)
{
    fFormulas.push_back(std::make_unique<MSOLAP7MemberSpecification>(
        name, value, solveOrder, propertyNames, propertyValues, true, fCubeName));
}

void MSOLAP7CreateQuery::AddSetFormula(KelpString const & name, MDXSet * set)
{
    fFormulas.push_back(std::make_unique<MSOLAP7SetSpecification>(name, set, true, fCubeName));
}

MSOLAP7DropQuery::MSOLAP7DropQuery(KelpString const & cubeName) : MDXDropQuery(cubeName) {}

MSOLAP7DropQuery::~MSOLAP7DropQuery() = default;
