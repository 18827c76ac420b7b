#include "odbomodule/expressions/mdx_tuple.h"

#include "odbomodule/base/mdx_error.h"
#include "odbomodule/base/object_class.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"

#include <utility>

static support::ObjectClass gClass{ u"MDXTuple" };

template <class TextOf>
static void append_tuple(KelpString & text, std::vector<MDXField *> const & fields, TextOf const & text_of)
{
    if (fields.empty())
        throw MDXError(MDX_ERR_EMPTY_TUPLE);
    if (fields.size() > 1)
        append(text, "( ");
    append_joined(text, fields, ", ", text_of);
    if (fields.size() > 1)
        append(text, " ) ");
}

MDXTuple::MDXTuple() : RefCount(gClass) {}

MDXTuple::MDXTuple(MDXTuple const & other) : RefCount(other), fFields(other.fFields)
{
    for (MDXField * const field : fFields)
        field->use();
}

MDXTuple::~MDXTuple()
{
    MDXField::unuseVector(fFields);
}

MDXTuple & MDXTuple::operator=(MDXTuple const & other)
{
    RefCount::operator=(other);
    std::vector<MDXField *> fields = other.fFields;
    for (MDXField * const field : fields)
        field->use();
    fFields.swap(fields);
    MDXField::unuseVector(fields);
    return *this;
}

void MDXTuple::append_to(KelpString & text) const
{
    append_tuple(text, fFields, [](MDXField const * field) { return field->getText(); });
}

KelpString MDXTuple::getText() const
{
    KelpString text;
    append_to(text);
    return text;
}

KelpString MDXTuple::getQuotedText()
{
    KelpString text;
    append_tuple(text, fFields, [](MDXField * field) { return field->getQuotedText(); });
    return text;
}

void MDXTuple::writeText(KelpString & out) const
{
    out = getText();
}

MDXTuple * MDXTuple::AddField(MDXField * field)
{
    fFields.push_back(field);
    fFields.back()->use();
    return this;
}

std::int32_t MDXTuple::FieldCount()
{
    return static_cast<std::int32_t>(fFields.size());
}

void MDXTuple::unuseVector(std::vector<MDXTuple *> const & tuples)
{
    for (MDXTuple * const tuple : tuples)
        tuple->unuse();
}
