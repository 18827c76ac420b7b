"""The expected result of a statement, described without MDX and computed from the facts of cube.py without an engine.

`Shows` gives the members of each axis. Its cells are sums over the facts, or what the formulas of calculated members
make of them. operation_results.py, documents.py and cookbook.py have a `Shows` or a `Rejected` for each statement.
"""

import dataclasses
import math

from cube import ROWS, Member, children, level, total


def store(*path):
    return Member("Store", path)


def product(*path):
    return Member("Product", path)


def period(*path):
    return Member("Time.Calendar", path)


def fiscal(*path):
    return Member("Time.Fiscal", path)


def measure(name):
    return Member("Measures", (name,))


SALES, COST, UNITS = measure("Store Sales"), measure("Store Cost"), measure("Unit Sales")
ALL, IRELAND, JAPAN, NORWAY = store(), store("Ireland"), store("Japan"), store("Norway")
SINGAPORE, SWITZERLAND, USA = store("Singapore"), store("Switzerland"), store("USA")
CORK, DUBLIN = store("Ireland", "Cork"), store("Ireland", "Dublin")
COUNTRIES, CITIES, STORES = (level("Store", name) for name in ("Country", "City", "Store Name"))
FAMILIES, PRODUCTS = level("Product", "Family"), level("Product", "Product Name")
FOOD, SNACKS = product("Food"), product("Food", "Snacks ]Salty[")
MONTHS = level("Time.Calendar", "Month")
Y2024, Y2025 = period("2024"), period("2025")
Q1, Q2 = period("2025", "Q1"), period("2025", "Q2")
MANAGERS = {store(row["Country"], row["City"]): row["Manager"] for row in ROWS["store"] if row["City"]}


@dataclasses.dataclass
class Calculated:
    """A calculated member. Its formula is called with the Place where it is computed."""
    formula: callable
    order: int = 0


@dataclasses.dataclass
class Place:
    """The members at a cell, without the calculated member whose formula is called. Calling the Place with members returns
    the value there: each member replaces the one of its hierarchy."""
    context: dict
    defined: dict

    def __call__(self, *members):
        return evaluate(self.context | {member.hierarchy: member for member in members}, self.defined)


def add(*values):
    """An empty value counts as nothing, and a sum of empty values is empty."""
    known = [value for value in values if value is not None]
    return sum(known) if known else None


def minus(a, b):
    return None if a is None and b is None else (a or 0) - (b or 0)


def divide(a, b):
    return None if a is None or b is None else math.copysign(math.inf, a) if b == 0 else a / b


def sum_of(*members):
    return lambda at: add(*(at(member) for member in members))


PROFIT = measure("Profit")
MARGIN = measure("Margin")
VALUE = measure("Value")
EUROPE = store("Europe")
ON_THE_SERVER = {
    measure("Profit per Customer"): Calculated(
        lambda at: divide(minus(at(SALES), at(COST)), at(measure("Customer Count")))),
    product("Food", "Snacks ]Salty[ and O'Brien's"): Calculated(
        sum_of(SNACKS, product("Food", "Produce", "Fruit", "O'Brien's"))),
    fiscal("Forecast"): Calculated(lambda at: float(at(fiscal("FY 2025"))) * 1.1),
    period("2025", "2025 to Date"): Calculated(sum_of(period("2025", "Q1"), period("2025", "Q2"))),
}
MARGINS = {PROFIT: Calculated(lambda at: minus(at(SALES), at(COST)), 2),
           MARGIN: Calculated(lambda at: divide(minus(at(SALES), at(COST)), at(SALES)))}
OF_EUROPE = {EUROPE: Calculated(sum_of(IRELAND, SWITZERLAND), 1)}


def evaluate(context, defined):
    """The cell where the members of the context meet. Of several calculated members, the one with the highest
    solve order applies its formula; the others still apply to the values that the formula reads."""
    calculated = [member for member in context.values() if member in defined]
    if calculated:
        last = max(calculated, key=lambda member: defined[member].order)
        rest = {hierarchy: member for hierarchy, member in context.items() if member != last}
        return defined[last].formula(Place(rest, defined))
    members = {"Time.Calendar": Y2024} | context  # a hierarchy without "All" starts at its first member
    return total(members.pop("Measures", SALES).name, members.values())


@dataclasses.dataclass
class Shows:
    """The positions of each axis, the members of the slicer, and calculated members that the statement defines.
    `known_wrong` describes a wrong result of the engine; the check fails once the result is right."""
    axes: list
    where: tuple = ()
    defined: dict = dataclasses.field(default_factory=dict)
    properties: dict = dataclasses.field(default_factory=dict)
    known_wrong: str = ""

    def cells(self):
        """The values, row by row: the position on the first axis changes fastest."""
        defined = ON_THE_SERVER | self.defined
        positions = [()]
        for axis in reversed(self.axes):
            positions = [before + tuple(position) for before in positions for position in axis]
        slicer = {member.hierarchy: member for member in self.where}
        return [evaluate(slicer | {member.hierarchy: member for member in position}, defined) for position in positions]


@dataclasses.dataclass
class Rejected:
    """The engine rejects the statement. `reason` is part of its message; `why` says why that is right, or what the engine lacks."""
    reason: str
    why: str


BY_THE_SESSION = "The engine has no CREATE or DROP. The check adds the definitions to each later statement."
CREATE = Rejected("Syntax error at line 1, column 1, token 'CREATE'", BY_THE_SESSION)
DROP = Rejected("Syntax error at line 1, column 1, token 'DROP'", BY_THE_SESSION)


def axis(members):
    return [member if isinstance(member, (tuple, list)) and not isinstance(member, Member) else (member,)
            for member in members]


def rows(*positions, columns=(SALES,), where=(Y2025,), **others):
    return Shows([axis(columns), axis(positions)], tuple(where), **others)


def periods(*positions):
    return rows(*positions, where=())


def list_of(*positions, where=(), **others):
    return Shows([axis(positions)], tuple(where), **others)


def values(positions, formula, **others):
    """A calculated measure: `formula` is given the row's member."""
    hierarchy = positions[0].hierarchy
    return rows(*positions, columns=(VALUE,), defined={VALUE: Calculated(lambda at: formula(at.context[hierarchy]))},
                **others)


def value(number, **others):
    return values([ALL], lambda member: number, **others)


def with_europe(*positions):
    return rows(*positions, defined=OF_EUROPE)


def cell(measure, *where):
    """A value in 2025, unless another year is given. An empty cell is NaN: every comparison except != is false."""
    found = evaluate({"Time.Calendar": Y2025, "Measures": measure} | {m.hierarchy: m for m in where}, ON_THE_SERVER)
    return math.nan if found is None else float(found)


def sold(*where):
    return cell(SALES, *where)


def units(*where):
    return cell(UNITS, *where)


def profit(*where):
    cost = cell(COST, *where)
    return sold(*where) - (0 if math.isnan(cost) else cost)


def has_value(member):
    return not math.isnan(sold(member))


def kept(condition, members=CITIES):
    return rows(*(member for member in members if condition(member)))


def key_of(measured):
    def key(member):
        number = measured(member)
        return -math.inf if math.isnan(number) else number  # empty ones are the smallest
    return key


def ordered(members, measured=sold, descending=False):
    """Sorted as one list, not within each parent."""
    keys = [key_of(measured)(member) for member in members]
    assert len(set(keys)) == len(keys), "The order of equal ones is not defined."
    return sorted(members, key=key_of(measured), reverse=descending)


def ordered_within_parents(members, descending=False):
    def key(member):
        return [key_of(sold)(store(*member.path[:n])) for n in range(1, len(member.path) + 1)]
    return sorted(members, key=key, reverse=descending)


def top(count, members, measured=sold):
    return ordered(members, measured, True)[:count]


def fewest(members, amount, descending=True, measured=sold):
    """The largest, or smallest, of the members up to the one with which their sum reaches `amount`."""
    found, reached = [], 0
    for member in ordered(members, measured, descending):
        if reached >= amount:
            break
        found.append(member)
        reached += measured(member)
    return found


def opened(countries, *chosen):
    """Countries, each chosen one with its children after it."""
    return [member for country in countries for member in [country, *(children(country) if country in chosen else [])]]
