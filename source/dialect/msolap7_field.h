#pragma once
#include "../expressions/mdx_field.h"
#include "../host/export.h"

/// A member in the MSOLAP dialect. A member made from a hierarchy and a name, or from a calculation, is written as
/// hierarchy.[name]. With `flatHierarchyNames`, that hierarchy is written as [dimension.hierarchy], from the short
/// names, or as [dimension] if its own name is empty; without the flag, as its unique name. DEFAULTMEMBER and
/// CURRENTMEMBER always follow the unique name.
class MDX_API MSOLAP7Field : public MDXField {
public:
    MSOLAP7Field(KelpString const & text, bool flatHierarchyNames);
    MSOLAP7Field(KelpString const & owner, KelpString const & name, bool flatHierarchyNames);
    MSOLAP7Field(MDXField const * other, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Member const * member, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Dimension const * dimension, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Hierarchy const * hierarchy, bool flatHierarchyNames);
    MSOLAP7Field(BRIM_o::Level const * level, KelpString const & name, bool flatHierarchyNames);
    /// hierarchy.[name], with each "]" in the name doubled. Only this constructor doubles it.
    MSOLAP7Field(BRIM_o::Hierarchy const * hierarchy, KelpString const & name, bool flatHierarchyNames);
    /// hierarchy.[name], even if the calculation has a parent member.
    MSOLAP7Field(BRIM_o::Calculation const * calculation, KelpString const & name, bool flatHierarchyNames);
    MSOLAP7Field(MSOLAP7Field const &) = default;
    ~MSOLAP7Field() override;

    /// The calculation's hierarchy, even if the calculation has a parent member. If the hierarchy is null, the text
    /// is unchanged.
    MDXField * TakeParentOfCalculation(BRIM_o::Calculation const * calculation) override;

private:
    // Replaces the text with the hierarchy, as the class comment spells it. Does nothing for null.
    void construct_calculation_parent(BRIM_o::Hierarchy const * hierarchy);

    bool fFlatHierarchyNames;
};
