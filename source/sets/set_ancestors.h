#pragma once
#include "../host/kelp_string.h"

#include <cstdint>
namespace BRIM_o {
class Hierarchy;
}

// The text of TakeAncestorsOfSet for a count. A count of -1 has no special meaning here.
KelpString counted_ancestors(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count);
