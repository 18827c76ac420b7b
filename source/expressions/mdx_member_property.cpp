#include "expressions/mdx_member_property.h"

#include "frame/concat.h"

#include <atomic>
#include <cstdint>

static std::atomic<std::int32_t> gNextId{ 0 };

MDXMemberProperty::MDXMemberProperty(KelpString const & ownerName, KelpString const & propertyName)
    : RefCount(KelpString::Base(u"MDXMemberProperty"), gNextId++),
      fOwnerName(ownerName),
      fPropertyName(propertyName)
{}

MDXMemberProperty::~MDXMemberProperty() = default;

KelpString MDXMemberProperty::getText() const
{
    return concat(fOwnerName, ".", fPropertyName);
}

void MDXMemberProperty::writeText(KelpString & out) const
{
    out = getText();
}

KelpString MDXMemberProperty::getPropertyUniqueName() const
{
    return fPropertyName;
}
