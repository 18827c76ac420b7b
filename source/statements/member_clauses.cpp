#include "member_clauses.h"

#include "../frame/mdx_error.h"
#include "../text.h"

#include <cstddef>

using namespace mdx_text;

KelpString member_clauses(std::int32_t solveOrder, std::vector<KelpString> const & propertyNames,
    std::vector<KelpString> const & propertyValues)
{
    if (propertyNames.size() != propertyValues.size())
        throw MDXError(MDX_ERR_PROPERTY_COUNT_MISMATCH);
    KelpString clauses;
    if (solveOrder > -1)
        append<u", SOLVE_ORDER = $1">(clauses, { decimal(solveOrder) });
    for (std::size_t i = 0; i < propertyNames.size(); ++i)
        append<u", $1 = $2">(clauses, { propertyNames[i], propertyValues[i] });
    return clauses;
}
