#include "odbomodule/expressions/mdx_field.h"

#include "odbomodule/base/text.h"
#include "odbomodule/host/cube_model.h"

MDXField * MDXField::MoveToChild(KelpString const & name)
{
    fQuotedTextValid = false;
    rewrite(fText, fText, ".[", name, "]");
    return this;
}

MDXField * MDXField::MoveToRootNode(BRIM_o::Dimension const * dimension, KelpString const & name)
{
    fQuotedTextValid = false;
    fText = concat(dimension->getUniqueName(), ".[", name, "]");
    return this;
}

MDXField * MDXField::MoveToFirstChild()
{
    fQuotedTextValid = false;
    rewrite(fText, fText, ".FIRSTCHILD ");
    return this;
}

MDXField * MDXField::MoveToParent()
{
    fQuotedTextValid = false;
    rewrite(fText, fText, ".PARENT");
    return this;
}

MDXField * MDXField::MoveToFirstSibling()
{
    fQuotedTextValid = false;
    rewrite(fText, fText, ".LEVEL.MEMBERS( 0 )");
    return this;
}

MDXField * MDXField::MoveToLastSibling()
{
    fQuotedTextValid = false;
    rewrite(fText, fText, ".LEVEL.MEMBERS( COUNT( ", fText, ".LEVEL.MEMBERS ) - 1 ) ");
    return this;
}

// No blank between the two arguments, unlike in TakeAncestorAtLevel.
MDXField * MDXField::MoveToRoot(BRIM_o::Dimension const *)
{
    fQuotedTextValid = false;
    rewrite(fText, "ANCESTOR( ", fText, ",", fText, ".DIMENSION.LEVELS( 0 ) ) ");
    return this;
}

MDXField * MDXField::DrillUp(BRIM_o::Dimension const *)
{
    fQuotedTextValid = false;
    rewrite(fText, "{ ", fText, ".PARENT, ", fText, " }.ITEM(0) ");
    return this;
}

MDXField * MDXField::TakeCurrentMember(BRIM_o::Dimension const * dimension)
{
    fQuotedTextValid = false;
    fText = concat(dimension->getUniqueName(), ".CURRENTMEMBER ");
    return this;
}

MDXField * MDXField::TakeCurrentMember(BRIM_o::Hierarchy const * hierarchy)
{
    fQuotedTextValid = false;
    fText = concat(hierarchy->getUniqueName(), ".CURRENTMEMBER ");
    return this;
}

MDXField * MDXField::TakeDefaultMember(BRIM_o::Hierarchy const * hierarchy)
{
    fQuotedTextValid = false;
    fText = concat(hierarchy->getUniqueName(), ".DEFAULTMEMBER ");
    return this;
}

MDXField * MDXField::TakeAncestorAtLevel(BRIM_o::Dimension const *, std::int32_t level)
{
    fQuotedTextValid = false;
    rewrite(fText, " ANCESTOR( ", fText, ", ", fText, ".DIMENSION.LEVELS(", decimal(level), ") ) ");
    return this;
}

MDXField * MDXField::TakeNameOfCalculation(BRIM_o::Calculation const * calculation)
{
    fQuotedTextValid = false;
    fText = calculation->getUniqueName();
    return this;
}

// The neighbour, else the last of the level with its calculated members, else the member itself.
MDXField * MDXField::LoopLeft()
{
    fQuotedTextValid = false;
    rewrite(fText, " { ", fText, ".PREVMEMBER, ADDCALCULATEDMEMBERS( ", fText,
        ".LEVEL.MEMBERS ).ITEM( COUNT( ADDCALCULATEDMEMBERS( ", fText, ".LEVEL.MEMBERS ) ) - 1 ), ", fText,
        " }.ITEM(0) ");
    return this;
}

// The neighbour, else the first calculated member of the level, else the first member, else the member itself.
MDXField * MDXField::LoopRight()
{
    fQuotedTextValid = false;
    rewrite(fText, " { ", fText, ".NEXTMEMBER, EXCEPT( ADDCALCULATEDMEMBERS( ", fText, ".LEVEL.MEMBERS ), ", fText,
        ".LEVEL.MEMBERS ), ", fText, ".LEVEL.MEMBERS( 0 ), ", fText, " }.ITEM(0)");
    return this;
}

MDXField * MDXField::ReplaceName(KelpString const & text)
{
    fQuotedTextValid = false;
    fText = text;
    return this;
}
