#pragma once
#include "../sets/mdx_set.h"

// A set in the MSOLAP dialect.
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

    // With `byName`, EXCEPT(this, {names}) with the hierarchy's calculated members in the host's order. If it has
    // none, the text is unchanged.
    MDXSet * StripCalculations(BRIM_o::Hierarchy const * hierarchy, bool byName) override;
    // With a hierarchy: StripCalculations, then HIERARCHIZE, then UNION(that, {names}) with the names of
    // `calculations`, even if there are none. If the host throws or memory runs out, the text is that of the last
    // completed step.
    MDXSet * Hierarchize(bool, BRIM_o::Hierarchy const * hierarchy, bool byName,
        std::vector<BRIM_o::Calculation *> const & calculations) override;
    // Does nothing.
    MDXSet * HierarchizeCalculations(bool) override;
    // The members of the deepest level.
    MDXSet * TakeLeafNodes(BRIM_o::Hierarchy * hierarchy) override;
    // A count of -1 means `openCount`.
    MDXSet * TakeAncestorsOfSet(KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all,
        std::int32_t count, std::int32_t openCount) override;
    // The children of the parent, or the whole level for a member of the top level. The server decides which.
    MDXSet * TakeSiblings(MDXField const * field, BRIM_o::Dimension const * dimension) override;
    // Without a `level`, the children of each member; with `all`, the set itself after them. With a `level`, the
    // children's descendants at that level; with `all`, the members from the children down to it. The depth is not
    // read.
    MDXSet * TakeChildren(MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t depth,
        KelpString const & level) override;
    using MDXSet::TakeChildren;

private:
    ~MSOLAP7Set() override = default;
};
