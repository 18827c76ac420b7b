#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/text.h"
#include "odbomodule/host/cube_model.h"

MDXSet * MDXSet::TakeTopLevel(BRIM_o::Hierarchy const * hierarchy)
{
    fQuotedTextValid = false;
    fText = " { ";
    if (BRIM_o::Level const * const top = hierarchy != nullptr ? hierarchy->getLevel(0) : nullptr)
        rewrite(fText, fText, top->getUniqueName(), ".Members ");
    append(fText, " } ");
    return this;
}

MDXSet * MDXSet::TakeWholeLevel(BRIM_o::Level const * level)
{
    fQuotedTextValid = false;
    fText = concat(level->getUniqueName(), ".MEMBERS");
    return this;
}

MDXSet * MDXSet::TakeAllMembers(KelpString const & name)
{
    fQuotedTextValid = false;
    fText = concat(name, ".MEMBERS");
    return this;
}

MDXSet * MDXSet::TakeAllMembers(BRIM_o::Hierarchy const * hierarchy)
{
    fQuotedTextValid = false;
    fText = concat(hierarchy->getUniqueName(), ".MEMBERS");
    return this;
}

MDXSet * MDXSet::TakeBaseLevel(BRIM_o::Hierarchy const * hierarchy, std::int32_t level)
{
    fQuotedTextValid = false;
    std::int64_t const ordinal = std::int64_t{ level } - 1;
    fText = concat(hierarchy->getUniqueName(), ".LEVELS( ", decimal(ordinal), " ).MEMBERS");
    return this;
}

MDXSet * MDXSet::Invert(BRIM_o::Hierarchy const * hierarchy)
{
    fQuotedTextValid = false;
    rewrite(fText, "EXCEPT( ", hierarchy->getUniqueName(), ".MEMBERS, ", fText, " ) ");
    return this;
}
