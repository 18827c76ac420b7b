#include "mdx_set.h"

#include "../expressions/mdx_field.h"
#include "../host/cube_model.h"
#include "../text.h"

#include <map>
#include <vector>

using namespace mdx_text;

MDXSet * MDXSet::TakeChildren(MDXField const * field)
{
    return rewrite<u"$1.CHILDREN ">(this, { field->getText() });
}

MDXSet * MDXSet::TakeSiblings(MDXField const * field, BRIM_o::Dimension const *)
{
    return rewrite<u"$1.SIBLINGS ">(this, { field->getText() });
}

// The field is asked once for each occurrence in the text.
MDXSet * MDXSet::TakeDescendants(MDXField const * field, bool withSelf)
{
    if (withSelf)
        return rewrite<u"DESCENDANTS( $1, $2.LEVEL, SELF_AND_AFTER ) ">(
            this, { field->getText(), field->getText() });
    return rewrite<u"DESCENDANTS( $1, $2.LEVEL, AFTER ) ">(this, { field->getText(), field->getText() });
}

MDXSet * MDXSet::TakeDescendants(KelpString const & member, BRIM_o::Hierarchy const * hierarchy, bool all,
    std::int32_t depth, KelpString const &)
{
    if (depth == -1 && all)
        return rewrite<u"DESCENDANTS( $1, $1.LEVEL, AFTER )">(this, { member });
    if (depth == -1)
        return rewrite<u"DESCENDANTS( $1, $2.LEVELS.COUNT - 1, LEAVES )">(
            this, { member, hierarchy->getUniqueName() });
    if (all)
        return rewrite<u"DESCENDANTS( $1, $2, SELF_AND_BEFORE )">(this, { member, decimal(depth) });
    return rewrite<u"DESCENDANTS( $1, $2, LEAVES )">(this, { member, decimal(depth) });
}

MDXSet * MDXSet::TakeChildren(
    MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t depth, KelpString const &)
{
    KelpString const s = set->getText();
    KelpString const h = hierarchy->getUniqueName();
    if (depth == -1 && all)
        return rewrite<u"GENERATE( $1, DESCENDANTS( $2.CURRENTMEMBER, $2.CURRENTMEMBER.LEVEL, AFTER ) )">(
            this, { s, h });
    if (depth == -1)
        return rewrite<u"GENERATE( $1, DESCENDANTS( $2.CURRENTMEMBER, $2.LEVELS.COUNT - 1, LEAVES ) )">(
            this, { s, h });
    if (all)
        return rewrite<u"GENERATE( $1, GENERATE( { $2.CURRENTMEMBER }, "
                       u"DESCENDANTS( $2.CURRENTMEMBER, $3, SELF_AND_BEFORE ) ) )">(this, { s, h, decimal(depth) });
    return rewrite<
        u"GENERATE( $1, GENERATE( { $2.CURRENTMEMBER }, DESCENDANTS( $2.CURRENTMEMBER, $3, LEAVES ) ) )">(
        this, { s, h, decimal(depth) });
}

// Two steps: if the host throws when asked for the calculated members, the text is the leaves.
MDXSet * MDXSet::TakeLeafNodes(BRIM_o::Hierarchy * hierarchy)
{
    Decimal const deepest = decimal(std::int64_t{ hierarchy->getLevelCount() } - 1);
    rewrite<u"GENERATE( $1.LEVELS(0).MEMBERS, DESCENDANTS( $1.CURRENTMEMBER, $2, LEAVES ) )">(
        this, { hierarchy->getUniqueName(), deepest });

    std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> calculations;
    hierarchy->getCalculations(calculations);
    std::vector<KelpString> names;
    for (auto const & [id, calculation] : calculations) {
        if (calculation != nullptr)
            names.push_back(calculation->getUniqueName());
    }
    if (names.empty())
        return this;
    return rewrite<u"UNION( $1, { $2 } )">(this, { fText, join(names, u", ") });
}
