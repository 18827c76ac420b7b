#include "mdx_field.h"

#include "../host/cube_model.h"
#include "../text.h"

using namespace mdx_text;

MDXField * MDXField::MoveToChild(KelpString const & name)
{
    return rewrite<u"$1.[$2]">(this, { fText, name });
}

MDXField * MDXField::MoveToRootNode(BRIM_o::Dimension const * dimension, KelpString const & name)
{
    return rewrite<u"$1.[$2]">(this, { dimension->getUniqueName(), name });
}

MDXField * MDXField::MoveToFirstChild()
{
    return rewrite<u"$1.FIRSTCHILD ">(this, { fText });
}

MDXField * MDXField::MoveToParent()
{
    return rewrite<u"$1.PARENT">(this, { fText });
}

MDXField * MDXField::MoveToFirstSibling()
{
    return rewrite<u"$1.LEVEL.MEMBERS( 0 )">(this, { fText });
}

MDXField * MDXField::MoveToLastSibling()
{
    return rewrite<u"$1.LEVEL.MEMBERS( COUNT( $1.LEVEL.MEMBERS ) - 1 ) ">(this, { fText });
}

// No blank between the two arguments, unlike in TakeAncestorAtLevel.
MDXField * MDXField::MoveToRoot(BRIM_o::Dimension const *)
{
    return rewrite<u"ANCESTOR( $1,$1.DIMENSION.LEVELS( 0 ) ) ">(this, { fText });
}

MDXField * MDXField::DrillUp(BRIM_o::Dimension const *)
{
    return rewrite<u"{ $1.PARENT, $1 }.ITEM(0) ">(this, { fText });
}

MDXField * MDXField::TakeCurrentMember(BRIM_o::Dimension const * dimension)
{
    return rewrite<u"$1.CURRENTMEMBER ">(this, { dimension->getUniqueName() });
}

MDXField * MDXField::TakeCurrentMember(BRIM_o::Hierarchy const * hierarchy)
{
    return rewrite<u"$1.CURRENTMEMBER ">(this, { hierarchy->getUniqueName() });
}

MDXField * MDXField::TakeDefaultMember(BRIM_o::Hierarchy const * hierarchy)
{
    return rewrite<u"$1.DEFAULTMEMBER ">(this, { hierarchy->getUniqueName() });
}

MDXField * MDXField::TakeAncestorAtLevel(BRIM_o::Dimension const *, std::int32_t level)
{
    return rewrite<u" ANCESTOR( $1, $1.DIMENSION.LEVELS($2) ) ">(this, { fText, decimal(level) });
}

MDXField * MDXField::TakeNameOfCalculation(BRIM_o::Calculation const * calculation)
{
    return rewrite(this, calculation->getUniqueName());
}

// The neighbour, else the last member of the level, calculated members included, else the member itself.
MDXField * MDXField::LoopLeft()
{
    return rewrite<u" { $1.PREVMEMBER, ADDCALCULATEDMEMBERS( $1.LEVEL.MEMBERS )"
                   u".ITEM( COUNT( ADDCALCULATEDMEMBERS( $1.LEVEL.MEMBERS ) ) - 1 ), $1 }.ITEM(0) ">(
        this, { fText });
}

// The neighbour, else the first calculated member of the level, else the first member, else the member itself.
MDXField * MDXField::LoopRight()
{
    return rewrite<u" { $1.NEXTMEMBER, EXCEPT( ADDCALCULATEDMEMBERS( $1.LEVEL.MEMBERS ), $1.LEVEL.MEMBERS ), "
                   u"$1.LEVEL.MEMBERS( 0 ), $1 }.ITEM(0)">(this, { fText });
}

MDXField * MDXField::ReplaceName(KelpString const & text)
{
    return rewrite(this, text);
}
