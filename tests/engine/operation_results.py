"""The expected results of the statements of docs/results.md, by title."""

import math
import statistics

from arithmetic import *
from cube import Member, children, descendants, members

SELLING = [city for city in CITIES if sold(city) > 0]
IN_2025 = sum(sold(city) for city in SELLING)
OSAKA, TOKYO = store("Japan", "大阪"), store("Japan", "東京")
MARKET, OSAKA_STORE = children(CORK)[0], children(OSAKA)[0]

TWO_HIERARCHIES = Rejected(
    "contains more than one hierarchy", "This call is for dimensions of one hierarchy.")

MADE_BY_THE_GENERATOR = {
    "GenerateSet: tuples": rows((IRELAND, product("Drink")), (JAPAN, FOOD)),
    "GenerateSet: a hierarchy, and its calculated member at the end": rows(
        *members("Product"), product("Food", "Snacks ]Salty[ and O'Brien's")),
    "GenerateField: an owner and a name": rows(OSAKA),
    "GenerateField: a member": rows(store("USA", "Portland")),
    "GenerateField: a level and a name": rows(DUBLIN),
    "GenerateField: a hierarchy": periods(Y2024),
    "GenerateField: a calculated member and its name": rows(product("Food", "Snacks ]Salty[ and O'Brien's")),
}

ALGEBRA = {
    "+=: a set": rows(JAPAN, IRELAND, NORWAY, USA),
    "+=: a member": rows(JAPAN, IRELAND, NORWAY, DUBLIN),
    "-=: a set": rows(*(country for country in COUNTRIES if country not in (IRELAND, USA))),
    "nonEmptyCrossjoin: keeps what is empty": rows(
        *((country, family) for country in (NORWAY, IRELAND) for family in FAMILIES)),
    "Intersect: what is in both": rows(JAPAN, NORWAY),
    "AddField and Delimit: a list": rows(IRELAND, JAPAN),
    "AddCalculations: beside the departments of Food": rows(
        *children(FOOD), product("Food", "Snacks ]Salty[ and O'Brien's")),
    "AddCalculations: beside the quarters of a year": periods(Q1, Q2, period("2025", "2025 to Date")),
    "AddCalculations: Europe is not a sibling of the countries": rows(*COUNTRIES),
    "StripCalculations: all": with_europe(JAPAN, IRELAND),
    "StripCalculations: by name": with_europe(JAPAN, IRELAND),
    "Hierarchize: by the hierarchy's order": rows(IRELAND, DUBLIN, JAPAN, NORWAY),
    "Hierarchize: a calculation at the end": with_europe(IRELAND, JAPAN, EUROPE),
    "Hierarchize: a calculation that was not there": with_europe(IRELAND, JAPAN, EUROPE),
    "HierarchizeCalculations: no effect": with_europe(EUROPE, JAPAN, IRELAND),
    "SpecifyDistinct: once each": rows(JAPAN, IRELAND),
    "TakeTail: the last": rows(USA),
    "Empty: nothing": rows(),
    "TakeName: a text": rows(*COUNTRIES),
    "SetExpression: a text": rows(JAPAN),
    "Extract: the stores of a crossjoin": rows(IRELAND, USA),
    "removeCalculationsSpecial: no effect": rows(*COUNTRIES),
}

LEVELS = {
    "TakeTopLevel: All": rows(ALL),
    "TakeTopLevel: the years": periods(Y2024, Y2025),
    "TakeWholeLevel: the families": rows(*FAMILIES),
    "TakeAllMembers: a hierarchy": periods(*members("Time.Fiscal")),
    "TakeAllMembers: a dimension of two hierarchies": TWO_HIERARCHIES,
    "TakeBaseLevel: the second level": rows(*COUNTRIES),
    "TakeLeafNodes: the stores": rows(*STORES),
    "Invert: all others": rows(ALL, *COUNTRIES),
}

DRILLING = {
    "DrillDown: recursive": rows(IRELAND, *descendants(IRELAND)),
    "DrillDown: two countries": rows(*opened(COUNTRIES, IRELAND, SINGAPORE)),
    "DrillDownOnSet: a set": rows(*opened(COUNTRIES, IRELAND, SINGAPORE)),
    "DrillDownOnSet: twice": rows(IRELAND, CORK, MARKET, DUBLIN),
    "DrillDownOnSet: a member without children": rows(*COUNTRIES),
    "DrillDownOnSet: the member at the top": rows(ALL, *COUNTRIES),
    "DrillDownOnSet: a member already followed by its children (servers differ)": rows(IRELAND, CORK, DUBLIN, CORK, DUBLIN),
    "DrillDownOnSet: the same member twice": rows(*opened([IRELAND, IRELAND], IRELAND)),
    "DrillUp: a country": rows(IRELAND, JAPAN),
    "DrillUpOnSet: a set": rows(IRELAND, JAPAN),
    "ToggleDrillStateOnSet: closed ones open": rows(*opened(COUNTRIES, IRELAND, SINGAPORE)),
    "ToggleDrillStateOnSet: open ones close": rows(IRELAND, JAPAN),
    "ToggleDrillStateOnSet: recursive": Rejected(
        "'RECURSIVE' is not supported in ToggleDrillState", "RECURSIVE in TOGGLEDRILLSTATE: the engine has no equivalent."),
}

RELATIVES = {
    "TakeAncestorsOfMember: none up": rows(MARKET),
    "TakeAncestorsOfMember: two up": rows(IRELAND),
    "TakeAncestorsOfMember: all, two up": rows(IRELAND, CORK, MARKET),
    "TakeAncestorsOfMember: past the top": rows(ALL, ALL, ALL, IRELAND, CORK, MARKET),
    "TakeAncestorsOfSet: two up": rows(IRELAND, JAPAN),
    "TakeAncestorsOfSet: all, two up, without the members": rows(IRELAND, CORK, JAPAN, OSAKA),
    "TakeAncestorsOfSet: a count of -1, none up": rows(MARKET, OSAKA_STORE),
    "TakeChildren: of a member": rows(OSAKA, TOKYO),
    "TakeChildren: of a member without children": rows(),
    "TakeChildren: a child below a skipped level": rows(store("Singapore", "Orchard Road")),
    "TakeChildren: of a set": rows(CORK, DUBLIN, OSAKA, TOKYO),
    "TakeChildren: of a set, and the set": rows(CORK, DUBLIN, OSAKA, TOKYO, IRELAND, JAPAN),
    "TakeChildren: down to a level": rows(*(shop for shop in STORES if shop.is_in(IRELAND) or shop.is_in(JAPAN))),
    "TakeChildren: down to a level, with those between": rows(*descendants(IRELAND), *descendants(JAPAN)),
    "TakeDescendants: with self": rows(IRELAND, *descendants(IRELAND)),
    "TakeDescendants: without self": rows(*descendants(IRELAND)),
    "TakeDescendants: the leaves": rows(*(shop for shop in STORES if shop.is_in(IRELAND))),
    "TakeDescendants: all, one down": rows(IRELAND, CORK, DUBLIN),
    "TakeDescendants: the leaves, three down": rows(*(shop for shop in STORES if shop.is_in(IRELAND))),
    "TakeSiblings: of a city": rows(CORK, DUBLIN),
    "TakeSiblings: of a year": periods(Y2024, Y2025),
}

SEPTEMBER, NOVEMBER, DECEMBER, JANUARY, *_ = MONTHS
SUBSETS = {
    "TakeSubset: two from the second": rows(*COUNTRIES[1:3]),
    "TakeSubset: the rest": rows(*COUNTRIES[4:]),
    "TakeSubset: none": rows(),
    "TakeSubset: from one member to another": rows(IRELAND, JAPAN, NORWAY, SINGAPORE),
    "TakeSubset: backwards": rows(IRELAND, JAPAN, NORWAY),
    "TakeSubset: to an absent member": rows(),
    "TakeSubset: the two months after November": periods(DECEMBER, JANUARY),
    "TakeSubset: the one before (the cube has no October)": periods(SEPTEMBER),
    "TakeSubset: two before and itself, cut at the start": periods(SEPTEMBER, NOVEMBER),
    "TakeSubset: one before, itself and one after": periods(SEPTEMBER, NOVEMBER, DECEMBER),
    "TakeSubset: past the end": periods(*MONTHS[-2:]),
    "generate: the first child of each country": rows(
        *(children(country)[0] for country in COUNTRIES if children(country))),
    "Rank: in a set": values(COUNTRIES, lambda country: {JAPAN: 1, IRELAND: 2}.get(country, 0)),
    "TakeRank: in this set": values(
        COUNTRIES, lambda country: ordered(COUNTRIES, sold, True).index(country) + 1),
}



def sold_in_2024(member):
    return sold(member, Y2024)


FILTERS = {
    "TakeFilter: by another year": kept(lambda city: sold_in_2024(city) >= 3000),
    "Order: ascending within each parent": rows(*ordered_within_parents(CITIES)),
    "Order: descending within each parent": rows(*ordered_within_parents(CITIES, True)),
    "Order: ascending across all": rows(*ordered(CITIES)),
    "Order: descending across all": rows(*ordered(CITIES, sold, True)),
    "TakeExtremity: the top three": rows(*top(3, CITIES)),
    "TakeExtremity: the first three": rows(*CITIES[:3]),
    "TakeExtremity: the fewest that make 40000": rows(*fewest(CITIES, 40000)),
    "TakeExtremity: the fewest that make 60 percent": rows(*fewest(CITIES, 0.6 * IN_2025)),
    "TakeExtremity: the bottom three": rows(*ordered(SELLING)[:3]),
    "TakeExtremity: the bottom three, empty ones first": rows(*ordered(CITIES)[:3]),
    "TakeExtremity: the smallest that make 5000": rows(*fewest(SELLING, 5000, False)),
    "TakeExtremity: the smallest of 2024 that make 10 percent": rows(
        *fewest(SELLING, 0.1 * sum(map(sold_in_2024, SELLING)), False, sold_in_2024)),
    "TakeExtremity: a bottom without a tuple (servers differ)": rows(*CITIES[:3]),
    "Order: descending within each parent, a crossjoin (servers differ)": rows(
        *((country, family) for country in ordered([IRELAND, JAPAN], sold, True)
          for family in ordered(FAMILIES, lambda family: sold(country, family), True))),
    "TakeExtremity: levels are mixed": rows(ALL, JAPAN),
}


def few_or_many(city):
    return sold(city) < 1000 or sold(city) > 10000


CONDITIONS = {
    "between": kept(lambda city: 1000 <= sold(city) <= 10000),
    "outside": kept(few_or_many),
    "is_null (servers differ)": rows(),
    "not is_null (servers differ)": rows(*CITIES),
    "not is_empty": kept(has_value),
    "is_empty: a tuple (the costs of Cork are unknown)": kept(lambda city: math.isnan(cell(COST, city, Y2024))),
    "equal": kept(lambda city: units(city) == 604),
    "not equal": kept(lambda city: has_value(city) and units(city) != 604),
    "not less": kept(lambda city: not sold(city) < 2000),
    "less or equal": kept(lambda city: units(city) <= 604),
    "greater or equal": kept(lambda city: units(city) >= 604),
    "not": kept(lambda city: not few_or_many(city)),
    "minus": kept(lambda city: -sold(city) < -10000),
    "arithmetic": kept(lambda city: sold(city) > 0 and profit(city) / sold(city) > 0.4),
    "sums and products": kept(lambda city: sold(city) + cell(COST, city) * 2 > 35000),
    "ET_INTDIVIDE: written as /": kept(lambda city: sold(city) / 1000 > 9),
    "true": rows(*CITIES),
    "false": rows(),
    "ET_GROUP_190 and ET_GROUP_206: parentheses": kept(lambda city: few_or_many(city) and cell(COST, city) < 10000),
    "Filter: except": kept(lambda city: city not in top(8, CITIES)),
    "Filter: a condition as a value": values(COUNTRIES, lambda country: int(sold(country) > 10000)),
}

MEMBERS = {
    "MoveToChild: a city": rows(DUBLIN),
    "MoveToRootNode: a country": rows(IRELAND),
    "MoveToFirstChild: a city": rows(CORK),
    "MoveToFirstChild: of a member without children": rows(),
    "MoveToParent: a country": rows(IRELAND),
    "MoveToParent: past the top": rows(),
    "MoveToFirstSibling: the first of the level": rows(CITIES[0]),
    "MoveToLastSibling: the last of the level": rows(CITIES[-1]),
    "MoveToRoot: All": rows(ALL),
    "DrillUp: the parent": rows(IRELAND),
    "DrillUp: at the top": rows(ALL),
    "TakeDefaultMember: All": rows(product()),
    "TakeAncestorAtLevel: the country": rows(IRELAND),
    "TakeParentOfCalculation: no parent known, so the default member": rows(product()),
    "TakeNameOfCalculation: the calculated member": rows(product("Food", "Snacks ]Salty[ and O'Brien's")),
    "Delimit: a bare name": rows(JAPAN),
    "ReplaceName: a text": rows(JAPAN),
    "LoopLeft: from the first": rows(USA),
    "LoopLeft: the one before, which has another parent": rows(store("Brazil", "São Paulo")),
    "LoopRight: the one after": rows(NORWAY),
    "LoopRight: from the last": rows(COUNTRIES[0]),
    "TakeCurrentMember: of a dimension": values(COUNTRIES, lambda country: country.name),
    "TakeCurrentMember: of a dimension of two hierarchies": TWO_HIERARCHIES,
    "MoveToRoot: in a dimension of two hierarchies": TWO_HIERARCHIES,
    "TakeAncestorAtLevel: in a dimension of two hierarchies": TWO_HIERARCHIES,
}

BY_MONTH = [sold(month) for month in MONTHS]
UNITS_BY_MONTH = [cell(UNITS, month) for month in MONTHS]
LINE = statistics.linear_regression(UNITS_BY_MONTH, BY_MONTH)
UNBIASED = statistics.covariance(UNITS_BY_MONTH, BY_MONTH)
R = statistics.correlation(UNITS_BY_MONTH, BY_MONTH)
RESIDUES = sum((y - LINE.intercept - LINE.slope * x) ** 2 for x, y in zip(UNITS_BY_MONTH, BY_MONTH))
NOT_COMPUTED = "The engine never works this out: it returns the largest double, 1.8e308."
VALUES = {
    "GenerateValue: a number": value(-5),
    "GenerateValue: a calculated measure of the server": rows(
        *COUNTRIES, columns=(VALUE,), defined={VALUE: Calculated(lambda at: at(measure("Profit per Customer")))}),
    "TakeCount: empty ones too": value(len(CITIES)),
    "TakeSum: of the cities": value(sum(sold(city) for city in CITIES if has_value(city))),
    "TakeMin: of the cities (Portland gives its goods away)": value(min(sold(city) for city in CITIES if has_value(city))),
    "TakeMax: of the cities": value(max(sold(city) for city in CITIES if has_value(city))),
    "TakeAverage: without empty ones": value(statistics.mean(sold(city) for city in CITIES if has_value(city))),
    "TakeUniqueName": value("[Store].[Ireland].[Dublin]"),
    "TakeName": value("Dublin"),
    "TakeCaption": value("Dublin"),
    "TakeDescription": value(None),
    "TakeProperty: the manager": values(CITIES, lambda city: MANAGERS[city]),
    "TakeProperty: members above the level that has the property": values(COUNTRIES, lambda country: (
        f"error: Property 'Manager' is not valid for member '[Store].[{country.name}]'")),
    "TakeCurrentMember and MoveToParent: the share of the parent": values(
        CITIES, lambda city: sold(city) / sold(city.parent) if has_value(city) else None),
    "Add and ReverseSign": value(-42),
    "TakeEquality: a text": rows(store("Switzerland", "Zürich")),
    "TakeCovariance": value(UNBIASED * (len(MONTHS) - 1) / len(MONTHS)),
    "TakeCovariance: unbiased": value(UNBIASED),
    "TakeCorrelation": value(R),
    "TakeLinRegSlope": value(LINE.slope),
    "TakeLinRegIntercept": value(LINE.intercept),
    "TakeLinRegVariance": value(RESIDUES / len(MONTHS), known_wrong=NOT_COMPUTED),
    "TakeLinRegR2": value(R * R, known_wrong=NOT_COMPUTED),
    "TakeLinRegPoint": value(LINE.intercept + LINE.slope * 1000),
    "TakeCovariance: of one value, which is the variance": value(statistics.pvariance(BY_MONTH)),
    "TakeCorrelation: of one value": value(1),
    "TakeLinRegSlope: of one value": value(1),
}

STATEMENTS = {
    "SELECT: three axes": Shows([axis([SALES]), axis(COUNTRIES), axis(FAMILIES)]),
    "SELECT: a slicer of two members, properties of cells": rows(*COUNTRIES, where=(Y2025, FOOD)),
    "SELECT: a slicer of two members of one hierarchy": Rejected(
        "Tuple contains more than one member of hierarchy", "The slicer names two members of one hierarchy."),
    "SELECT: setQuery": list_of(UNITS),
    "SELECT: a slicer of a hierarchy that is on an axis": Rejected(
        "appears in more than one independent axis", "The slicer cannot restrict a hierarchy that is on an axis."),
}

PAIR = store("Pair")
KEPT_ON_THE_SERVER = {
    "CREATE: a member and a set": CREATE,
    "CREATE: a text": CREATE,
    "CREATE: a set and a member that were made": with_europe(JAPAN, USA, EUROPE),
    "CREATE: a member from a text": rows(PAIR, defined={PAIR: Calculated(sum_of(IRELAND, NORWAY))}),
    "DROP: a member": DROP,
    "DROP: another member": DROP,
    "DROP: a set": DROP,
}

EXPECTED = (MADE_BY_THE_GENERATOR | ALGEBRA | LEVELS | DRILLING | RELATIVES | SUBSETS | FILTERS | CONDITIONS | MEMBERS
            | VALUES | STATEMENTS | KEPT_ON_THE_SERVER)
