#include "mdx_select_query.h"

#include "../frame/mdx_error.h"
#include "../text.h"
#include "../expressions/mdx_tuple.h"
#include "../sets/mdx_set.h"
#include "formula_specifications.h"

#include <iterator>
#include <utility>

MDXSelectQuery::MDXAxisSpecification::MDXAxisSpecification(
    std::int32_t axis, MDXSet * set, std::vector<KelpString> const & properties, bool nonEmpty)
    : fNonEmpty(nonEmpty), fSet(hold(set)), fAxisNumber(axis), fProperties(properties)
{}

MDXSelectQuery::MDXAxisSpecification::~MDXAxisSpecification() = default;

// A statement appends its axes to its own text, without a text for each.
struct AxisText {
    static void append_to(KelpString & text, MDXSelectQuery::MDXAxisSpecification const & axis)
    {
        if (axis.fNonEmpty)
            append<u"NON EMPTY ">(text);
        text += axis.fSet->getText();
        if (!axis.fProperties.empty())
            append<u" DIMENSION PROPERTIES $1">(text, { join(axis.fProperties, u", ") });
        if (axis.fAxisNumber == 0)
            append<u" ON COLUMNS ">(text);
        else if (axis.fAxisNumber == 1)
            append<u" ON ROWS ">(text);
        else
            append<u" ON AXIS($1) ">(text, { decimal(axis.fAxisNumber) });
    }
};

KelpString MDXSelectQuery::MDXAxisSpecification::getText()
{
    KelpString text;
    AxisText::append_to(text, *this);
    return text;
}

void MDXSelectQuery::MDXAxisSpecification::writeText(KelpString & out)
{
    out = getText();
}

MDXSelectQuery::MDXSelectQuery(KelpString const & cubeName) : MDXQuery(cubeName)
{
    fQueryType = QT_SELECT;
}

MDXSelectQuery::~MDXSelectQuery()
{
    for (auto & formula : fFormulas)
        formula.reset();
    for (auto & axis : fAxes)
        axis.reset();
}

// Room for an axis, and for all other parts together: a guess that most texts fit into.
static constexpr std::size_t kUsual = 512;

// Appends the row as it stands on one line, or as it stands on several.
template <compiled::Literal onOneLine, compiled::Literal onSeveral, std::size_t Count>
static void append_form(KelpString & text, bool multiLine, Text const (&texts)[Count])
{
    if (multiLine)
        append<onSeveral>(text, texts);
    else
        append<onOneLine>(text, texts);
}

KelpString MDXSelectQuery::getText(bool multiLine) const
{
    if (fUseStoredQuery)
        return fStoredQuery;
    if (fAxes.empty())
        throw MDXError(MDX_ERR_NO_AXES);

    KelpString text;
    text.reserve(kUsual * (fAxes.size() + 1));
    for (auto const & formula : fFormulas) {
        if (formula == fFormulas.front())
            append_form<u"WITH $1", u"WITH \n       $1">(text, multiLine, { formula->getText() });
        else
            append_form<u" $1 ", u"\n       $1 ">(text, multiLine, { formula->getText() });
    }
    if (fDrillThrough)
        append<u"DRILLTHROUGH ">(text);
    for (auto const & axis : fAxes) {
        if (axis == fAxes.front())
            text.append(multiLine ? u"\nSELECT \n       " : u"SELECT ");
        else
            text.append(multiLine ? u",\n       " : u", ");
        AxisText::append_to(text, *axis);
    }
    append_form<u"FROM $1 ", u"\nFROM $1 ">(text, multiLine, { fCubeName });
    if (fSlicer)
        append_form<u"WHERE $1 ", u"\nWHERE \n      $1 ">(text, multiLine, { fSlicer->getText() });
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
    // Copied first: what fails while the list grows would lose what it had.
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
