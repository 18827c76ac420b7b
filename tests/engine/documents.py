"""The expected results of the statements of the examples, README and the guides, by title."""

import math

import cookbook
from arithmetic import *
from cube import children, descendants, level, members

SNACKS_IN_Q1 = (Q1, SNACKS)
FLAGSHIP = store("Ireland", "Dublin", "O'Brien's Corner")
GINZA = store("Japan", "東京", "銀座 Store 7")
KEPT = {
    store("Flagship Stores"): Calculated(sum_of(FLAGSHIP, GINZA), 1),
    store("Rest of the World"): Calculated(sum_of(store("Brazil"), JAPAN), 1),
}
SALES_REPORT = {
    "Calculated members on the server": CREATE,
    "Stores with sales of 1000 or more, two countries drilled down": rows(
        *(member for member in opened(COUNTRIES, IRELAND, SWITZERLAND) if sold(member, *SNACKS_IN_Q1) >= 1000), EUROPE,
        columns=(UNITS, SALES, PROFIT), where=SNACKS_IN_Q1, defined=MARGINS | OF_EUROPE | KEPT,
        properties={"Manager": MANAGERS.get}),
    "Cities by the sales of a year": rows(
        *(city for city in ordered(CITIES, sold, True) if has_value(city))),
    "The ten best-selling products": list_of(
        *top(10, PRODUCTS, units), where=(UNITS, Y2025)),
    "Two quarters side by side, for selected places": rows(
        store("Brazil", "São Paulo"), store("Japan", "東京"), FLAGSHIP, store("Switzerland", "Zürich"),
        columns=[(quarter, counted) for quarter in (Q1, Q2) for counted in (UNITS, measure("Customer Count"))],
        where=()),
    "The months of a quarter, and the quarter before it": list_of(*children(Q1), period("2024", "Q4")),
    "A named set on the server": CREATE,
    "A statement that uses the named set": list_of(FLAGSHIP, store("Switzerland", "Zürich")),
    "Dropping the named set": DROP,
    "Dropping [Store].[Flagship Stores]": DROP,
    "Dropping [Store].[Rest of the World]": DROP,
}

OSAKA, TOKYO = store("Japan", "大阪"), store("Japan", "東京")
SALES_JSON = {
    "Stores with a profit, one country drilled down": rows(
        *(member for member in opened(COUNTRIES, IRELAND)
          if (sold(member, Q1) >= 1000 or profit(member, Q1) > 50) and has_value(member)), EUROPE,
        columns=(SALES, PROFIT), where=(Q1,), defined=MARGINS | OF_EUROPE, properties={"Manager": MANAGERS.get}),
    "The three best cities, by the sales of a year": rows(
        *top(3, [city for city in CITIES if city != TOKYO])),
    "A quarter and the previous one, for two measures": rows(
        *CITIES, columns=[(quarter, counted) for quarter in (period("2024", "Q4"), Q1) for counted in (UNITS, SALES)],
        where=()),
    "A named set on the server": CREATE,
    "A statement that uses the named set": list_of(IRELAND, *descendants(IRELAND)),
    "Dropping the named set": DROP,
}

COSTS_KNOWN = [city for city in CITIES if not math.isnan(cell(COST, city))]
YEAR = fiscal("FY 2025")
FISCAL = members("Time.Fiscal")
FORECAST = fiscal("Forecast")
MARKTGASSE = store("Switzerland", "Bern", "Marktgasse [old]")


def sold_in_2024(city):
    return sold(city, Y2024)


# Calculated measures with the same value in every cell.
SOLD = [sold(city) for city in CITIES if has_value(city)]
OF_ALL_CITIES = {measure(name): Calculated(lambda _, number=number: number) for name, number in {
    "Sum": sum(SOLD), "Sum of Units": sum(units(city) for city in CITIES if has_value(city)), "Cities": len(CITIES),
    "Cities That Sold": len(SOLD), "Average": sum(SOLD) / len(SOLD), "Unformatted": sum(SOLD) / len(SOLD),
}.items()}


def cost_ratio(at):
    return divide(at(COST), at(SALES))


RATIOS = {measure("Sum of Ratios"): Calculated(cost_ratio, 0), measure("Ratio of Sums"): Calculated(cost_ratio, 2)}
GUIDES = cookbook.EXPECTED | {
    "README 1": rows(
        *(place for place in opened(top(3, COUNTRIES), *COUNTRIES) if has_value(place))),
    "conditions 1": list_of(
        *(city for city in CITIES if 1000 <= sold_in_2024(city) < 5000 and profit(city, Y2024) >= 0
          and not math.isnan(cell(COST, city, Y2024)))),
    "conditions 2": list_of(DUBLIN, TOKYO),
    "cube_model 1": list_of(YEAR),
    "cube_model 2": list_of(FORECAST),
    "cube_model 3": list_of(*level("Time.Fiscal", "Fiscal Week")),
    "cube_model 4": list_of(*FISCAL, FORECAST),
    "cube_model 5": list_of(children(YEAR)[0]),
    "cube_model 6": list_of(*FISCAL),
    "cube_model 7": list_of(YEAR),
    "cube_model 8": list_of(*COUNTRIES),
    "cube_model 9": list_of(MARKTGASSE),
    "first_report 1": rows(
        *top(10, [city for city in COSTS_KNOWN if sold(city) >= 1000]), columns=(SALES, MARGIN), defined=MARGINS),
    "flat_names 1": list_of(YEAR),
    "flat_names 2": list_of(YEAR),
    "flat_names 3": list_of(FORECAST),
    "names 1": Rejected("Syntax error", 'The "]" in the name is not doubled: the guide shows this mistake.'),
    "names 2": list_of(MARKTGASSE),
    "names 3": list_of(FLAGSHIP),
    "operations 1": list_of(*OF_ALL_CITIES, where=(Y2025,), defined=OF_ALL_CITIES),
    "operations 2": rows(IRELAND, SWITZERLAND, EUROPE, columns=RATIOS, defined=OF_EUROPE | RATIOS),
    "ownership 1": list_of(OSAKA, TOKYO),
    "ownership 2": list_of(OSAKA, TOKYO),
    "report_file: The three best cities": rows(
        *top(3, [city for city in CITIES if city != OSAKA], sold_in_2024), where=()),
    "second_dialect 1": list_of(*top(3, [city for city in CITIES if sold_in_2024(city) // 100 > 5], sold_in_2024)),
}
