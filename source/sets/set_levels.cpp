#include "mdx_set.h"

#include "../host/cube_model.h"
#include "../text.h"

using namespace mdx_text;

MDXSet * MDXSet::TakeTopLevel(BRIM_o::Hierarchy const * hierarchy)
{
    rewrite<u" { ">(this); // the text if the host throws
    BRIM_o::Level const * const top = hierarchy != nullptr ? hierarchy->getLevel(0) : nullptr;
    if (top == nullptr)
        return rewrite<u" {  } ">(this);
    return rewrite<u" { $1.Members  } ">(this, { top->getUniqueName() });
}

MDXSet * MDXSet::TakeWholeLevel(BRIM_o::Level const * level)
{
    return rewrite<u"$1.MEMBERS">(this, { level->getUniqueName() });
}

MDXSet * MDXSet::TakeAllMembers(KelpString const & name)
{
    return rewrite<u"$1.MEMBERS">(this, { name });
}

MDXSet * MDXSet::TakeAllMembers(BRIM_o::Hierarchy const * hierarchy)
{
    return rewrite<u"$1.MEMBERS">(this, { hierarchy->getUniqueName() });
}

MDXSet * MDXSet::TakeBaseLevel(BRIM_o::Hierarchy const * hierarchy, std::int32_t level)
{
    Decimal const ordinal = decimal(std::int64_t{ level } - 1);
    return rewrite<u"$1.LEVELS( $2 ).MEMBERS">(this, { hierarchy->getUniqueName(), ordinal });
}

MDXSet * MDXSet::Invert(BRIM_o::Hierarchy const * hierarchy)
{
    return rewrite<u"EXCEPT( $1.MEMBERS, $2 ) ">(this, { hierarchy->getUniqueName(), fText });
}
