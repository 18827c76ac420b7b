#include "msolap7_set.h"

#include "../expressions/mdx_field.h"
#include "../host/cube_model.h"
#include "../sets/set_ancestors.h"
#include "../text.h"

using namespace mdx_text;

MSOLAP7Set::MSOLAP7Set(BRIM_o::Hierarchy const * hierarchy)
{
    rewrite<u"AddCalculatedMembers($1.members)">(this, { hierarchy->getUniqueName() });
}

MDXSet * MSOLAP7Set::StripCalculations(BRIM_o::Hierarchy const * hierarchy, bool byName)
{
    if (!byName)
        return MDXSet::StripCalculations(hierarchy, false);

    std::vector<BRIM_o::CalculationId> ids;
    hierarchy->getCalculationIds(ids);
    if (ids.empty())
        return this;
    auto const name_of = [hierarchy](BRIM_o::CalculationId id) {
        BRIM_o::Calculation * calculation = nullptr;
        hierarchy->getCalculation(id, calculation);
        return calculation->getUniqueName();
    };
    return rewrite<u"EXCEPT( $1, { $2 } ) ">(this, { fText, join(ids, u", ", name_of) });
}

// Three steps, not one template: if the host throws, the text is that of the last completed step.
MDXSet * MSOLAP7Set::Hierarchize(bool unused, BRIM_o::Hierarchy const * hierarchy, bool byName,
    std::vector<BRIM_o::Calculation *> const & calculations)
{
    if (hierarchy == nullptr)
        return MDXSet::Hierarchize(unused, hierarchy, byName, calculations);

    auto const name_of = [](BRIM_o::Calculation const * calculation) { return calculation->getUniqueName(); };
    StripCalculations(hierarchy, byName);
    MDXSet::Hierarchize(unused, hierarchy, byName, calculations);
    return rewrite<u"UNION( $1, { $2 } )">(this, { fText, join(calculations, u", ", name_of) });
}

MDXSet * MSOLAP7Set::HierarchizeCalculations(bool)
{
    return this;
}

MDXSet * MSOLAP7Set::TakeLeafNodes(BRIM_o::Hierarchy * hierarchy)
{
    Decimal const deepest = decimal(std::int64_t{ hierarchy->getLevelCount() } - 1);
    return rewrite<u"$1.LEVELS($2).MEMBERS ">(this, { hierarchy->getUniqueName(), deepest });
}

MDXSet * MSOLAP7Set::TakeAncestorsOfSet(KelpString const & set, BRIM_o::Hierarchy const * hierarchy, bool all,
    std::int32_t count, std::int32_t openCount)
{
    return rewrite(this, counted_ancestors(set, hierarchy, all, count == -1 ? openCount : count));
}

MDXSet * MSOLAP7Set::TakeSiblings(MDXField const * field, BRIM_o::Dimension const *)
{
    return rewrite<u"STRTOSET( IIF( $1.LEVEL.UNIQUENAME = $2.HIERARCHY.LEVELS(0).UNIQUENAME, "
                   u"\"$3.HIERARCHY.LEVELS(0).MEMBERS\", \"$4.PARENT.CHILDREN\" ) ) ">(
        this, { field->getText(), field->getText(), field->getText(), field->getText() });
}

MDXSet * MSOLAP7Set::TakeChildren(
    MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t, KelpString const & level)
{
    KelpString const s = set->getText();
    KelpString const h = hierarchy->getUniqueName();
    if (!level.empty() && all)
        return rewrite<u"GENERATE( $1, GENERATE( $2.CURRENTMEMBER.CHILDREN, "
                       u"DESCENDANTS( $2.CURRENTMEMBER, $3, SELF_AND_BEFORE ) ) )">(this, { s, h, level });
    if (!level.empty())
        return rewrite<u"GENERATE( $1, GENERATE( $2.CURRENTMEMBER.CHILDREN, "
                       u"DESCENDANTS( $2.CURRENTMEMBER, $3, SELF ) ) )">(this, { s, h, level });
    if (all)
        return rewrite<u"GENERATE( $1, $2.CURRENTMEMBER.CHILDREN )+$3">(this, { s, h, set->getText() });
    return rewrite<u"GENERATE( $1, $2.CURRENTMEMBER.CHILDREN )">(this, { s, h });
}
