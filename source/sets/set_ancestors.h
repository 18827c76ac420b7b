#pragma once
#include "../host/kelp_string.h"

#include <cstdint>
namespace BRIM_o {
class Hierarchy;
}

// The text of TakeAncestorsOfSet for a count. -1 is a count like any other here.
KelpString counted_ancestors(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count);
