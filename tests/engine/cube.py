"""The cube [Sales] without an engine: its tables, its members and sums over its facts.

`cube.py` prints the tables as SQL. For an engine, schema.xml makes the cube from them.
"""

import csv
import datetime
import decimal
import functools
import pathlib
import typing

HERE = pathlib.Path(__file__).parent

# The levels of each hierarchy, and the table that has a column for each of them.
LEVELS = {
    "Store": ("(All)", "Country", "City", "Store Name"),
    "Time.Calendar": ("Year", "Quarter", "Month", "Day"),
    "Time.Fiscal": ("Fiscal Year", "Fiscal Half", "Fiscal Week"),
    "Product": ("(All)", "Family", "Department", "Category", "Brand", "Product Name"),
    "Customers": ("(All)", "Country", "State", "City", "Name"),
    "Measures": ("MeasuresLevel",),
}
TABLES = {"Store": "store", "Time.Calendar": "day", "Time.Fiscal": "day", "Product": "product", "Customers": "customer"}
MEASURES = ("Unit Sales", "Store Sales", "Store Cost", "Customer Count")


def read(name):
    with open(HERE / name, newline="", encoding="utf-8") as file:
        return [{column: text or None for column, text in row.items()} for row in csv.DictReader(file)]


def day(text):
    date = datetime.date.fromisoformat(text)
    week = (date - datetime.date(2024, 9, 30)).days // 7 + 1
    return {
        "Year": text[:4], "Quarter": f"Q{(date.month + 2) // 3}", "Month": date.strftime("%B"), "Day": text,
        "Fiscal Year": "FY 2025", "Fiscal Half": "First Half" if week <= 26 else "Second Half",
        "Fiscal Week": f"Week {week}", "Month Number": date.month, "Week Number": week,
    }


ROWS = {
    "store": read("stores.csv"),
    "product": read("products.csv"),
    "day": [day(text) for text in ("2024-09-30", "2024-11-11", "2024-12-24", "2025-01-31", "2025-02-14", "2025-03-31",
                                   "2025-04-01", "2025-05-02")],
    "customer": [dict(zip(LEVELS["Customers"][1:], names)) for names in (
        ("Ireland", "Leinster", "Dublin", "Siobhán O'Brien"), ("Japan", "東京都", "東京", "山田 花子"),
        ("Switzerland", "Zürich", "Winterthur", "Jürg Müller"))],
}


def sell():
    """A few hundred sales. Rio de Janeiro closes at the end of 2024, Bern sells below cost, Portland gives its goods
    away, and Cork does not know its costs."""
    for s, store in enumerate(ROWS["store"]):
        for p, product in enumerate(ROWS["product"]):
            for d, date in enumerate(ROWS["day"]):
                city = store["City"]
                closed = city == "Rio de Janeiro" and date["Year"] == "2025"
                if store["Store Name"] is None or closed or (s + 2 * p + d) % 3 != 0:
                    continue
                some = 5 + (31 * s * s + 47 * p * p + 71 * d * d + 13 * s * p) % 37
                units = 1 + p + int(store["Size"]) * some // 30
                price = decimal.Decimal(0 if city == "Portland" else product["Price"])
                cost = decimal.Decimal(product["Cost"]) * (2 if city == "Bern" else 1)
                yield {
                    "store": s, "product": p, "day": d, "customer": (s + p // 3 + d // 2) % 3, "Unit Sales": units,
                    "Store Sales": units * price, "Store Cost": None if city == "Cork" else units * cost,
                }


FACTS = list(sell())


class Member(typing.NamedTuple):
    """A member by the names from the top down, without "(All)" and without levels that a branch leaves out."""
    hierarchy: str
    path: tuple = ()

    @property
    def name(self):
        return self.path[-1] if self.path else "All " + {"Store": "Stores", "Product": "Products"}.get(
            self.hierarchy, self.hierarchy)

    @property
    def parent(self):
        has_parent = len(self.path) > 1 or (self.path and "(All)" in LEVELS[self.hierarchy])
        return Member(self.hierarchy, self.path[:-1]) if has_parent else None

    def is_in(self, other):
        return self.path[:len(other.path)] == other.path


@functools.cache
def members(hierarchy):
    """The members in their order, each with its level."""
    found = {Member(hierarchy): "(All)"} if "(All)" in LEVELS[hierarchy] else {}
    for row in ROWS[TABLES[hierarchy]] if hierarchy != "Measures" else [{"MeasuresLevel": name} for name in MEASURES]:
        path = ()
        for level in LEVELS[hierarchy]:
            if row.get(level) is not None:
                path += (row[level],)
                found.setdefault(Member(hierarchy, path), level)
    place = {member: n for n, member in enumerate(found)}
    return {member: found[member] for member in sorted(found, key=lambda member: [
        place[Member(hierarchy, member.path[:n])] for n in range(1, len(member.path) + 1)])}


def level(hierarchy, name):
    return [member for member, its in members(hierarchy).items() if its == name]


def children(member):
    return [other for other in members(member.hierarchy) if other.parent == member]


def descendants(member):
    return [other for other in members(member.hierarchy) if other.is_in(member) and other != member]


def total(measure, context):
    """The measure over the facts that are in all members of `context`; None if there are none."""
    def holds(fact):
        return all(at(fact, member.hierarchy).is_in(member) for member in context)

    found = [fact for fact in FACTS if holds(fact)]
    if measure == "Customer Count":
        return len({fact["customer"] for fact in found}) or None
    known = [fact[measure] for fact in found if fact[measure] is not None]
    return sum(known) if known else None


def at(fact, hierarchy):
    """The fact's member at the bottom of a hierarchy."""
    row = ROWS[TABLES[hierarchy]][fact[TABLES[hierarchy]]]
    return Member(hierarchy, tuple(row[name] for name in LEVELS[hierarchy] if row.get(name) is not None))


def sql():
    types = {name: "INTEGER" for name in ("Size", "Month Number", "Week Number")}
    facts = {name: "INTEGER" for name in ("store", "product", "day", "customer", "Unit Sales")} | {
        "Store Sales": "DECIMAL(12, 2)", "Store Cost": "DECIMAL(12, 2)"}
    for table, rows in ROWS.items():
        columns = {"id": "INTEGER"} | {column: types.get(column, "VARCHAR(40)") for column in rows[0]}
        yield from insert(table, columns, [{"id": n} | row for n, row in enumerate(rows)])
    yield from insert("sales", facts, FACTS)


def insert(table, columns, rows):
    def literal(value):
        return "NULL" if value is None else "'" + str(value).replace("'", "''") + "'"

    yield f'CREATE TABLE "{table}" (' + ", ".join(f'"{name}" {type}' for name, type in columns.items()) + ")"
    for row in rows:
        yield f'INSERT INTO "{table}" VALUES (' + ", ".join(literal(row[name]) for name in columns) + ")"


if __name__ == "__main__":
    print("\n".join(sql()))
