#include "mdx_set.h"

#include "../host/cube_model.h"
#include "../text.h"

using namespace mdx_text;

// DrillDown and DrillUp write two blanks before the brace. The ...OnSet operations write one blank, or no brace.
MDXSet * MDXSet::DrillDown(BRIM_o::Hierarchy const * hierarchy, KelpString const & given, bool recursive)
{
    if (recursive)
        return rewrite<u"DRILLDOWNMEMBER( $1, $2.MEMBERS , RECURSIVE ) ">(
            this, { fText, hierarchy->getUniqueName() });
    return rewrite<u"DRILLDOWNMEMBER( $1,  { $2 } ) ">(this, { fText, given });
}

MDXSet * MDXSet::DrillDownOnSet(KelpString const & given)
{
    return rewrite<u"DRILLDOWNMEMBER( $1, {$2} ) ">(this, { fText, given });
}

MDXSet * MDXSet::DrillDownOnSet(MDXSet const * other)
{
    return rewrite<u"DRILLDOWNMEMBER( $1, {$2} ) ">(this, { fText, other->getText() });
}

MDXSet * MDXSet::DrillUp(KelpString const & given)
{
    return rewrite<u"DRILLUPMEMBER( $1,  { $2 } ) ">(this, { fText, given });
}

MDXSet * MDXSet::DrillUpOnSet(KelpString const & given)
{
    return rewrite<u"DRILLUPMEMBER( Hierarchize( $1 ) , $2 ) ">(this, { fText, given });
}

MDXSet * MDXSet::DrillUpOnSet(MDXSet const * other)
{
    return rewrite<u"DRILLUPMEMBER( Hierarchize( $1 ) , $2 ) ">(this, { fText, other->getText() });
}

MDXSet * MDXSet::ToggleDrillStateOnSet(MDXSet const * other, bool recursive)
{
    if (recursive)
        return rewrite<u"TOGGLEDRILLSTATE( $1, $2, RECURSIVE )">(this, { fText, other->getText() });
    return rewrite<u"TOGGLEDRILLSTATE( $1, $2 ) ">(this, { fText, other->getText() });
}
