#include "msolap7_select_query.h"

#include "msolap7_member_specification.h"
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
