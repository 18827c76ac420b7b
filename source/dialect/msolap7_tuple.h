#pragma once
#include "../expressions/mdx_tuple.h"

// A tuple in the MSOLAP dialect, which is the general form.
class MSOLAP7Tuple final : public MDXTuple {
    ~MSOLAP7Tuple() override = default;
};
