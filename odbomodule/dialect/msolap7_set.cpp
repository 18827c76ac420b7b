#include "odbomodule/dialect/msolap7_set.h"

#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/host/cube_model.h"

static KelpString names_of(std::vector<BRIM_o::Calculation *> const & calculations)
{
    return join(
        calculations, ", ", [](BRIM_o::Calculation const * calculation) { return calculation->getUniqueName(); });
}

MSOLAP7Set::MSOLAP7Set(BRIM_o::Hierarchy const * hierarchy)
    : MDXSet(concat("AddCalculatedMembers(", hierarchy->getUniqueName(), ".members)"))
{}

MDXSet * MSOLAP7Set::StripCalculations(BRIM_o::Hierarchy const * hierarchy, bool byName)
{
    if (!byName)
        return MDXSet::StripCalculations(hierarchy, false);

    fQuotedTextValid = false;
    std::vector<BRIM_o::CalculationId> ids;
    hierarchy->getCalculationIds(ids);
    if (ids.empty())
        return this;
    KelpString const names = join(ids, ", ", [hierarchy](BRIM_o::CalculationId id) {
        BRIM_o::Calculation * calculation = nullptr;
        hierarchy->getCalculation(id, calculation);
        return calculation->getUniqueName();
    });
    rewrite(fText, "EXCEPT( ", fText, ", { ", names, " } ) ");
    return this;
}

MDXSet * MSOLAP7Set::Hierarchize(bool first, BRIM_o::Hierarchy const * hierarchy, bool byName,
    std::vector<BRIM_o::Calculation *> const & calculations)
{
    if (hierarchy == nullptr)
        return MDXSet::Hierarchize(first, hierarchy, byName, calculations);

    StripCalculations(hierarchy, byName);
    MDXSet::Hierarchize(first, hierarchy, byName, calculations);
    rewrite(fText, "UNION( ", fText, ", { ", names_of(calculations), " } )");
    return this;
}

MDXSet * MSOLAP7Set::HierarchizeCalculations(bool)
{
    return this;
}

MDXSet * MSOLAP7Set::TakeLeafNodes(BRIM_o::Hierarchy * hierarchy)
{
    fQuotedTextValid = false;
    std::int64_t const deepest = std::int64_t{ hierarchy->getLevelCount() } - 1;
    fText = concat(hierarchy->getUniqueName(), ".LEVELS(", decimal(deepest), ").MEMBERS ");
    return this;
}

MDXSet * MSOLAP7Set::TakeAncestorsOfSet(KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all,
    std::int32_t count, std::int32_t openCount)
{
    return take_counted_ancestors(set, hierarchy, all, count == -1 ? openCount : count);
}

MDXSet * MSOLAP7Set::TakeSiblings(MDXField const * field, BRIM_o::Dimension const *)
{
    fQuotedTextValid = false;
    fText = concat("STRTOSET( IIF( ", field->getText(), ".LEVEL.UNIQUENAME = ", field->getText(),
        ".HIERARCHY.LEVELS(0).UNIQUENAME, \"", field->getText(), ".HIERARCHY.LEVELS(0).MEMBERS\", \"",
        field->getText(), ".PARENT.CHILDREN\" ) ) ");
    return this;
}

MDXSet * MSOLAP7Set::TakeChildren(
    MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t, KelpString const & level)
{
    fQuotedTextValid = false;
    KelpString const s = set->getText();
    KelpString const h = hierarchy->getUniqueName();
    if (!level.empty() && all)
        fText = concat("GENERATE( ", s, ", GENERATE( ", h, ".CURRENTMEMBER.CHILDREN, DESCENDANTS( ", h,
            ".CURRENTMEMBER, ", level, ", SELF_AND_BEFORE ) ) )");
    else if (!level.empty())
        fText = concat("GENERATE( ", s, ", GENERATE( ", h, ".CURRENTMEMBER.CHILDREN, DESCENDANTS( ", h,
            ".CURRENTMEMBER, ", level, ", SELF ) ) )");
    else if (all)
        fText = concat("GENERATE( ", s, ", ", h, ".CURRENTMEMBER.CHILDREN )+", set->getText());
    else
        fText = concat("GENERATE( ", s, ", ", h, ".CURRENTMEMBER.CHILDREN )");
    return this;
}
