#include "msolap7_member_property.h"

#include "../text.h"

using namespace mdx_text;

MSOLAP7MemberProperty::MSOLAP7MemberProperty(KelpString const & ownerName, KelpString const & propertyName)
    : MDXMemberProperty(ownerName, propertyName)
{}

MSOLAP7MemberProperty::~MSOLAP7MemberProperty() = default;

KelpString MSOLAP7MemberProperty::getText() const
{
    return mdx<u"$1.$2">({ fOwnerName, getPropertyUniqueName() });
}

KelpString MSOLAP7MemberProperty::getPropertyUniqueName() const
{
    return mdx<u"[$1]">({ fPropertyName });
}
