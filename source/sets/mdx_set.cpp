#include "mdx_set.h"

#include "../expressions/mdx_field.h"
#include "../expressions/mdx_tuple.h"
#include "../host/cube_model.h"
#include "../object_class.h"
#include "../text.h"

#include <utility>

using namespace mdx_text;

static constinit support::ObjectClass gClass{ u"MDXSet" };

template <class Element>
static KelpString braced_list(std::vector<Element *> const & elements)
{
    return join(u" { ", elements, u", ", u" } ", [](Element const * element) { return element->getText(); });
}

MDXSet::MDXSet() : MDXSet(KelpString(u"{  }")) {}

MDXSet::MDXSet(KelpString const & text) : RefCount(gClass), fText(text) {}

MDXSet::MDXSet(KelpString && text) : RefCount(gClass), fText(std::move(text)) {}

MDXSet::MDXSet(MDXSet const * other) : RefCount(gClass), fText(other->getText()) {}

MDXSet::MDXSet(std::vector<MDXField *> const & fields) : RefCount(gClass), fText(braced_list(fields)) {}

MDXSet::MDXSet(std::vector<MDXTuple *> const & tuples) : RefCount(gClass), fText(braced_list(tuples)) {}

MDXSet::MDXSet(BRIM_o::Level const * level)
    : RefCount(gClass), fText(mdx<u"$1.MEMBERS ">({ level->getUniqueName() }))
{}

MDXSet::MDXSet(BRIM_o::Hierarchy const * hierarchy)
    : RefCount(gClass), fText(mdx<u"{$1.allmembers}">({ hierarchy->getUniqueName() }))
{}

MDXSet::~MDXSet() = default;

void MDXSet::operator=(MDXSet const & other)
{
    assign_texts(this, &other);
}

KelpString MDXSet::getText() const
{
    return fText;
}

KelpString MDXSet::getQuotedText()
{
    return quoted_text(this);
}

void MDXSet::writeText(KelpString & out) const
{
    out = fText;
}

MDXSet * MDXSet::operator+=(MDXField const & field)
{
    return rewrite<u"UNION( $1, { $2 } )">(this, { fText, field.getText() });
}

MDXSet * MDXSet::operator+=(MDXSet const & other)
{
    return rewrite<u"UNION( $1, $2 )">(this, { fText, other.getText() });
}

MDXSet * MDXSet::operator-=(MDXSet const & other)
{
    return rewrite<u"EXCEPT( $1, { $2 } )">(this, { fText, other.getText() });
}

MDXSet * MDXSet::operator*=(MDXSet const & other)
{
    return rewrite<u"CROSSJOIN( $1, $2 )">(this, { fText, other.getText() });
}

MDXSet * MDXSet::AddField(MDXField const & field, bool unite)
{
    if (unite)
        return rewrite<u"UNION( $1, { $2 } )">(this, { fText, field.getText() });
    return rewrite<u"$1, $2">(this, { fText, field.getText() });
}

MDXSet * MDXSet::AddCalculations()
{
    return rewrite<u"ADDCALCULATEDMEMBERS( $1 ) ">(this, { fText });
}

MDXSet * MDXSet::StripCalculations(BRIM_o::Hierarchy const *, bool)
{
    return rewrite<u"STRIPCALCULATEDMEMBERS( $1 ) ">(this, { fText });
}

MDXSet * MDXSet::Hierarchize(bool, BRIM_o::Hierarchy const *, bool, std::vector<BRIM_o::Calculation *> const &)
{
    return rewrite<u"HIERARCHIZE( $1 ) ">(this, { fText });
}

MDXSet * MDXSet::HierarchizeCalculations(bool)
{
    return rewrite<u"HIERARCHIZE( $1 ) ">(this, { fText });
}

MDXSet * MDXSet::SpecifyDistinct()
{
    return rewrite<u"DISTINCT( $1 ) ">(this, { fText });
}

MDXSet * MDXSet::Empty()
{
    return rewrite<u"{  }">(this);
}

MDXSet * MDXSet::TakeName(KelpString const & text)
{
    return rewrite(this, text);
}

MDXSet * MDXSet::TakeName(MDXSet const * other)
{
    return rewrite(this, other->getText());
}

MDXSet * MDXSet::Intersect(MDXSet const * other)
{
    return rewrite<u"INTERSECT( $1, $2 ) ">(this, { fText, other->getText() });
}

MDXSet * MDXSet::TakeTail()
{
    return rewrite<u"TAIL( $1 ) ">(this, { fText });
}

MDXSet * MDXSet::Delimit()
{
    return rewrite<u"{ $1 } ">(this, { fText });
}

MDXSet * MDXSet::Extract(KelpString const & set, BRIM_o::Hierarchy const * hierarchy)
{
    KelpString const given = set;                  // `set` may be the string that is overwritten
    rewrite<u" { Extract( $1, ">(this, { given }); // the text if the host throws
    return rewrite<u" { Extract( $1, $2 ) } ">(this, { given, hierarchy->getUniqueName() });
}

MDXSet * MDXSet::SetExpression(KelpString const & text)
{
    return rewrite(this, text);
}

MDXSet * MDXSet::nonEmptyCrossjoin(MDXSet const * other)
{
    return rewrite<u"CROSSJOIN( $1, $2 )">(this, { fText, other->getText() });
}

MDXSet * MDXSet::removeCalculationsSpecial(MDXSet *)
{
    return this;
}
