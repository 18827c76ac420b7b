#include "odbomodule/dialect/msolap7_queries.h"

#include "odbomodule/dialect/msolap7_formulas.h"
#include "odbomodule/dialect/msolap7_set.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_tuple.h"
#include "odbomodule/expressions/mdx_value.h"

#include <type_traits>
#include <typeinfo>

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

// A host may hand in a set of its own, with a text of its own.
void MSOLAP7SelectQuery::AddAxisSpecification(
    std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, NonEmptyStatus status)
{
    static_assert(std::is_same_v<decltype(&MSOLAP7Set::getText), decltype(&MDXSet::getText)>);
    MDXSelectQuery::AddAxisSpecification(axis, set, properties, status);
    if (set != nullptr && typeid(*set) == typeid(MSOLAP7Set))
        read_last_axis_in_place();
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
