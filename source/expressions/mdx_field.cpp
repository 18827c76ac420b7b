#include "mdx_field.h"

#include "../host/cube_model.h"
#include "../object_class.h"
#include "../text.h"

#include <utility>

using namespace mdx_text;

static constinit support::ObjectClass gClass{ u"MDXField" };

static KelpString parent_of(BRIM_o::Calculation const * calculation)
{
    KelpString parent = calculation->getParentUniqueName();
    if (parent.empty())
        parent = calculation->getHierarchy()->getUniqueName();
    return parent;
}

MDXField::MDXField(KelpString const & text) : RefCount(gClass), fText(text) {}

MDXField::MDXField(KelpString && text) : RefCount(gClass), fText(std::move(text)) {}

MDXField::MDXField(MDXField const * other) : RefCount(gClass), fText(other->getText()) {}

MDXField::MDXField(KelpString const & owner, KelpString const & name)
    : RefCount(gClass), fText(mdx<u"$1.[$2]">({ owner, name }))
{}

MDXField::MDXField(BRIM_o::Member const * member) : RefCount(gClass), fText(member->getUniqueName()) {}

MDXField::MDXField(BRIM_o::Level const * level, KelpString const & name)
    : RefCount(gClass), fText(mdx<u"$1.[$2]">({ level->getUniqueName(), name }))
{}

MDXField::MDXField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name)
    : RefCount(gClass), fText(mdx<u"$1.[$2]">({ hierarchy->getUniqueName(), name }))
{}

// No blank after the keyword, unlike in TakeDefaultMember.
MDXField::MDXField(BRIM_o::Dimension const * dimension)
    : RefCount(gClass), fText(mdx<u"$1.DEFAULTMEMBER">({ dimension->getUniqueName() }))
{}

MDXField::MDXField(BRIM_o::Hierarchy const * hierarchy)
    : RefCount(gClass), fText(mdx<u"$1.DEFAULTMEMBER">({ hierarchy->getUniqueName() }))
{}

MDXField::MDXField(BRIM_o::Calculation const * calculation, KelpString const & name)
    : RefCount(gClass), fText(mdx<u"$1.[$2]">({ parent_of(calculation), name }))
{}

MDXField::~MDXField() = default;

MDXField & MDXField::operator=(MDXField const & other)
{
    RefCount::operator=(other);
    assign_texts(this, &other);
    return *this;
}

KelpString MDXField::getText() const
{
    return fText;
}

KelpString MDXField::getQuotedText()
{
    return quoted_text(this);
}

void MDXField::writeText(KelpString & out) const
{
    out = fText;
}

MDXField * MDXField::TakeParentOfCalculation(BRIM_o::Calculation const * calculation)
{
    return rewrite(this, parent_of(calculation));
}

void MDXField::Delimit()
{
    std::size_t const first = fText.find_first_not_of(u' ');
    std::size_t const last = fText.find_last_not_of(u' ');
    KelpString const name = fText.substr(first, last - first + 1);
    if (name.back() != u']')
        rewrite<u"[$1]">(this, { name });
}

void MDXField::unuseVector(std::vector<MDXField *> const & fields)
{
    for (MDXField * const field : fields)
        field->unuse();
}
