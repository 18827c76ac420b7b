#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/text.h"
#include "odbomodule/host/cube_model.h"

// Two blanks ahead of the brace; only the forms on a set brace without blanks, or not at all.
MDXSet * MDXSet::DrillDown(BRIM_o::Hierarchy const * hierarchy, KelpString const & given, bool recursive)
{
    fQuotedTextValid = false;
    if (recursive)
        rewrite(fText, "DRILLDOWNMEMBER( ", fText, ", ", hierarchy->getUniqueName(), ".MEMBERS , RECURSIVE ) ");
    else
        rewrite(fText, "DRILLDOWNMEMBER( ", fText, ",  { ", given, " } ) ");
    return this;
}

MDXSet * MDXSet::DrillDownOnSet(KelpString const & given)
{
    fQuotedTextValid = false;
    rewrite(fText, "DRILLDOWNMEMBER( ", fText, ", {", given, "} ) ");
    return this;
}

MDXSet * MDXSet::DrillDownOnSet(MDXSet const * other)
{
    fQuotedTextValid = false;
    rewrite(fText, "DRILLDOWNMEMBER( ", fText, ", {", other->getText(), "} ) ");
    return this;
}

MDXSet * MDXSet::DrillUp(KelpString const & given)
{
    fQuotedTextValid = false;
    rewrite(fText, "DRILLUPMEMBER( ", fText, ",  { ", given, " } ) ");
    return this;
}

MDXSet * MDXSet::DrillUpOnSet(KelpString const & given)
{
    fQuotedTextValid = false;
    rewrite(fText, "DRILLUPMEMBER( Hierarchize( ", fText, " ) , ", given, " ) ");
    return this;
}

MDXSet * MDXSet::DrillUpOnSet(MDXSet const * other)
{
    fQuotedTextValid = false;
    rewrite(fText, "DRILLUPMEMBER( Hierarchize( ", fText, " ) , ", other->getText(), " ) ");
    return this;
}

MDXSet * MDXSet::ToggleDrillStateOnSet(MDXSet const * other, bool recursive)
{
    fQuotedTextValid = false;
    if (recursive)
        rewrite(fText, "TOGGLEDRILLSTATE( ", fText, ", ", other->getText(), ", RECURSIVE )");
    else
        rewrite(fText, "TOGGLEDRILLSTATE( ", fText, ", ", other->getText(), " ) ");
    return this;
}
