#pragma once
#include "../refcount.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

// The name of a member property: an owner's name and the property's own. Both are stored unchanged and never
// change. A text may throw std::bad_alloc. Born with one reference; the last unuse() deletes it.
class MDX_API MDXMemberProperty : public support::RefCount {
public:
    MDXMemberProperty(KelpString const & ownerName, KelpString const & propertyName);
    MDXMemberProperty(MDXMemberProperty const &) = default;
    ~MDXMemberProperty() override;

    // Reports an assertion failure, then copies both names: properties are not meant to be assigned.
    MDXMemberProperty & operator=(MDXMemberProperty const & other);

    // owner.property
    virtual KelpString getText() const;
    // Assigns what getText gives to `out`.
    virtual void writeText(KelpString & out) const;
    // property
    virtual KelpString getPropertyUniqueName() const;

protected:
    KelpString fOwnerName;
    KelpString fPropertyName;
};
