#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "mdx_query.h"

#include <cstdint>
#include <vector>

MDX_EXPORTS_BEGIN

/// DROP: removes calculated members or named sets of the cube. The first name that is added decides which of the
/// two. Names are inserted unchanged, each after the cube's name and a dot. Several names are joined with blanks;
/// some servers want commas, so drop one name per statement.
class MDX_API MDXDropQuery : public MDXQuery {
public:
    explicit MDXDropQuery(KelpString const & cubeName);

    /// The statement has one form: `multiLine` is not read. Throws MDX_ERR_NOTHING_TO_DROP if there is no name.
    KelpString getText(bool multiLine) const override;
    void writeText(KelpString & out) const override;

    /// Adds a name and returns true. Throws MDX_ERR_MIXED_DROP if the statement drops sets; nothing changes.
    bool AddMemberToDrop(KelpString const & name);
    /// Adds a name and returns true. Throws MDX_ERR_MIXED_DROP if the statement drops members; nothing changes.
    bool AddSetToDrop(KelpString const & name);

protected:
    enum DropKind : std::int32_t { None = 0, Members = 1, Sets = 2 };

    ~MDXDropQuery() override;

    DropKind fDropKind = None;
    std::vector<KelpString> fDropNames;

private:
    bool add(DropKind kind, KelpString const & name);
};

MDX_EXPORTS_END
