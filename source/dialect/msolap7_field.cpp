#include "msolap7_field.h"

#include "../expressions/member_names.h"
#include "../host/cube_model.h"
#include "../text.h"

using namespace mdx_text;

MSOLAP7Field::MSOLAP7Field(KelpString const & text, bool flatHierarchyNames)
    : MDXField(text), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(KelpString const & owner, KelpString const & name, bool flatHierarchyNames)
    : MDXField(owner, name), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(MDXField const * other, bool flatHierarchyNames)
    : MDXField(other), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(BRIM_o::Member const * member, bool flatHierarchyNames)
    : MDXField(member), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(BRIM_o::Dimension const * dimension, bool flatHierarchyNames)
    : MDXField(dimension), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(BRIM_o::Hierarchy const * hierarchy, bool flatHierarchyNames)
    : MDXField(hierarchy), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(BRIM_o::Level const * level, KelpString const & name, bool flatHierarchyNames)
    : MDXField(level, name), fFlatHierarchyNames(flatHierarchyNames)
{}

MSOLAP7Field::MSOLAP7Field(BRIM_o::Hierarchy const * hierarchy, KelpString const & name, bool flatHierarchyNames)
    : MDXField(hierarchy, name), fFlatHierarchyNames(flatHierarchyNames)
{
    construct_calculation_parent(hierarchy);
    KelpString doubled;
    double_sqaure_brackets(doubled, name);
    rewrite<u"$1.[$2]">(this, { fText, doubled });
}

MSOLAP7Field::MSOLAP7Field(
    BRIM_o::Calculation const * calculation, KelpString const & name, bool flatHierarchyNames)
    : MDXField(calculation, name), fFlatHierarchyNames(flatHierarchyNames)
{
    BRIM_o::Hierarchy const * const hierarchy = calculation->getHierarchy();
    if (hierarchy == nullptr)
        return; // the base has written the text
    construct_calculation_parent(hierarchy);
    rewrite<u"$1.[$2]">(this, { fText, name });
}

MSOLAP7Field::~MSOLAP7Field() = default;

MDXField * MSOLAP7Field::TakeParentOfCalculation(BRIM_o::Calculation const * calculation)
{
    construct_calculation_parent(calculation->getHierarchy());
    return this;
}

void MSOLAP7Field::construct_calculation_parent(BRIM_o::Hierarchy const * hierarchy)
{
    if (hierarchy == nullptr)
        return;
    if (!fFlatHierarchyNames) {
        rewrite(this, hierarchy->getUniqueName());
        return;
    }
    KelpString const dimension = hierarchy->getDimension()->getName();
    KelpString const name = hierarchy->getName();
    if (name.empty())
        rewrite<u"[$1]">(this, { dimension });
    else
        rewrite<u"[$1.$2]">(this, { dimension, name });
}
