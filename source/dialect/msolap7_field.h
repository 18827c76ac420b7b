#pragma once
#include "../expressions/mdx_field.h"
#include "../host/export.h"

// A member in this server's spelling: the name of a member under a hierarchy, or of a calculated member, comes
// right after the hierarchy. With `flatHierarchyNames` a hierarchy is [dimension.hierarchy] from the short names,
// or [dimension] when its own name is empty; without it, its unique name.
class MDX_API MSOLAP7Field : public MDXField {
public:
    MSOLAP7Field(KelpString const & text, bool flatHierarchyNames);
    MSOLAP7Field(KelpString const & owner, KelpString const & name, bool flatHierarchyNames);
    MSOLAP7Field(MDXField const * other, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Member const * member, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Dimension const * dimension, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Hierarchy const * hierarchy, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Level const * level, KelpString const & name, bool flatHierarchyNames);
    // hierarchy.[name], with each "]" of the name doubled: this constructor alone does so.
    MSOLAP7Field(BRIM_o::Hierarchy const * hierarchy, KelpString const & name, bool flatHierarchyNames);
    // hierarchy.[name], also for a calculation with a parent member.
    MSOLAP7Field(BRIM_o::Calculation const * calculation, KelpString const & name, bool flatHierarchyNames);
    MSOLAP7Field(MSOLAP7Field const &) = default;
    ~MSOLAP7Field() override;

    // The calculation's hierarchy, also when it has a parent member. A null hierarchy leaves the text as it is.
    MDXField * TakeParentOfCalculation(BRIM_o::Calculation const * calculation) override;

private:
    void construct_calculation_parent(BRIM_o::Hierarchy const * hierarchy);

    bool fFlatHierarchyNames;
};
