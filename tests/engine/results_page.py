"""results_page.py OUTPUT: writes the program of docs/results.md, which prints the statements of its rows. The argument "flat" of
the program makes the names of hierarchies flat."""

import pathlib
import re
import sys

PAGE = pathlib.Path(__file__).parent.parent.parent / "docs/results.md"

# What is written for a call, by the heads of the table's columns.
FORMS = {
    "Call | Rows": 'rows("{title}", {code})',
    "Call | Periods": 'periods("{title}", {code})',
    "Call | Value": 'values("{title}", {code}, make.list({{ all }}))',
    "Call | Value for each country": 'values("{title}", {code}, countries)',
    "Call | Value for each city": 'values("{title}", {code}, cities)',
    "Condition | Cities": 'cities_that("{title}", {code})',
    "Calls on a SELECT | Result": '{code}, print("{title}", *select)',
    "Calls on a CREATE | Result": '{code}, print("{title}", *create)',
    "Calls on a DROP | Result": '{code}, print("{title}", *drop)',
}


def calls(page):
    """The head of the table, the title and the code of each call."""
    head = ""
    for line in page.splitlines():
        if line.startswith("| Case | "):
            head = line.removeprefix("| Case | ").removesuffix(" |")
        elif row := re.match(r"\| ([^`]*) \| `(.*)` \|", line):
            yield head, row[1], row[2]


def brief(run, expected):
    """What a statement returned, for the last column of a table."""
    if run.is_definition:
        return "kept" if run.text.startswith("CREATE") else "dropped"
    if run.result is None:
        return f"*rejected:* {getattr(expected, 'why', run.reason)}"
    columns, *others = run.result.axes
    names = [[", ".join(member.name for member in position) for position in axis] for axis in others or [columns]]
    if columns[0][0].name == "Value":
        shown = [text.removesuffix(".") or "empty" for text in run.result.formatted]
        names[0] = shown if names[0] == ["All Stores"] else [f"{name}: {text}" for name, text in zip(names[0], shown)]
    if reason := getattr(expected, "known_wrong", ""):
        return f"*wrong:* {reason}"
    return " by ".join(shortened(axis) for axis in names)


def shortened(names):
    separator = "; " if any(", " in name for name in names) else ", "
    return separator.join(names if len(names) <= 8 else [*names[:8], f"… ({len(names)} in all)"]) or "nothing"


def with_results(page, results):
    """The page with the last column of its tables filled in. `results` has the texts for it, by the titles."""
    return re.sub(r"^(\| ([^`|]*) \| `.*` \|).*$", lambda row: f"{row[1]} {results[row[2]]} |", page, flags=re.MULTILINE)


def program(page):
    yield from re.findall(r"^```cpp\n(.*?)^```", page, flags=re.DOTALL | re.MULTILINE)
    yield "\nint main(int count, char **)\n{\n    bool const flat = count > 1;\n"
    for head, title, code in calls(page):
        form = FORMS[head].format(title=title, code=code)
        yield f"    {{ struct Row : Sales {{ explicit Row(bool flat) : Sales(flat) {{ {form}; }} }} const row(flat); }}\n"
    yield "}\n"


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_text("".join(program(PAGE.read_text("utf-8"))), "utf-8")
