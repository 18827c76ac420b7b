#include "sales.h"

using memory_cube::Condition;
using namespace memory_cube::conditions;

namespace {

void made_by_the_generator(Sales & u)
{
    u.rows("GenerateSet: tuples", u.set(std::vector{ u.tuple({ u.ireland(), u.member("[Product].[Drink]") }),
                                      u.tuple({ u.japan(), u.member("[Product].[Food]") }) }));
    u.rows("GenerateSet: a hierarchy with a calculated member", u.set(u.products));

    u.row("GenerateField: an owner and a name", u.member("[Store].[Japan]", "大阪"));
    u.row("GenerateField: a member", u.member(u.cube.add_member(u.cube.add_member(u.stores, "USA"), "Portland")));
    u.row("GenerateField: a level and a name", u.member(u.cube.level("[Store].[City]"), "Dublin"));
    u.periods("GenerateField: a hierarchy", u.list({ u.member(u.calendar) }));
    u.row("GenerateField: a calculated member and its name", u.member(u.snacks, u.snacks->fName));
}

void algebra(Sales & u)
{
    auto const three = [&] { return u.list({ u.japan(), u.ireland(), u.norway() }); };
    auto const two = [&] { return u.list({ u.ireland(), u.member("[Store].[USA]") }); };
    u.rows("+=: a set", *three() += *two());
    u.rows("+=: a member", *three() += *u.dublin());
    u.rows("-=: a set", *u.countries() -= *two());
    u.rows("nonEmptyCrossjoin: keeps what is empty", u.list({ u.norway(), u.ireland() })->nonEmptyCrossjoin(u.families()));
    u.rows("Intersect: what is in both", three()->Intersect(u.list({ u.dublin(), u.norway(), u.japan() })));
    u.rows("AddField and Delimit: a list", u.set("[Store].[Ireland]")->AddField(*u.japan(), false)->Delimit());
    u.rows("AddCalculations: beside the departments", u.set()->TakeChildren(u.member("[Product].[Food]"))->AddCalculations());
    u.rows_with_europe("AddCalculations: none beside the countries", u.countries()->AddCalculations());

    auto const mixed = [&] { return u.list({ u.member("[Store].[Europe]"), u.japan(), u.ireland() }); };
    u.rows_with_europe("StripCalculations: all", mixed()->StripCalculations(u.stores, false));
    u.rows_with_europe("StripCalculations: by name", mixed()->StripCalculations(u.stores, true));
    u.rows("Hierarchize: by the hierarchy's order",
        u.list({ u.japan(), u.dublin(), u.ireland(), u.norway() })->Hierarchize(false, nullptr, false, {}));
    u.rows_with_europe("Hierarchize: a calculation at the end", mixed()->Hierarchize(false, u.stores, false, { u.europe }));
    u.rows_with_europe("Hierarchize: a calculation that was not there",
        u.list({ u.japan(), u.ireland() })->Hierarchize(false, u.stores, true, { u.europe }));
    u.rows_with_europe("HierarchizeCalculations: nothing", mixed()->HierarchizeCalculations(true));
    u.rows("SpecifyDistinct: once each", u.list({ u.japan(), u.ireland(), u.japan() })->SpecifyDistinct());
    u.rows("TakeTail: the last", u.countries()->TakeTail());
    u.rows("Empty: nothing", u.countries()->Empty());
    u.rows("TakeName: a text", u.set()->TakeName("[Store].[Country].MEMBERS"));
    u.rows("SetExpression: a text", u.set()->SetExpression("{ [Store].[Japan] }"));
    u.rows("Extract: the stores of a crossjoin", u.set()->Extract((*two() *= *u.families())->getText(), u.stores));
    u.rows("removeCalculationsSpecial: nothing", three()->removeCalculationsSpecial(nullptr));
}

void levels(Sales & u)
{
    u.rows("TakeTopLevel: All", u.set()->TakeTopLevel(u.stores));
    u.periods("TakeTopLevel: the years", u.set()->TakeTopLevel(u.calendar));
    u.rows("TakeWholeLevel: the families", u.set()->TakeWholeLevel(u.cube.level("[Product].[Family]")));
    u.periods("TakeAllMembers: a hierarchy", u.set()->TakeAllMembers(u.fiscal));
    u.periods("TakeAllMembers: a dimension of two hierarchies", u.set()->TakeAllMembers("[Time]"));
    u.rows("TakeBaseLevel: the second level", u.set()->TakeBaseLevel(u.stores, 2));
    u.rows("TakeLeafNodes: the stores", u.set()->TakeLeafNodes(u.stores));
    u.rows("Invert: all others", u.set("[Store].[City].MEMBERS, [Store].[Store Name].MEMBERS")->Delimit()->Invert(u.stores));
}

void drilling(Sales & u)
{
    auto const opened = [&] { return u.list({ u.ireland(), u.cork(), u.market(), u.dublin(), u.japan() }); };
    auto const chosen = [&] { return u.list({ u.ireland(), u.member("[Store].[Singapore]") }); };
    u.rows("DrillDown: recursive", u.list({ u.ireland() })->DrillDown(u.stores, "", true));
    u.rows("DrillDown: two countries", u.countries()->DrillDown(nullptr, "[Store].[Ireland], [Store].[Singapore]", false));
    u.rows("DrillDownOnSet: a set", u.countries()->DrillDownOnSet(chosen()));
    u.rows(
        "DrillDownOnSet: twice", u.list({ u.ireland() })->DrillDownOnSet("[Store].[Ireland]")->DrillDownOnSet("[Store].[Ireland].[Cork]"));
    u.rows("DrillDownOnSet: a member without children", u.countries()->DrillDownOnSet(u.list({ u.norway() })));
    u.rows(
        "DrillDownOnSet: children that were there", u.list({ u.member("[Store].[All Stores]") })->DrillDownOnSet("[Store].[All Stores]"));
    u.rows("DrillDownOnSet: the same member twice", u.list({ u.ireland(), u.ireland() })->DrillDownOnSet("[Store].[Ireland]"));
    u.rows("DrillUp: a country", opened()->DrillUp("[Store].[Ireland]"));
    u.rows("DrillUpOnSet: a set", opened()->DrillUpOnSet(chosen()));
    u.rows("ToggleDrillStateOnSet: closed ones open", u.countries()->ToggleDrillStateOnSet(chosen(), false));
    u.rows("ToggleDrillStateOnSet: open ones close", opened()->ToggleDrillStateOnSet(chosen(), false));
    u.rows("ToggleDrillStateOnSet: recursive", u.countries()->ToggleDrillStateOnSet(chosen(), true));
}

void relatives(Sales & u)
{
    KelpString const marketText = u.market()->getText();
    auto const two = [&] { return u.list({ u.market(), u.member("[Store].[Japan].[大阪].[心斎橋 Store 8]") }); };
    KelpString const twoText = two()->getText();
    u.rows("TakeAncestorsOfMember: none up", u.set()->TakeAncestorsOfMember(marketText, false, 0));
    u.rows("TakeAncestorsOfMember: two up", u.set()->TakeAncestorsOfMember(marketText, false, 2));
    u.rows("TakeAncestorsOfMember: all, two up", u.set()->TakeAncestorsOfMember(marketText, true, 2));
    u.rows("TakeAncestorsOfMember: past the top", u.set()->TakeAncestorsOfMember(marketText, true, 5));
    u.rows("TakeAncestorsOfSet: two up", u.set()->TakeAncestorsOfSet(twoText, u.stores, false, 2, 0));
    u.rows("TakeAncestorsOfSet: all, two up, without the members", u.set()->TakeAncestorsOfSet(twoText, u.stores, true, 2, 0));
    u.rows("TakeAncestorsOfSet: a count of -1, none up", u.set()->TakeAncestorsOfSet(twoText, u.stores, false, -1, 0));

    u.rows("TakeChildren: of a member", u.set()->TakeChildren(u.japan()));
    u.rows("TakeChildren: of one without", u.set()->TakeChildren(u.norway()));
    u.rows("TakeChildren: past a level that is left out", u.set()->TakeChildren(u.member("[Store].[Singapore]")));
    auto const parents = [&] { return u.list({ u.ireland(), u.japan() }); };
    u.rows("TakeChildren: of a set", u.set()->TakeChildren(parents(), u.stores, false, -1, ""));
    u.rows("TakeChildren: of a set, and the set", u.set()->TakeChildren(parents(), u.stores, true, -1, ""));
    u.rows("TakeChildren: down to a level", u.set()->TakeChildren(parents(), u.stores, false, -1, "[Store].[Store Name]"));
    u.rows(
        "TakeChildren: down to a level, with those between", u.set()->TakeChildren(parents(), u.stores, true, -1, "[Store].[Store Name]"));
    u.rows("TakeDescendants: with self", u.set()->TakeDescendants(u.ireland(), true));
    u.rows("TakeDescendants: without self", u.set()->TakeDescendants(u.ireland(), false));
    u.rows("TakeDescendants: the leaves", u.set()->TakeDescendants("[Store].[Ireland]", u.stores, false, -1, ""));
    u.rows("TakeDescendants: all, one down", u.set()->TakeDescendants("[Store].[Ireland]", nullptr, true, 1, ""));
    u.rows("TakeDescendants: the leaves, three down", u.set()->TakeDescendants("[Store].[Ireland]", nullptr, false, 3, ""));
    u.rows("TakeSiblings: of a city", u.set()->TakeSiblings(u.cork(), nullptr));
    u.periods("TakeSiblings: of a year", u.set()->TakeSiblings(u.period(".[2025]"), nullptr));
}

void subsets(Sales & u)
{
    u.rows("TakeSubset: two from the second", u.countries()->TakeSubset(1, 2));
    u.rows("TakeSubset: the rest", u.countries()->TakeSubset(4, -1));
    u.rows("TakeSubset: none", u.countries()->TakeSubset(4, 0));
    u.rows("TakeSubset: from one member to another",
        u.countries()->TakeSubset(u.tuple({ u.ireland() }), u.tuple({ u.member("[Store].[Singapore]") })));
    u.rows("TakeSubset: backwards", u.countries()->TakeSubset(u.tuple({ u.norway() }), u.tuple({ u.ireland() })));
    u.rows("TakeSubset: to an absent member", u.countries()->TakeSubset(u.tuple({ u.norway() }), u.tuple({ u.dublin() })));
    MDXTuple * const november = u.tuple({ u.period(".[2024].[Q4].[November]") });
    u.periods("TakeSubset: one and two after", u.set()->TakeSubset(november, 1, 2));
    u.periods("TakeSubset: the one before", u.set()->TakeSubset(november, -1, -1));
    u.periods("TakeSubset: two before, cut at the start", u.set()->TakeSubset(november, -2, 0));
    u.periods("TakeSubset: around", u.set()->TakeSubset(november, -1, 1));
    u.periods("TakeSubset: past the end", u.set()->TakeSubset(u.tuple({ u.period(".[2025].[Q2].[April]") }), 0, 5));
    u.rows("generate: the first child of each country",
        u.set()->generate("[Store].[Country].MEMBERS", "HEAD( [Store].CURRENTMEMBER.CHILDREN )"));
    u.values("Rank: in a set", u.value(u.set()->Rank(u.member("[Store].CURRENTMEMBER"), u.list({ u.japan(), u.ireland() }))->getText()),
        u.countries());
    MDXSet * const ordered = u.countries();
    ordered->Order(3, u.bySales());
    u.values("TakeRank: in this set", u.value(ordered->TakeRank(u.member("[Store].CURRENTMEMBER"))->getText()), u.countries());
}

void filters(Sales & u)
{
    Condition largeIn2024 = value(current()) >= 3000;
    u.rows("TakeFilter: by another year", u.cities()->TakeFilter(largeIn2024.get(), u.tuple({ u.sales(), u.period(".[2024]") })));
    u.rows("Order: ascending within each parent", u.cities()->Order(0, u.bySales()));
    u.rows("Order: descending within each parent", u.cities()->Order(1, u.bySales()));
    u.rows("Order: ascending across all", u.cities()->Order(2, u.value("[Measures].[Store Sales]")));
    u.rows("Order: descending across all", u.cities()->Order(3, u.value("[Measures].[Store Sales]")));
    u.rows("TakeExtremity: the top three", u.cities()->TakeExtremity(MDXSet::Top, MDXSet::Count, "3", u.bySales()));
    u.rows("TakeExtremity: the first three", u.cities()->TakeExtremity(MDXSet::Top, MDXSet::Count, "3", nullptr));
    u.rows("TakeExtremity: the fewest that make 40000", u.cities()->TakeExtremity(MDXSet::Top, MDXSet::Sum, "40000", u.bySales()));
    u.rows("TakeExtremity: the fewest that make 60 percent", u.cities()->TakeExtremity(MDXSet::Top, MDXSet::Percent, "60", u.bySales()));
    MDXValue * const sold = u.value("[Measures].[Store Sales] > 0");
    auto const selling = [&] { return u.cities()->TakeFilter(sold); };
    u.rows("TakeExtremity: the bottom three", selling()->TakeExtremity(MDXSet::Bottom, MDXSet::Count, "3", u.bySales()));
    u.rows("TakeExtremity: the bottom three, empty ones first", u.cities()->TakeExtremity(MDXSet::Bottom, MDXSet::Count, "3", u.bySales()));
    u.rows("TakeExtremity: the smallest that make 5000", selling()->TakeExtremity(MDXSet::Bottom, MDXSet::Sum, "5000", u.bySales()));
    u.rows("TakeExtremity: the smallest of 2024 that make 10 percent",
        selling()->TakeExtremity(MDXSet::Bottom, MDXSet::Percent, "10", u.tuple({ u.sales(), u.period(".[2024]") })));
    u.rows("TakeExtremity: a bottom without a tuple, the first three here",
        u.cities()->TakeExtremity(MDXSet::Bottom, MDXSet::Count, "3", nullptr));
    MDXSet * const placesAndFamilies = *u.list({ u.ireland(), u.japan() }) *= *u.families();
    u.rows("Order: descending within each parent, a crossjoin", placesAndFamilies->Order(1, u.bySales()));
    u.rows("TakeExtremity: levels are mixed", u.set("[Store].MEMBERS")->TakeExtremity(MDXSet::Top, MDXSet::Count, "2", u.bySales()));
}

}

void uses_of_sets(Sales & u)
{
    made_by_the_generator(u);
    algebra(u);
    levels(u);
    drilling(u);
    relatives(u);
    subsets(u);
    filters(u);
}
