"""What the statements of the examples, README and the guides have to show, by their titles."""

import math

import cookbook
from arithmetic import *
from cube import children, descendants, members

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
        *top(10, PRODUCTS, lambda product: cell(UNITS, product, Y2024)), where=(UNITS,)),
    "Two quarters side by side, for selected places": rows(
        store("Brazil", "São Paulo"), store("Japan", "東京"), FLAGSHIP, store("Switzerland", "Zürich"),
        columns=[(quarter, counted) for quarter in (Q1, Q2) for counted in (UNITS, measure("Customer Count"))],
        where=()),
    "The months of a quarter, and the quarter before it": list_of(*children(Q1), period("2024", "Q4")),
    "A named set on the server": CREATE,
    "A statement that uses the named set": list_of(FLAGSHIP, store("Switzerland", "Zürich")),
    "Dropping the named set": DROP,
    "Dropping the calculated members": DROP,
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

NOT_IN_THE_CUBE = "A name that the guide made up."
COSTS_KNOWN = [city for city in CITIES if not math.isnan(cell(COST, city))]
GUIDES = cookbook.EXPECTED | {
    "README 1": rows(
        *(place for place in opened(top(3, COUNTRIES), *COUNTRIES) if has_value(place))),
    "conditions 1": list_of(
        *(city for city in CITIES if 1000 <= sold(city, Y2024) < 5000 and profit(city, Y2024) >= 0
          and not math.isnan(cell(COST, city, Y2024)))),
    "conditions 2": list_of(DUBLIN, store("Japan", "東京")),
    "cube_model 1": Rejected("[Store].[Geo]", NOT_IN_THE_CUBE),
    "cube_model 2": Rejected("[Store].[Geo]", NOT_IN_THE_CUBE),
    "cube_model 3": Rejected("", NOT_IN_THE_CUBE),
    "cube_model 4": Rejected("[Store].[Geo]", NOT_IN_THE_CUBE),
    "cube_model 5": Rejected("[Store].[Geo]", NOT_IN_THE_CUBE),
    "cube_model 6": Rejected("[Store].[Geo]", NOT_IN_THE_CUBE),
    "cube_model 7": Rejected("[Store].[Geo]", NOT_IN_THE_CUBE),
    "cube_model 8": list_of(*members("Store")),
    "cube_model 9": Rejected("[Store].[All Stores].[Japan].[[東京]]]", NOT_IN_THE_CUBE),
    "first_report 1": rows(
        *top(10, [city for city in COSTS_KNOWN if sold(city) >= 1000]), columns=(SALES, MARGIN), defined=MARGINS),
    "flat_names 1": Rejected("].[Year]", NOT_IN_THE_CUBE),
    "flat_names 2": Rejected("].[2026]", NOT_IN_THE_CUBE),
    "flat_names 3": Rejected("].[Forecast]", NOT_IN_THE_CUBE),
    "names 1": Rejected("Lexical error", 'The name ends after "[old", as the guide says.'),
    "names 2": Rejected("[Store].[Zürich [old]], it's]", NOT_IN_THE_CUBE),
    "names 3": Rejected("", "A condition is not a set."),
    "ownership 1": Rejected("[Home]", NOT_IN_THE_CUBE),
    "ownership 2": Rejected("[Home]", NOT_IN_THE_CUBE),
    "report_file: The three best cities": rows(
        *top(3, [city for city in CITIES if city != OSAKA], lambda city: sold(city, Y2024)), where=()),
    "second_dialect 1": Rejected("[Measures].[Sales]", NOT_IN_THE_CUBE),
}
