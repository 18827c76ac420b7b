"""The expected results of the statements of docs/cookbook.md, in the order of the page, and of examples/pivot.cpp."""

import statistics

from arithmetic import *
from cube import children, descendants, total

DRINK = product("Drink")
TICKED = product("Ticked")
DRINK_AND_FOOD = {TICKED: Calculated(sum_of(DRINK, FOOD))}
PORTLAND, SEATTLE = children(USA)
FORMATS = ("#,##0.00", "#,##0;(#,##0)", "\"it's \"0")
SELLING_COUNTRIES = [country for country in COUNTRIES if has_value(country)]
SELLING_CITIES = [city for city in CITIES if has_value(city)]
BEST_COUNTRIES = ordered(SELLING_COUNTRIES, descending=True)
BEST_CITIES = ordered(SELLING_CITIES, descending=True)
OPENED = opened(SELLING_COUNTRIES, IRELAND, JAPAN)
OPENED_IN_ORDER = [place for country in BEST_COUNTRIES for place in (
    country, *(ordered(children(country), descending=True) if country in (IRELAND, JAPAN) else ()))]
BOTH = store("Both")
BEFORE, GROWTH, RANK, SHARE = (measure(name) for name in ("Year Before", "Growth", "Rank", "Share"))


def sales_of(member, *where):
    """The sales of a member; None if there are none."""
    return total("Store Sales", [member, *where])


def with_measures(shown, positions, where=(Y2025,), of="Store", **formulas):
    """Measures, and calculated ones whose formula is given the row's member of the hierarchy `of`."""
    defined = {measure(name.replace("_", " ")): Calculated(lambda at, formula=formula: formula(at.context[of]))
               for name, formula in formulas.items()}
    return rows(*positions, columns=(*shown, *defined), where=where, defined=defined)


def month(n):
    return sales_of(MONTHS[n]) if n >= 0 else None


def growth(now, before):
    return (now - before) / before if before else None


def number(month_shown):
    return MONTHS.index(month_shown)


def in_its_year_until(shown):
    return [other for other in MONTHS[:number(shown) + 1] if other.path[0] == shown.path[0]]


def quarter_units(position):
    return lambda quarter: total("Unit Sales", [children(quarter)[position]])


LAYOUT = [
    rows(*(place for place in opened(opened(COUNTRIES, IRELAND), DUBLIN) if has_value(place)), columns=(UNITS, SALES)),
    rows(*((country, family) for country in (IRELAND, JAPAN) for family in FAMILIES)),
    rows(*FAMILIES, columns=((Y2024, SALES), (Y2025, SALES), (Y2025, UNITS)), where=()),
    Shows([axis((UNITS, SALES)), axis(children(IRELAND)), axis((Y2024, Y2025))]),
]
SLICER = [
    rows(*(country for country in COUNTRIES if not math.isnan(sold(country, FOOD))), where=(Y2025, FOOD)),
    Rejected("Tuple contains more than one member of hierarchy '[Product]'", "The slicer names two members of one hierarchy."),
    rows(*SELLING_COUNTRIES, where=(Y2025, TICKED), defined=DRINK_AND_FOOD),
]
FORMULAS = [
    rows(*FAMILIES, columns=(SALES, COST, MARGIN), defined=MARGINS),
    with_measures((SALES,), [IRELAND, *descendants(IRELAND)], Belongs_To=lambda place: place.parent.name),
    with_measures((SALES, COST), [CORK, PORTLAND, SEATTLE],
                  Cost_Ratio=lambda city: {SEATTLE: cell(COST, SEATTLE) / sold(SEATTLE)}.get(city),
                  Markup=lambda city: None if city == CORK else (sold(city) - cell(COST, city)) / cell(COST, city)),
]
EXTREMES = [
    rows(*BEST_CITIES[:3]),
    rows(*BEST_CITIES[:-4:-1]),
    rows(*(top(1, children(country))[0] for country in SELLING_COUNTRIES)),
    rows(*fewest(SELLING_CITIES, 0.8 * sum(sold(city) for city in SELLING_CITIES))),
    rows(*BEST_CITIES[:2], store("All Others"), columns=(UNITS, SALES),
         defined={store("All Others"): Calculated(sum_of(*BEST_CITIES[2:]))}),
]
RANKS = [
    with_measures((SALES,), SELLING_COUNTRIES, Rank=lambda country: 1 + sum(
        sold(other) > sold(country) for other in SELLING_COUNTRIES)),
    with_measures((SALES,), [ALL, *opened([IRELAND], IRELAND)], Share=lambda place: None if place == ALL else (
        sales_of(place, Y2025) / sales_of(place.parent, Y2025))),
    with_measures((SALES,), SELLING_COUNTRIES, Share=lambda country: sales_of(country, Y2025) / sales_of(ALL, Y2025)),
    with_measures((SALES,), BEST_COUNTRIES, Running_Total=lambda country: sum(
        sales_of(other, Y2025) for other in SELLING_COUNTRIES if sold(other) >= sold(country))),
]
TIME = [
    with_measures((SALES,), MONTHS, (), "Time.Calendar", Previous=lambda shown: month(number(shown) - 1),
                  Growth=lambda shown: growth(sales_of(shown), month(number(shown) - 1))),
    with_measures((SALES,), SELLING_COUNTRIES, Year_Before=lambda country: sales_of(country, Y2024),
                  Growth=lambda country: growth(sales_of(country, Y2025), sales_of(country, Y2024))),
    with_measures((SALES,), MONTHS, (), "Time.Calendar", Year_to_Date=lambda shown: sum(
        map(sales_of, in_its_year_until(shown)))),
    with_measures((SALES,), MONTHS, (), "Time.Calendar", Moving_Average=lambda shown: statistics.mean(
        month(n) for n in range(max(0, number(shown) - 2), number(shown) + 1))),
    with_measures((UNITS,), [*children(Y2024), *children(Y2025)], (), "Time.Calendar", Opening=quarter_units(0),
                  Closing=quarter_units(-1)),
]
FILTERS = [
    rows(*(city for city in CITIES if 2000 <= sold(city) <= 15000)),
    rows(*(city for city in CITIES if sold(city) >= 5000)),
    rows(*(city for city in CITIES if (sold(city) >= 2000 or units(city) >= 500) and profit(city) < 0),
         columns=(UNITS, SALES, COST)),
    rows(*(country for country in SELLING_COUNTRIES if country not in (IRELAND, JAPAN))),
    rows(*(shop for shop in STORES if shop.name.lower().startswith("o'b"))),
    rows(*(city for city in CITIES if MANAGERS[city] in ("Siobhán O'Brien", "山田 花子"))),
    rows(*(city for city in CITIES if units(city) >= 1000 and sold(city, Y2024) < 10000)),
]
ORDER = [
    rows(*OPENED_IN_ORDER),
    rows(*BEST_CITIES),
    with_europe(JAPAN, IRELAND, SWITZERLAND, EUROPE),
]
KEPT = [
    CREATE, rows(*BEST_CITIES[:2]), DROP,
    CREATE, rows(*FAMILIES, columns=(SALES, PROFIT), defined=MARGINS), DROP,
]
PROPERTIES = [
    rows(*children(JAPAN), properties={"Manager": MANAGERS.get}),
    rows(*FAMILIES),
    rows(SEATTLE, PORTLAND, columns=[measure(name) for name in FORMATS],
         defined={measure(name): MARGINS[PROFIT] for name in FORMATS}),
]
LARGE = {country: [city for city in children(country) if sold(city) >= 4000] for country in COUNTRIES}
WITHOUT_AN_OPERATION = [
    rows(*(place for country, cities in LARGE.items() if cities for place in (country, *cities)),
         defined={country: Calculated(sum_of(*cities)) for country, cities in LARGE.items()}),
    rows(*SELLING_COUNTRIES, where=(Y2025, TICKED), defined=DRINK_AND_FOOD),
]

SHOWN = [*LAYOUT, *SLICER, *FORMULAS, *EXTREMES, *RANKS, *TIME, *FILTERS, *ORDER, *KEPT, *PROPERTIES, *WITHOUT_AN_OPERATION]
EXPECTED = {f"cookbook {n}": shown for n, shown in enumerate(SHOWN, 1)}

PIVOT = {
    "Crosstab": rows(*OPENED, columns=(UNITS, SALES)),
    "The best city of each country": rows(*(top(1, children(country))[0] for country in SELLING_COUNTRIES)),
    "Large cities with a loss or a high profit": rows(
        *(city for city in CITIES if (sold(city) >= 2000 or units(city) >= 500) and cell(COST, city) >= 0
          and not 0 <= profit(city) <= 6000), columns=(UNITS, SALES, COST)),
    "Ordered, with the calculated member at the end": rows(
        *OPENED_IN_ORDER, BOTH, defined={BOTH: Calculated(sum_of(IRELAND, JAPAN))}),
    "Year over year": rows(*SELLING_COUNTRIES, columns=(SALES, BEFORE, GROWTH), defined={
        BEFORE: Calculated(lambda at: at(SALES, Y2024)),
        GROWTH: Calculated(lambda at: divide(minus(at(SALES, Y2025), at(SALES, Y2024)), at(SALES, Y2024)))}),
    "Rank, and share of the parent": rows(*SELLING_COUNTRIES, columns=(SALES, RANK, SHARE), defined={
        RANK: Calculated(lambda at: 1 + sum(sold(place) > float(at(SALES)) for place in SELLING_COUNTRIES)),
        SHARE: Calculated(lambda at: divide(at(SALES), at(SALES, at.context["Store"].parent)))}),
    "Two members in the slicer": rows(*SELLING_COUNTRIES, where=(Y2025, TICKED), defined=DRINK_AND_FOOD),
    "A named set on the server": CREATE,
    "A statement that uses the named set": rows(*(city for city in CITIES if sold(city) >= 10000)),
    "Dropping the named set": DROP,
    "Properties of members and cells": rows(*SELLING_CITIES, properties={"Manager": MANAGERS.get}),
}
