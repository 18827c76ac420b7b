#include "mdx_tuple.h"

#include "mdx_field.h"
#include "../frame/mdx_error.h"
#include "../object_class.h"
#include "../text.h"

using namespace mdx_text;

static constinit support::ObjectClass gClass{ u"MDXTuple" };

template <class TextOf>
static KelpString tuple_of(std::vector<MDXField *> const & fields, TextOf const & text_of)
{
    if (fields.empty())
        throw MDXError(MDX_ERR_EMPTY_TUPLE);
    if (fields.size() == 1)
        return text_of(fields.front());
    return join(u"( ", fields, u", ", u" ) ", text_of);
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

KelpString MDXTuple::getText() const
{
    return tuple_of(fFields, [](MDXField const * field) { return field->getText(); });
}

KelpString MDXTuple::getQuotedText()
{
    return tuple_of(fFields, [](MDXField * field) { return field->getQuotedText(); });
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
