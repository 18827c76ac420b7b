#include "odbomodule/dialect/msolap7_member_property.h"

#include "odbomodule/base/text.h"

MSOLAP7MemberProperty::MSOLAP7MemberProperty(KelpString const & ownerName, KelpString const & propertyName)
    : MDXMemberProperty(ownerName, propertyName)
{}

MSOLAP7MemberProperty::~MSOLAP7MemberProperty() = default;

KelpString MSOLAP7MemberProperty::getText() const
{
    return concat(fOwnerName, ".", getPropertyUniqueName());
}

KelpString MSOLAP7MemberProperty::getPropertyUniqueName() const
{
    return concat("[", fPropertyName, "]");
}
