#pragma once
#include "../host/export.h"
#include "../host/kelp_string.h"
#include "../refcount.h"

#include <cstdint>
#include <vector>
class MDXField;

MDX_EXPORTS_BEGIN

/// A list of members that is written as one tuple. The tuple holds references to the fields and asks them for their
/// texts when its own text is needed, so later changes to a field appear in the tuple. A field that is asked for
/// its text may read the tuple but not change it: it may not add a field. The last unuse() gives back the fields,
/// from first to last. If memory runs out, the tuple is unchanged.
class MDX_API MDXTuple : public support::RefCount {
public:
    /// An empty list.
    MDXTuple();
    /// Takes new references to the same fields.
    MDXTuple(MDXTuple const & other);

    /// Reports an assertion failure and then replaces its fields with those of the other, which both then share:
    /// tuples are not meant to be assigned.
    MDXTuple & operator=(MDXTuple const & other);

    /// The text of a single field, unchanged, or ( first, second ) for several. Throws MDX_ERR_EMPTY_TUPLE if there
    /// is no field; the tuple stays usable.
    virtual KelpString getText() const;
    /// The same, made from the fields' quoted texts.
    virtual KelpString getQuotedText();
    /// Assigns getText() to `out`.
    virtual void writeText(KelpString & out) const;

    /// Appends a field, which may not be null, and takes a reference to it; the caller keeps its own reference.
    /// Returns the tuple.
    virtual MDXTuple * AddField(MDXField * field);
    /// The number of fields. A field that was added twice counts twice.
    virtual std::int32_t FieldCount();

    /// Gives back one reference to each element, from first to last. The vector keeps its pointers.
    static void unuseVector(std::vector<MDXTuple *> const & tuples);

protected:
    ~MDXTuple() override;

    std::vector<MDXField *> fFields;
};

MDX_EXPORTS_END
