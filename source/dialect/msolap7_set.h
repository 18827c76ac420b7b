#pragma once
#include "../sets/mdx_set.h"

// A set in this server's dialect.
class MSOLAP7Set final : public MDXSet {
public:
    MSOLAP7Set() = default;
    explicit MSOLAP7Set(KelpString const & text) : MDXSet(text) {}
    explicit MSOLAP7Set(MDXSet const * other) : MDXSet(other) {}
    explicit MSOLAP7Set(BRIM_o::Level const * level) : MDXSet(level) {}
    explicit MSOLAP7Set(std::vector<MDXField *> const & fields) : MDXSet(fields) {}
    explicit MSOLAP7Set(std::vector<MDXTuple *> const & tuples) : MDXSet(tuples) {}
    // AddCalculatedMembers(hierarchy.members)
    explicit MSOLAP7Set(BRIM_o::Hierarchy const * hierarchy);

    // With `byName`, EXCEPT(this, {names}) with the hierarchy's calculated members in the host's order; if it has
    // none, this.
    MDXSet * StripCalculations(BRIM_o::Hierarchy const * hierarchy, bool byName) override;
    // With a hierarchy: calls StripCalculations, hierarchizes, then UNION(that, {names}) with the names of
    // `calculations`, also if there are none. Should the host throw or memory run out, the steps done before stay.
    MDXSet * Hierarchize(bool, BRIM_o::Hierarchy const * hierarchy, bool byName,
        std::vector<BRIM_o::Calculation *> const & calculations) override;
    // Does nothing.
    MDXSet * HierarchizeCalculations(bool) override;
    // The members of the deepest level.
    MDXSet * TakeLeafNodes(BRIM_o::Hierarchy * hierarchy) override;
    // For a count of -1, `openCount` is the count.
    MDXSet * TakeAncestorsOfSet(KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t count, std::int32_t openCount) override;
    // The parent's children; for a member of the top level, that level. The server decides which.
    MDXSet * TakeSiblings(MDXField const * field, BRIM_o::Dimension const * dimension) override;
    // Without a `level`, the children; with `all` the set itself after them. With a `level`, the children's
    // descendants at that level; with `all` from the children down to it. The depth is not read.
    MDXSet * TakeChildren(MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t depth,
        KelpString const & level) override;
    using MDXSet::TakeChildren;

private:
    ~MSOLAP7Set() override = default;
};
