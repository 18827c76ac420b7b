#pragma once
#include "../statements/formula_specifications.h"

// SET name AS ' set ': this server wants definitions between single quotes.
class MSOLAP7SetSpecification final : public MDXSetSpecification {
public:
    using MDXSetSpecification::MDXSetSpecification;
    KelpString getText() override;
};
