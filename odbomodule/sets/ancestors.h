#pragma once
#include "odbomodule/host/kelp_string.h"

#include <cstdint>
namespace BRIM_o {
class Hierarchy;
}

// The text of TakeAncestorsOfSet for a count, whatever its value.
KelpString counted_ancestors(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count);
