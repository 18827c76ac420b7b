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


# A row has a title, a call and a result.
ROW = re.compile(r"\| ([^`|]+) \| `([^`]*)` \|(.*)")


def calls(page):
    """The head of the table, the title and the code of each call."""
    head = ""
    for line in page.splitlines():
        if line.startswith("| Case | "):
            head = line.removeprefix("| Case | ").removesuffix(" |")
        elif row := ROW.fullmatch(line):
            yield head, row[1], row[2]
        elif line.startswith("|") and not line.startswith("|---"):
            sys.exit(f"{PAGE.name}: this row is not a title, a call and a result: {line}")


def brief(run, expected):
    """What a statement returned, for the last column of a table."""
    if reason := getattr(expected, "known_wrong", ""):
        return f"*wrong:* {reason}"
    if run.is_definition:
        return "defined in the rows below" if run.text.startswith("CREATE") else "no longer defined"
    if run.result is None:
        return f"*rejected:* {getattr(expected, 'why', run.reason)}"
    columns, *others = run.result.axes
    names = [[", ".join(member.name for member in position) for position in axis] for axis in others or [columns]]
    if columns[0][0].name == "Value":
        shown = [text.removesuffix(".") or "empty" for text in run.result.formatted]
        names[0] = shown if names[0] == ["All Stores"] else [f"{name}: {text}" for name, text in zip(names[0], shown)]
    text = " by ".join(shortened(axis) for axis in names)
    return f"{text} (*reworded:* {', '.join(run.lacking)})" if run.lacking else text


def shortened(names):
    separator = "; " if any(", " in name for name in names) else ", "
    return separator.join(names if len(names) <= 8 else [*names[:6], "…", names[-1]]) or "nothing"


def with_results(page, results):
    """The page with the results filled in. `results` has them by the titles."""
    lines = page.splitlines()
    for n, line in enumerate(lines):
        if row := ROW.fullmatch(line):
            lines[n] = f"| {row[1]} | `{row[2]}` | {results[row[1]]} |"
    return "\n".join(lines) + "\n"


def program(page):
    yield from re.findall(r"^```cpp\n(.*?)^```", page, flags=re.DOTALL | re.MULTILINE)
    yield "\nint main(int count, char **)\n{\n    bool const flat = count > 1;\n"
    for head, title, code in calls(page):
        form = FORMS[head].format(title=title, code=code)
        yield f"    {{ struct Row : Sales {{ explicit Row(bool flat) : Sales(flat) {{ {form}; }} }} const row(flat); }}\n"
    yield "}\n"


if __name__ == "__main__":
    pathlib.Path(sys.argv[1]).write_text("".join(program(PAGE.read_text("utf-8"))), "utf-8")
