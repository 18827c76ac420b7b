#include "odbomodule/expressions/mdx_field.h"

#include "odbomodule/base/object_class.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/member_names.h"
#include "odbomodule/host/cube_model.h"

#include <utility>

static support::ObjectClass gClass{ u"MDXField" };

static KelpString parent_of(BRIM_o::Calculation const * calculation)
{
    KelpString parent = calculation->getParentUniqueName();
    if (parent.empty())
        parent = calculation->getHierarchy()->getUniqueName();
    return parent;
}

MDXField::MDXField(KelpString && text) : RefCount(gClass), fText(std::move(text)) {}

MDXField::MDXField(KelpString const & text) : MDXField(KelpString(text)) {}

MDXField::MDXField(MDXField const * other) : MDXField(other->getText()) {}

MDXField::MDXField(KelpString const & owner, KelpString const & name) : MDXField(concat(owner, ".[", name, "]")) {}

MDXField::MDXField(BRIM_o::Member const * member) : MDXField(member->getUniqueName()) {}

MDXField::MDXField(BRIM_o::Level const * level, KelpString const & name)
    : MDXField(concat(level->getUniqueName(), ".[", name, "]"))
{}

MDXField::MDXField(BRIM_o::Hierarchy const * hierarchy, KelpString const & name)
    : MDXField(concat(hierarchy->getUniqueName(), ".[", name, "]"))
{}

// No blank behind the keyword, unlike in TakeDefaultMember.
MDXField::MDXField(BRIM_o::Dimension const * dimension)
    : MDXField(concat(dimension->getUniqueName(), ".DEFAULTMEMBER"))
{}

MDXField::MDXField(BRIM_o::Hierarchy const * hierarchy)
    : MDXField(concat(hierarchy->getUniqueName(), ".DEFAULTMEMBER"))
{}

MDXField::MDXField(BRIM_o::Calculation const * calculation, KelpString const & name)
    : MDXField(concat(parent_of(calculation), ".[", name, "]"))
{}

MDXField::~MDXField() = default;

KelpString MDXField::getText() const
{
    return fText;
}

KelpString MDXField::getQuotedText()
{
    if (!fQuotedTextValid) {
        quote_member_name(fQuotedText, fText);
        fQuotedTextValid = true;
    }
    return fQuotedText;
}

void MDXField::writeText(KelpString & out) const
{
    out = fText;
}

MDXField * MDXField::TakeParentOfCalculation(BRIM_o::Calculation const * calculation)
{
    fQuotedTextValid = false;
    fText = parent_of(calculation);
    return this;
}

void MDXField::Delimit()
{
    fQuotedTextValid = false;
    std::size_t const first = fText.find_first_not_of(u' ');
    std::size_t const last = fText.find_last_not_of(u' ');
    KelpString const name = fText.substr(first, last - first + 1);
    if (name.back() != u']')
        fText = concat("[", name, "]");
}

void MDXField::unuseVector(std::vector<MDXField *> const & fields)
{
    for (MDXField * const field : fields)
        field->unuse();
}
