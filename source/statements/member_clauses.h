#pragma once
#include "../host/kelp_string.h"

#include <cstdint>
#include <vector>

// What follows the definition of a calculated member: , SOLVE_ORDER = number, name = value. Throws
// MDX_ERR_PROPERTY_COUNT_MISMATCH when there are more or fewer values than names.
KelpString member_clauses(std::int32_t solveOrder, std::vector<KelpString> const & propertyNames,
    std::vector<KelpString> const & propertyValues);
