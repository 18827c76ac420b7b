#include "mdx_select_query.h"

#include "../expressions/mdx_tuple.h"
#include "../frame/mdx_error.h"
#include "../sets/mdx_set.h"
#include "formula_specifications.h"
#include "../text.h"

#include <iterator>
#include <string_view>
#include <utility>

using namespace mdx_text;

MDXSelectQuery::MDXAxisSpecification::MDXAxisSpecification(
    std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, bool nonEmpty)
    : fNonEmpty(nonEmpty), fSet(hold(set)), fAxisNumber(axis), fProperties(properties)
{}

MDXSelectQuery::MDXAxisSpecification::~MDXAxisSpecification() = default;

KelpString MDXSelectQuery::MDXAxisSpecification::getText()
{
    KelpString text;
    append_to(text);
    return text;
}

void MDXSelectQuery::MDXAxisSpecification::writeText(KelpString & out)
{
    out = getText();
}

void MDXSelectQuery::MDXAxisSpecification::append_to(KelpString & text) const
{
    if (fNonEmpty)
        append<u"NON EMPTY ">(text);
    append<u"$1">(text, { fSet->getText() });
    if (!fProperties.empty())
        append<u" DIMENSION PROPERTIES $1">(text, { join(fProperties, u", ") });
    if (fAxisNumber == 0)
        append<u" ON COLUMNS ">(text);
    else if (fAxisNumber == 1)
        append<u" ON ROWS ">(text);
    else
        append<u" ON AXIS($1) ">(text, { decimal(fAxisNumber) });
}

MDXSelectQuery::MDXSelectQuery(KelpString const & cubeName) : MDXQuery(cubeName)
{
    fQueryType = QT_SELECT;
}

MDXSelectQuery::~MDXSelectQuery()
{
    // Hosts see the order in which references are given back, and a vector may destroy its elements in any order.
    for (auto & formula : fFormulas)
        formula.reset();
    for (auto & axis : fAxes)
        axis.reset();
}

namespace {

// What precedes each part of a statement.
struct Layout {
    std::u16string_view firstFormula, nextFormula, firstAxis, nextAxis, cube, slicer;
};

constexpr Layout kOneLine{ u"WITH ", u" ", u"SELECT ", u", ", u"FROM ", u"WHERE " };
constexpr Layout kSeveralLines{ u"WITH \n       ", u"\n       ", u"\nSELECT \n       ", u",\n       ", u"\nFROM ",
    u"\nWHERE \n      " };

}

KelpString MDXSelectQuery::getText(bool multiLine) const
{
    if (fUseStoredQuery)
        return fStoredQuery;
    if (fAxes.empty())
        throw MDXError(MDX_ERR_NO_AXES);

    Layout const & before = multiLine ? kSeveralLines : kOneLine;
    constexpr std::size_t kUsualLength = 512; // for each axis, and once for all other parts together
    KelpString text;
    text.reserve(kUsualLength * (fAxes.size() + 1));
    for (auto const & formula : fFormulas) {
        if (formula == fFormulas.front())
            append<u"$1$2">(text, { before.firstFormula, formula->getText() });
        else
            append<u"$1$2 ">(text, { before.nextFormula, formula->getText() });
    }
    if (fDrillThrough)
        append<u"DRILLTHROUGH ">(text);
    for (auto const & axis : fAxes) {
        append<u"$1">(text, { axis == fAxes.front() ? before.firstAxis : before.nextAxis });
        axis->append_to(text);
    }
    append<u"$1$2 ">(text, { before.cube, fCubeName });
    if (fSlicer)
        append<u"$1$2 ">(text, { before.slicer, fSlicer->getText() });
    if (!fCellProperties.empty())
        append<u" CELL PROPERTIES $1">(text, { join(fCellProperties, u", ") });
    return text;
}

void MDXSelectQuery::writeText(KelpString & out) const
{
    out = getText(false);
}

void MDXSelectQuery::AddMemberFormula(MDXField * name, MDXValue * value, std::int32_t solveOrder,
    std::vector<KelpString> const & propertyNames, std::vector<KelpString> const & propertyValues)
{
    fFormulas.push_back(std::make_unique<MDXMemberSpecification>(
        name, value, solveOrder, propertyNames, propertyValues, false, fCubeName));
}

void MDXSelectQuery::AddSetFormula(KelpString const & name, MDXSet * set)
{
    fFormulas.push_back(std::make_unique<MDXSetSpecification>(name, set, false, fCubeName));
}

void MDXSelectQuery::AddAxisSpecification(
    std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, NonEmptyStatus status)
{
    if (std::cmp_not_equal(axis, fAxes.size()))
        throw MDXError(MDX_ERR_AXIS_OUT_OF_ORDER);
    fAxes.push_back(std::make_unique<MDXAxisSpecification>(axis, set, properties, status == NES_NON_EMPTY));
}

void MDXSelectQuery::AddSlicerSpecification(MDXField * field)
{
    if (fSlicer) {
        fSlicer->AddField(field);
        return;
    }
    RefPtr<MDXTuple> slicer(new MDXTuple);
    slicer->AddField(field);
    fSlicer = std::move(slicer);
}

void MDXSelectQuery::AddCellProperty(KelpString const & name)
{
    fCellProperties.push_back(name);
}

void MDXSelectQuery::AddCellProperties(std::vector<KelpString> const & names)
{
    // If copying a name failed within insert(), the list could lose names that it has. So copy first.
    std::vector<KelpString> added = names;
    fCellProperties.insert(
        fCellProperties.end(), std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
}

bool MDXSelectQuery::SpecifyDrillThrough()
{
    fDrillThrough = true;
    return true;
}

void MDXSelectQuery::setQuery(KelpString & text)
{
    fStoredQuery = text;
    fUseStoredQuery = true;
}
