#pragma once
#include "../host/kelp_string.h"

#include <cstdint>
namespace BRIM_o {
class Hierarchy;
}

// The text of TakeAncestorsOfSet for that count: here -1 is a count like any other.
KelpString counted_ancestors(
    KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t count);
