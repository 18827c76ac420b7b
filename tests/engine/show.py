"""show.py [--steps] < STATEMENTS: shows statements, as the library's programs print them, each with its result. --steps
also shows what is printed between a title and its statement.
show.py --fits FILE: prints what is in the cube of a report file but not in the cube of tests/engine, and fails if there is
anything."""

import collections
import json
import re
import sys
import typing

from cube import LEVELS, Member, members
from engine import Engine, Session, respell, table


AFTER = {"CREATE": "define the same in a WITH clause", "DROP": "no longer define it"}


class Statement(typing.NamedTuple):
    title: str
    forms: list  # the statement as it is printed: on one line, on several, or both
    steps: list  # the lines between the title and the statement


def statements(text, page=""):
    """The statements in a text. A statement's title is the line "== TITLE ==" above it, or else the page and a number. A line
    that is only an expression is wrapped in a SELECT."""
    found, title, steps, lines = [], "", [], collections.deque(text.splitlines())
    while lines:
        line = lines.popleft()
        if heading := re.fullmatch(r"== (.*) ==", line):
            title, steps = heading[1], []
            continue
        if re.match(r"(WITH|SELECT|CREATE|DROP)\b", line):
            form = line
            while lines and re.match(r" |FROM|WHERE" + ("|SELECT" if line.startswith("WITH") else ""), lines[0]):
                form += "\n" + lines.popleft()
        elif re.match(r"[\[{]|[A-Za-z]+\(", line):
            form = f"SELECT {{ {line} }} ON COLUMNS FROM [Sales]"
        else:
            steps += [line] if line.strip() else []
            continue
        known = [other for other in found if other.forms[0].split() == form.split() and (
            not title or other is found[-1] and other.title == title)]
        if known:
            known[0].forms.append(form)
        else:
            found.append(Statement(title or f"{page} {len(found) + 1}", [form], steps))
    return found


def misfits(cube):
    """What is in the cube of a report file but not in the cube of tests/engine."""
    if cube["name"] != "[Sales]":
        yield f"the name {cube['name']}; its name is [Sales]"
    for dimension in cube["dimensions"]:
        for hierarchy in dimension["hierarchies"]:
            name = ".".join(filter(None, (dimension["name"], hierarchy.get("name"))))
            if name not in LEVELS:
                yield f"the hierarchy {name}; it has {', '.join(LEVELS)}"
                continue
            levels = LEVELS[name]
            if tuple(hierarchy["levels"]) != levels[:len(hierarchy["levels"])]:
                yield f"{name} with the levels {', '.join(hierarchy['levels'])}; they are {', '.join(levels)}"
            for path in paths(hierarchy["members"]):
                member = Member(name, path[1:] if levels[0] == "(All)" else path)
                if member not in members(name) or (levels[0] == "(All)" and path[0] != Member(name).name):
                    yield f"the member {' / '.join(path)} of {name}"


def paths(names, above=()):
    for name in names:
        yield above + (name,)
        if isinstance(names, dict):
            yield from paths(names[name], above + (name,))


def main():
    if sys.argv[1:2] == ["--fits"]:
        try:
            with open(sys.argv[2], encoding="utf-8") as file:
                found = list(misfits(json.load(file)["cube"]))
        except (AttributeError, KeyError, OSError, TypeError, ValueError):
            found = []  # report_from_json reports errors in the file
        for misfit in found:
            print(f"{sys.argv[2]}: the cube of tests/engine does not have {misfit}")
        sys.exit(1 if found else 0)
    with Engine(flat=False) as engine:
        session = Session(engine)
        for title, forms, steps in statements(sys.stdin.read()):
            run = session.run(respell(forms[0], False))
            shown = [*steps, ""] if steps and "--steps" in sys.argv else []
            print(f"== {title} ==", *shown, forms[-1].strip("\n"), "", sep="\n")
            if run.lacking and run.result:
                print(f"(Mondrian lacks: {', '.join(run.lacking)}. This is the result of an equivalent statement.)")
            elif run.is_definition:
                word = forms[0].split()[0]
                print(f"(Mondrian has no {word}. The statements after this one {AFTER[word]}.)")
            elif run.result is None:
                print(f"(Mondrian rejects it: {run.reason})")
            print(*(table(run.result) if run.result else []), "", sep="\n")


if __name__ == "__main__":
    main()
