#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "mdx_query.h"

#include <cstdint>
#include <vector>

// DROP: calculated members, or named sets, of the cube; the first name added decides which. Names go in unchanged,
// each after the cube's name and a dot.
class MDX_API MDXDropQuery : public MDXQuery {
public:
    explicit MDXDropQuery(KelpString const & cubeName);

    // There is one form; `multiLine` is not read. Throws MDX_ERR_NOTHING_TO_DROP without a name.
    KelpString getText(bool multiLine) const override;
    void writeText(KelpString & out) const override;

    // Add a name and return true. Throw MDX_ERR_MIXED_DROP when the statement drops the other kind; nothing
    // changes.
    bool AddMemberToDrop(KelpString const & name);
    bool AddSetToDrop(KelpString const & name);

protected:
    ~MDXDropQuery() override;

private:
    enum DropKind : std::int32_t { None = 0, Members = 1, Sets = 2 };
    bool add(DropKind kind, KelpString const & name);

    DropKind fDropKind = None;
    std::vector<KelpString> fDropNames;
};
