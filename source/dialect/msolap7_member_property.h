#pragma once
#include "../expressions/mdx_member_property.h"
#include "../host/export.h"

/// A member property in the MSOLAP dialect: the property's name is in brackets. The name is inserted unchanged.
class MDX_API MSOLAP7MemberProperty : public MDXMemberProperty {
public:
    MSOLAP7MemberProperty(KelpString const & ownerName, KelpString const & propertyName);
    MSOLAP7MemberProperty(MSOLAP7MemberProperty const &) = default;
    ~MSOLAP7MemberProperty() override;

    /// owner.[property]
    KelpString getText() const override;
    /// [property]
    KelpString getPropertyUniqueName() const override;
};
