#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../refcount.h"

MDX_EXPORTS_BEGIN

/// The name of a member property: its owner and the property. Both names are stored as given;
/// only an assignment replaces them.
class MDX_API MDXMemberProperty : public support::RefCount {
public:
    MDXMemberProperty(KelpString const & ownerName, KelpString const & propertyName);
    MDXMemberProperty(MDXMemberProperty const &) = default;
    ~MDXMemberProperty() override;

    /// Reports an assertion failure and then copies both names: properties are not meant to be assigned.
    MDXMemberProperty & operator=(MDXMemberProperty const & other);

    /// owner.property
    virtual KelpString getText() const;
    /// Assigns getText() to `out`.
    virtual void writeText(KelpString & out) const;
    /// property
    virtual KelpString getPropertyUniqueName() const;

protected:
    KelpString fOwnerName;
    KelpString fPropertyName;
};

MDX_EXPORTS_END
