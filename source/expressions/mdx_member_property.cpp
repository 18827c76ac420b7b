#include "mdx_member_property.h"

#include "../object_class.h"
#include "../text.h"

#include <utility>

using namespace mdx_text;

static constinit support::ObjectClass gClass{ u"MDXMemberProperty" };

MDXMemberProperty::MDXMemberProperty(KelpString const & ownerName, KelpString const & propertyName)
    : RefCount(gClass), fOwnerName(ownerName), fPropertyName(propertyName)
{}

MDXMemberProperty::~MDXMemberProperty() = default;

MDXMemberProperty & MDXMemberProperty::operator=(MDXMemberProperty const & other)
{
    RefCount::operator=(other);
    KelpString ownerName = other.fOwnerName;
    KelpString propertyName = other.fPropertyName;
    fOwnerName = std::move(ownerName);
    fPropertyName = std::move(propertyName);
    return *this;
}

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
