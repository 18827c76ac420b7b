"""documented_rows.py OUTPUT KIND,KIND... DOCUMENT...: writes the rows of the documents' tables of these kinds as C++.

A kind with a capital letter is a parameterized test suite; each table is an instance of it, named after the headings above the table.
The kind "general" adds texts to rows of other tables.
Any other kind is a function, which is called for each row. Each table is a test, except those of settings.

The first cell of a row is code. The other cells are expected texts, in which "\\n" is a new line and "·" a blank, or the name of an
error.
"""

import re
import sys
from pathlib import Path

# The start of a heading row, the kind of its table, and what is written for the code of a row. The first start that matches counts.
HEADS = [
    ("Call | General text", "general", ""),
    ("Call | Unique names", "Spellings", "f.texts_of_result({})"),
    ("Call | Error", "Calls", "static_cast<void>(({})), Strings()"),
    ("Call on a SELECT", "Calls", "{}, f.texts_of_result(*select)"),
    ("Call on a CREATE", "Calls", "{}, f.texts_of_result(*create)"),
    ("Call on a DROP", "Calls", "{}, f.texts_of_result(*drop)"),
    ("Call |", "Calls", "f.texts_of_result({})"),
    ("Condition |", "Calls", "f.texts_of_result({})"),
    ("New object | Unique names", "Spellings", "f.texts_of_result(RefPtr({}))"),
    ("New object | Text", "Calls", "f.texts_of_result(RefPtr({}))"),
    ("Calls | Error", "Sequences", "static_cast<void>(({})), Strings()"),
    ("Calls on a SELECT", "Sequences", "{}, f.texts_of_result(*select)"),
    ("Calls on a CREATE", "Sequences", "{}, f.texts_of_result(*create)"),
    ("Calls on a DROP", "Sequences", "{}, f.texts_of_result(*drop)"),
    ("Calls |", "Sequences", "f.texts_of_result({})"),
    ("Tuple |", "Sequences", "f.texts_of_result({})"),
    ("Node |", "Nodes", "{}"),
    ("Value |", "conversion", "{}"),
    ("Real | Text", "digits", "{}"),
    ("Text | Number", "reading", "{}"),
    ("Expression | Result", "result", "{}"),
    ("Lines | Setting", "setting", "{}"),
]


# The test suites of the tables whose rows call a function.
SUITES = {"conversion": "VariantChangeType", "digits": "StringConverters", "reading": "VariantChangeType", "result": "Texts"}


def read_tables(document):
    """The tables of a document: the headings above each, its heading row, and the place and cells of its other rows."""
    tables = []
    section = headings = ""
    inside = False
    for number, line in enumerate(document.read_text("utf-8").split("\n"), 1):
        if line.startswith("## "):
            section = headings = line[3:]
        elif line.startswith("### "):
            headings = f"{section} {line[4:]}"
        elif line.startswith("|") and not inside:
            tables.append((headings, line[2:], []))
        elif line.startswith("|") and not line.startswith("|---"):
            row = re.fullmatch(r"\| `(.*)` \|", line)
            tables[-1][2].append((f"{document.name}:{number}", row and row[1].split("` | `")))
        inside = line.startswith("|")
    return tables


def quoted(text):
    return '"' + text.replace('"', '\\"') + '"'


def literal(text):
    return f"std::to_string({text})" if re.fullmatch("MDX_ERR_[A-Z_]+", text) else quoted(text.replace("·", " "))


def row_as_cpp(kind, form, place, cells, general):
    """A row as C++. A row of the kind "general" writes nothing itself: its texts are kept in `general` and become the general texts of
    the row with the same call in another table."""
    if kind == "setting":  # the texts are raw literals, in which "⏎" is a new line
        return f'setting("{place}", R"(' + ')", R"('.join(cells).replace("⏎", "\n") + ')");\n'
    code, title = cells[0], quoted(f"{place}: {cells[0]}".replace("\\", "\\\\"))
    texts = ", ".join(literal(cell) for cell in cells[1:])
    if kind == "general":
        general[code] = texts
        return ""
    if kind.islower():
        return f"{kind}({title}, WITH_NAMES({code}), {texts});\n"
    if kind == "Spellings":  # the second text is that with flat names
        texts = texts.replace('", "', '" }, { "')
    elif code in general:
        texts += " }, { " + general.pop(code)
    operation = "" if kind == "Nodes" else quoted(code.split("(")[0]) + ", "
    return f"    {{ {title}, {operation}WITH_NAMES({form.format(code)}), {{ {texts} }} }},\n"


def main(output, kinds, *documents):
    cpp = ""
    general = {}
    instances = set()
    for document in documents:
        for headings, head, rows in read_tables(Path(document)):
            kind, form = next((found[1:] for found in HEADS if head.startswith(found[0])), ("", ""))
            if not kind and all(cells for _, cells in rows):
                sys.exit(f"{document}: the head of the table is unknown: {head}")
            if kind not in kinds.split(","):
                continue
            for place, cells in rows:
                if not cells:
                    sys.exit(f"{place}: each cell of this row has to be code")
            lines = "".join(row_as_cpp(kind, form, place, cells, general) for place, cells in rows)
            if kind.islower() and kind not in SUITES:
                cpp += lines
                continue
            suite = SUITES.get(kind, kind)
            instance = re.sub("[^A-Za-z0-9]+", "_", headings)
            while (instance, suite) in instances:
                instance += "_2"
            instances.add((instance, suite))
            if kind in SUITES:
                cpp += f"\nTEST({suite}, {instance})\n{{\n{lines}}}\n"
                continue
            name = f"k{instance}_{kind}"
            cpp += f"\n{kind}::ParamType const {name}{{\n{lines}}};\n"
            cpp += f"INSTANTIATE_TEST_SUITE_P({instance}, {kind}, testing::Values({name}));\n"
    if general:
        sys.exit(f"No other table has these calls: {', '.join(general)}")
    Path(output).write_text(cpp, "utf-8")


main(*sys.argv[1:])
