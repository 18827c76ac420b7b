#pragma once
#include "../refcount.h"
#include "../host/export.h"
#include "../host/kelp_string.h"

#include <cstdint>
#include <vector>
class MDXField;

// A list of members, written as one tuple. It holds the fields themselves, with a reference on each, and makes
// its text when asked: a later change of a field shows. A text, and AddField, may throw std::bad_alloc; the tuple
// is as it was then. Born with one reference; the last unuse() deletes it and gives back the fields, from first to
// last.
class MDX_API MDXTuple : public support::RefCount {
public:
    // An empty list.
    MDXTuple();
    // A copy takes references of its own on the same fields.
    MDXTuple(MDXTuple const & other);

    // Reports an assertion failure, then takes over the other's fields: tuples are not meant to be assigned.
    MDXTuple & operator=(MDXTuple const & other);

    // The text of the only field, unchanged; of several, ( first, second ). Throws MDX_ERR_EMPTY_TUPLE without
    // a field; the tuple stays usable.
    virtual KelpString getText() const;
    // The same from the fields' quoted texts.
    virtual KelpString getQuotedText();
    // Assigns what getText gives to `out`.
    virtual void writeText(KelpString & out) const;

    // Appends a field, which may not be null, and takes a reference on it; the caller keeps its own. Returns the
    // tuple.
    virtual MDXTuple * AddField(MDXField * field);
    // The number of places; a field that was added twice has two.
    virtual std::int32_t FieldCount();

    // Gives back one reference on each element, from first to last; the vector keeps its pointers.
    static void unuseVector(std::vector<MDXTuple *> const & tuples);

protected:
    ~MDXTuple() override;

    std::vector<MDXField *> fFields;
};
