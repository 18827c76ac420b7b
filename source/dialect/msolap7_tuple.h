#pragma once
#include "../expressions/mdx_tuple.h"

// A tuple in the MSOLAP dialect, written exactly as MDXTuple writes it.
class MSOLAP7Tuple final : public MDXTuple {
    ~MSOLAP7Tuple() override = default;
};
