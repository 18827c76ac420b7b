#pragma once
#include "../statements/formula_specifications.h"

// SET name AS ' set '. The MSOLAP dialect quotes the definition.
class MSOLAP7SetSpecification final : public MDXSetSpecification {
public:
    using MDXSetSpecification::MDXSetSpecification;
    KelpString getText() override;
};
