#pragma once
#include "../expressions/mdx_tuple.h"

// Tuples need nothing of their own for this server.
class MSOLAP7Tuple final : public MDXTuple {
    ~MSOLAP7Tuple() override = default;
};
