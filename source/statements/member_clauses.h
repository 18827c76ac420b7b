#pragma once
#include "../host/kelp_string.h"

#include <cstdint>
#include <vector>

// The end of a calculated member's definition: , SOLVE_ORDER = number, name = value. A negative solve order is left
// out. Throws MDX_ERR_PROPERTY_COUNT_MISMATCH if the numbers of names and values differ.
KelpString member_clauses(std::int32_t solveOrder, std::vector<KelpString> const & propertyNames,
    std::vector<KelpString> const & propertyValues);
