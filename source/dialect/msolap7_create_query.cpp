#include "msolap7_create_query.h"

#include "msolap7_member_specification.h"
#include "msolap7_set_specification.h"

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
