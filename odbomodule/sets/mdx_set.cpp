#include "odbomodule/sets/mdx_set.h"

#include "odbomodule/base/object_class.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_tuple.h"
#include "odbomodule/expressions/member_names.h"
#include "odbomodule/host/cube_model.h"

#include <utility>

static support::ObjectClass gClass{ u"MDXSet" };

template <class Element>
static KelpString braced_list(std::vector<Element *> const & elements)
{
    return concat(" { ", join(elements, ", ", [](Element const * element) { return element->getText(); }), " } ");
}

MDXSet::MDXSet(KelpString && text) : RefCount(gClass), fText(std::move(text)) {}

MDXSet::MDXSet(KelpString const & text) : MDXSet(KelpString(text)) {}

MDXSet::MDXSet() : MDXSet(KelpString("{  }")) {}

MDXSet::MDXSet(MDXSet const * other) : MDXSet(other->getText()) {}

MDXSet::MDXSet(std::vector<MDXField *> const & fields) : MDXSet(braced_list(fields)) {}

MDXSet::MDXSet(std::vector<MDXTuple *> const & tuples) : MDXSet(braced_list(tuples)) {}

MDXSet::MDXSet(BRIM_o::Level const * level) : MDXSet(concat(level->getUniqueName(), ".MEMBERS ")) {}

MDXSet::MDXSet(BRIM_o::Hierarchy const * hierarchy)
    : MDXSet(concat("{", hierarchy->getUniqueName(), ".allmembers}"))
{}

MDXSet::~MDXSet() = default;

void MDXSet::operator=(MDXSet const & other)
{
    bool const valid = other.fQuotedTextValid;
    fQuotedTextValid = false;
    fText = other.fText;
    fQuotedText = other.fQuotedText;
    fQuotedTextValid = valid;
}

KelpString MDXSet::getText() const
{
    return fText;
}

KelpString MDXSet::getQuotedText()
{
    if (!fQuotedTextValid) {
        quote_member_name(fQuotedText, fText);
        fQuotedTextValid = true;
    }
    return fQuotedText;
}

void MDXSet::writeText(KelpString & out) const
{
    out = fText;
}

MDXSet * MDXSet::operator+=(MDXField const & field)
{
    fQuotedTextValid = false;
    rewrite(fText, "UNION( ", fText, ", { ", field.getText(), " } )");
    return this;
}

MDXSet * MDXSet::operator+=(MDXSet const & other)
{
    fQuotedTextValid = false;
    rewrite(fText, "UNION( ", fText, ", ", other.getText(), " )");
    return this;
}

MDXSet * MDXSet::operator-=(MDXSet const & other)
{
    fQuotedTextValid = false;
    rewrite(fText, "EXCEPT( ", fText, ", { ", other.getText(), " } )");
    return this;
}

MDXSet * MDXSet::operator*=(MDXSet const & other)
{
    fQuotedTextValid = false;
    rewrite(fText, "CROSSJOIN( ", fText, ", ", other.getText(), " )");
    return this;
}

MDXSet * MDXSet::AddField(MDXField const & field, bool unite)
{
    fQuotedTextValid = false;
    if (unite)
        rewrite(fText, "UNION( ", fText, ", { ", field.getText(), " } )");
    else
        rewrite(fText, fText, ", ", field.getText());
    return this;
}

MDXSet * MDXSet::AddCalculations()
{
    fQuotedTextValid = false;
    rewrite(fText, "ADDCALCULATEDMEMBERS( ", fText, " ) ");
    return this;
}

MDXSet * MDXSet::StripCalculations(BRIM_o::Hierarchy const *, bool)
{
    fQuotedTextValid = false;
    rewrite(fText, "STRIPCALCULATEDMEMBERS( ", fText, " ) ");
    return this;
}

MDXSet * MDXSet::Hierarchize(bool, BRIM_o::Hierarchy const *, bool, std::vector<BRIM_o::Calculation *> const &)
{
    fQuotedTextValid = false;
    rewrite(fText, "HIERARCHIZE( ", fText, " ) ");
    return this;
}

MDXSet * MDXSet::HierarchizeCalculations(bool)
{
    fQuotedTextValid = false;
    rewrite(fText, "HIERARCHIZE( ", fText, " ) ");
    return this;
}

MDXSet * MDXSet::SpecifyDistinct()
{
    fQuotedTextValid = false;
    rewrite(fText, "DISTINCT( ", fText, " ) ");
    return this;
}

MDXSet * MDXSet::Empty()
{
    fQuotedTextValid = false;
    fText = "{  }";
    return this;
}

MDXSet * MDXSet::TakeName(KelpString const & text)
{
    fQuotedTextValid = false;
    fText = text;
    return this;
}

MDXSet * MDXSet::TakeName(MDXSet const * other)
{
    fQuotedTextValid = false;
    fText = other->getText();
    return this;
}

MDXSet * MDXSet::Intersect(MDXSet const * other)
{
    fQuotedTextValid = false;
    rewrite(fText, "INTERSECT( ", fText, ", ", other->getText(), " ) ");
    return this;
}

MDXSet * MDXSet::TakeTail()
{
    fQuotedTextValid = false;
    rewrite(fText, "TAIL( ", fText, " ) ");
    return this;
}

MDXSet * MDXSet::Delimit()
{
    fQuotedTextValid = false;
    rewrite(fText, "{ ", fText, " } ");
    return this;
}

MDXSet * MDXSet::Extract(KelpString const & set, BRIM_o::Hierarchy const * hierarchy)
{
    fQuotedTextValid = false;
    fText = concat(" { Extract( ", set, ", ");
    rewrite(fText, fText, hierarchy->getUniqueName(), " ) } ");
    return this;
}

MDXSet * MDXSet::SetExpression(KelpString const & text)
{
    fQuotedTextValid = false;
    fText = text;
    return this;
}

MDXSet * MDXSet::nonEmptyCrossjoin(MDXSet const * other)
{
    fQuotedTextValid = false;
    rewrite(fText, "CROSSJOIN( ", fText, ", ", other->getText(), " )");
    return this;
}

MDXSet * MDXSet::removeCalculationsSpecial(MDXSet *)
{
    return this;
}
