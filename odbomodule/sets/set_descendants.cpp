#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/host/cube_model.h"

#include <map>
#include <vector>

MDXSet * MDXSet::TakeChildren(MDXField const * field)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".CHILDREN ");
    return this;
}

MDXSet * MDXSet::TakeSiblings(MDXField const * field, BRIM_o::Dimension const *)
{
    fQuotedTextValid = false;
    fText = concat(field->getText(), ".SIBLINGS ");
    return this;
}

MDXSet * MDXSet::TakeDescendants(MDXField const * field, bool withSelf)
{
    fQuotedTextValid = false;
    KelpString const member = field->getText();
    if (withSelf)
        fText = concat("DESCENDANTS( ", member, ", ", field->getText(), ".LEVEL, SELF_AND_AFTER ) ");
    else
        fText = concat("DESCENDANTS( ", member, ", ", field->getText(), ".LEVEL, AFTER ) ");
    return this;
}

MDXSet * MDXSet::TakeDescendants(KelpString const & member, BRIM_o::Hierarchy const * hierarchy, bool all,
    std::int32_t depth, KelpString const &)
{
    fQuotedTextValid = false;
    if (depth == -1 && all)
        fText = concat("DESCENDANTS( ", member, ", ", member, ".LEVEL, AFTER )");
    else if (depth == -1)
        fText = concat("DESCENDANTS( ", member, ", ", hierarchy->getUniqueName(), ".LEVELS.COUNT - 1, LEAVES )");
    else if (all)
        fText = concat("DESCENDANTS( ", member, ", ", decimal(depth), ", SELF_AND_BEFORE )");
    else
        fText = concat("DESCENDANTS( ", member, ", ", decimal(depth), ", LEAVES )");
    return this;
}

MDXSet * MDXSet::TakeChildren(
    MDXSet const * set, BRIM_o::Hierarchy const * hierarchy, bool all, std::int32_t depth, KelpString const &)
{
    fQuotedTextValid = false;
    KelpString const s = set->getText();
    KelpString const h = hierarchy->getUniqueName();
    if (depth == -1 && all)
        fText = concat(
            "GENERATE( ", s, ", DESCENDANTS( ", h, ".CURRENTMEMBER, ", h, ".CURRENTMEMBER.LEVEL, AFTER ) )");
    else if (depth == -1)
        fText = concat(
            "GENERATE( ", s, ", DESCENDANTS( ", h, ".CURRENTMEMBER, ", h, ".LEVELS.COUNT - 1, LEAVES ) )");
    else if (all)
        fText = concat("GENERATE( ", s, ", GENERATE( { ", h, ".CURRENTMEMBER }, DESCENDANTS( ", h,
            ".CURRENTMEMBER, ", decimal(depth), ", SELF_AND_BEFORE ) ) )");
    else
        fText = concat("GENERATE( ", s, ", GENERATE( { ", h, ".CURRENTMEMBER }, DESCENDANTS( ", h,
            ".CURRENTMEMBER, ", decimal(depth), ", LEAVES ) ) )");
    return this;
}

MDXSet * MDXSet::TakeLeafNodes(BRIM_o::Hierarchy * hierarchy)
{
    fQuotedTextValid = false;
    std::int64_t const deepest = std::int64_t{ hierarchy->getLevelCount() } - 1;
    KelpString const h = hierarchy->getUniqueName();
    fText = concat("GENERATE( ", h, ".LEVELS(0).MEMBERS, DESCENDANTS( ", h, ".CURRENTMEMBER, ", decimal(deepest),
        ", LEAVES ) )");

    std::map<BRIM_o::CalculationId, BRIM_o::Calculation *> calculations;
    hierarchy->getCalculations(calculations);
    std::vector<KelpString> names;
    for (auto const & [id, calculation] : calculations) {
        if (calculation != nullptr)
            names.push_back(calculation->getUniqueName());
    }
    if (!names.empty())
        rewrite(fText, "UNION( ", fText, ", { ", join(names, ", "), " } )");
    return this;
}
