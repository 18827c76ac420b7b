#include "sales.h"

namespace {

void members(Sales & u)
{
    u.row("MoveToChild: a city", u.ireland()->MoveToChild("Dublin"));
    u.row("MoveToRootNode: a country", u.member("")->MoveToRootNode(u.cube.dimension("[Store]"), "Ireland"));
    u.row("MoveToFirstChild: a city", u.ireland()->MoveToFirstChild());
    u.row("MoveToFirstChild: of one without", u.norway()->MoveToFirstChild());
    u.row("MoveToParent: a country", u.cork()->MoveToParent());
    u.row("MoveToParent: past the top", u.member("[Store].[All Stores]")->MoveToParent());
    u.row("MoveToFirstSibling: of the level", u.cork()->MoveToFirstSibling());
    u.row("MoveToLastSibling: of the level", u.cork()->MoveToLastSibling());
    u.row("MoveToRoot: All", u.cork()->MoveToRoot(nullptr));
    u.row("DrillUp: the parent", u.cork()->DrillUp(nullptr));
    u.row("DrillUp: at the top", u.member("[Store].[All Stores]")->DrillUp(nullptr));
    u.row("TakeDefaultMember: All", u.member("")->TakeDefaultMember(u.products));
    u.row("TakeAncestorAtLevel: the country", u.cork()->TakeAncestorAtLevel(nullptr, 1));
    u.row("TakeParentOfCalculation: the default member", u.member("")->TakeParentOfCalculation(u.snacks));
    u.row("TakeNameOfCalculation: the calculated member", u.member("")->TakeNameOfCalculation(u.snacks));
    u.row("ReplaceName: a text", u.member("")->ReplaceName("[Store].[Japan]"));
    u.row("LoopLeft: from the first", u.member("[Store].[Brazil]")->LoopLeft());
    u.row("LoopLeft: across parents", u.cork()->LoopLeft());
    u.row("LoopRight: the one after", u.japan()->LoopRight());
    u.row("LoopRight: from the last", u.member("[Store].[USA]")->LoopRight());
    MDXField * const bare = u.member(" Ireland ");
    bare->Delimit();
    u.row("Delimit: a bare name", u.member(u"[Store]." + bare->getText()));
    u.values("TakeCurrentMember: of a dimension", u.value("0")->TakeName(u.member("")->TakeCurrentMember(u.cube.dimension("[Store]"))),
        u.countries());
    u.values("TakeCurrentMember: of a dimension of two hierarchies", u.value("0")->TakeName(u.member("")->TakeCurrentMember(u.time)),
        u.countries());
    u.periods("MoveToRoot: in a dimension of two hierarchies", u.list({ u.period(".[2025].[Q1]")->MoveToRoot(nullptr) }));
    u.periods(
        "TakeAncestorAtLevel: in a dimension of two hierarchies", u.list({ u.period(".[2025].[Q1]")->TakeAncestorAtLevel(nullptr, 0) }));
    MDXField * const current = u.member("")->TakeCurrentMember(u.stores);
    u.values("TakeCurrentMember: the share of the parent",
        u.value(u"[Measures].[Store Sales] / ( [Measures].[Store Sales], " + current->MoveToParent()->getText() + u" )"),
        u.set()->TakeDescendants(u.ireland(), true));
}

void values(Sales & u)
{
    auto const sold = [&] { return *u.cities() *= *u.list({ u.sales() }); };
    u.value_of_all("GenerateValue: a number", u.value(-5));
    u.value_of_all("TakeCount: empty ones too", u.value(0)->TakeCount(u.cities()));
    u.value_of_all("TakeSum: of the cities", u.value(0)->TakeSum(sold()));
    u.value_of_all("TakeMin: of the cities", u.value(0)->TakeMin(sold()));
    u.value_of_all("TakeMax: of the cities", u.value(0)->TakeMax(sold()));
    u.value_of_all("TakeAverage: without empty ones", u.value(0)->TakeAverage(sold()));
    MDXField * const city = u.dublin();
    u.value_of_all("TakeUniqueName", u.value(0)->TakeUniqueName(city));
    u.value_of_all("TakeName", u.value(0)->TakeName(city));
    u.value_of_all("TakeCaption", u.value(0)->TakeCaption(city));
    u.value_of_all("TakeDescription", u.value(0)->TakeDescription(city));
    u.values("TakeProperty: the manager", u.value(0)->TakeProperty(u.member("[Store].CURRENTMEMBER"), "Manager"), u.cities());
    u.values("TakeProperty: above its level", u.value(0)->TakeProperty(u.member("[Store].CURRENTMEMBER"), "Manager"),
        u.list({ u.ireland(), u.cork() }));
    u.value_of_all("Add and ReverseSign", u.value(40)->Add(2)->ReverseSign());
    MDXValue * const isZurich = u.value("[Store].CURRENTMEMBER.NAME")->TakeEquality(memory_cube::quoted("Zürich"));
    u.rows("TakeEquality: a text", u.cities()->TakeFilter(isZurich));

    MDXSet * const months = u.set(u.cube.level(u.calendar->fUniqueName + u".[Month]"));
    MDXValue * const y = u.value("[Measures].[Store Sales]");
    MDXValue * const x = u.value("[Measures].[Unit Sales]");
    u.value_of_all("TakeCovariance", u.value(0)->TakeCovariance(months, y, x, false));
    u.value_of_all("TakeCovariance: unbiased", u.value(0)->TakeCovariance(months, y, x, true));
    u.value_of_all("TakeCorrelation", u.value(0)->TakeCorrelation(months, y, x));
    u.value_of_all("TakeLinRegSlope", u.value(0)->TakeLinRegSlope(months, y, x));
    u.value_of_all("TakeLinRegIntercept", u.value(0)->TakeLinRegIntercept(months, y, x));
    u.value_of_all("TakeLinRegVariance", u.value(0)->TakeLinRegVariance(months, y, x));
    u.value_of_all("TakeLinRegR2", u.value(0)->TakeLinRegR2(months, y, x));
    u.value_of_all("TakeLinRegPoint", u.value(0)->TakeLinRegPoint(u.value(1000), months, y, x));
    u.value_of_all("TakeCovariance: one value", u.value(0)->TakeCovariance(months, y, nullptr, false));
    u.value_of_all("TakeCorrelation: one value", u.value(0)->TakeCorrelation(months, y, nullptr));
    u.value_of_all("TakeLinRegSlope: one value", u.value(0)->TakeLinRegSlope(months, y, nullptr));
}

}

void uses_of_members_and_values(Sales & u)
{
    members(u);
    values(u);
}
