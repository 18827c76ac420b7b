#include "odbomodule/statements/mdx_select_query.h"

#include "odbomodule/base/mdx_error.h"
#include "odbomodule/base/text.h"
#include "odbomodule/expressions/mdx_field.h"
#include "odbomodule/expressions/mdx_tuple.h"
#include "odbomodule/expressions/mdx_value.h"
#include "odbomodule/sets/mdx_set.h"
#include "odbomodule/statements/formula_specifications.h"

// Room for what stands around the set of an axis, and for all that is no axis: guesses that most texts fit into.
static constexpr std::size_t kAroundAxis = 32;
static constexpr std::size_t kBesideAxes = 384;

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

void MDXSelectQuery::MDXAxisSpecification::append_to(KelpString & text) const
{
    if (fNonEmpty)
        append(text, "NON EMPTY ");
    if (fReadsInPlace)
        append(text, fSet->fText);
    else
        append(text, fSet->getText());
    if (!fProperties.empty())
        append(text, " DIMENSION PROPERTIES ", join(fProperties, ", "));
    if (fAxisNumber == 0)
        append(text, " ON COLUMNS ");
    else if (fAxisNumber == 1)
        append(text, " ON ROWS ");
    else
        append(text, " ON AXIS(", decimal(fAxisNumber), ") ");
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

KelpString MDXSelectQuery::getText(bool multiLine) const
{
    if (fUseStoredQuery)
        return fStoredQuery;
    if (fAxes.empty())
        throw MDXError(MDX_ERR_NO_AXES);

    std::size_t room = kBesideAxes;
    for (auto const & axis : fAxes)
        room += axis->fSet->fText.size() + kAroundAxis;
    KelpString text;
    text.reserve(room);
    auto const put = [&text, multiLine](auto const & onSeveral, auto const & onOne) {
        if (multiLine)
            append(text, onSeveral);
        else
            append(text, onOne);
    };

    for (auto const & formula : fFormulas) {
        bool const first = &formula == &fFormulas.front();
        if (first)
            put("WITH \n       ", "WITH ");
        else
            put("\n       ", " ");
        append(text, formula->getText());
        if (!first)
            append(text, " ");
    }
    if (fDrillThrough)
        append(text, "DRILLTHROUGH ");

    put("\nSELECT \n       ", "SELECT ");
    for (auto const & axis : fAxes) {
        if (&axis != &fAxes.front())
            put(",\n       ", ", ");
        axis->append_to(text);
    }
    put("\nFROM ", "FROM ");
    append(text, fCubeName, " ");
    if (fSlicer) {
        put("\nWHERE \n      ", "WHERE ");
        fSlicer->append_to(text);
        append(text, " ");
    }
    if (!fCellProperties.empty())
        append(text, " CELL PROPERTIES ", join(fCellProperties, ", "));
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
    if (axis < 0 || static_cast<std::size_t>(axis) != fAxes.size())
        throw MDXError(MDX_ERR_AXIS_OUT_OF_ORDER);
    fAxes.push_back(std::make_unique<MDXAxisSpecification>(axis, set, properties, status == NES_NON_EMPTY));
}

void MDXSelectQuery::read_last_axis_in_place()
{
    fAxes.back()->fReadsInPlace = true;
}

void MDXSelectQuery::AddSlicerSpecification(MDXField * field)
{
    if (fSlicer) {
        fSlicer->AddField(field);
        return;
    }
    RefPtr<MDXTuple> const slicer(new MDXTuple);
    slicer->AddField(field);
    fSlicer = slicer;
}

void MDXSelectQuery::AddCellProperty(KelpString const & name)
{
    fCellProperties.push_back(name);
}

void MDXSelectQuery::AddCellProperties(std::vector<KelpString> const & names)
{
    fCellProperties.insert(fCellProperties.end(), names.begin(), names.end());
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
