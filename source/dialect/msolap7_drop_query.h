#pragma once
#include "../host/export.h"
#include "../statements/mdx_drop_query.h"

/// DROP in the MSOLAP dialect, written exactly as MDXDropQuery writes it. A host may derive from this class.
class MDX_API MSOLAP7DropQuery : public MDXDropQuery {
public:
    explicit MSOLAP7DropQuery(KelpString const & cubeName);

protected:
    ~MSOLAP7DropQuery() override;
};
