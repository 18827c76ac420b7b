#include "odbomodule/expressions/mdx_member_property.h"

#include "odbomodule/base/object_class.h"
#include "odbomodule/base/text.h"

#include <cstdint>

static support::ObjectClass gClass{ u"MDXMemberProperty" };

MDXMemberProperty::MDXMemberProperty(KelpString const & ownerName, KelpString const & propertyName)
    : RefCount(gClass), fOwnerName(ownerName), fPropertyName(propertyName)
{}

MDXMemberProperty::~MDXMemberProperty() = default;

KelpString MDXMemberProperty::getText() const
{
    return mdx<u"$1.$2">({ fOwnerName, fPropertyName });
}

void MDXMemberProperty::writeText(KelpString & out) const
{
    out = getText();
}

KelpString MDXMemberProperty::getPropertyUniqueName() const
{
    return fPropertyName;
}
