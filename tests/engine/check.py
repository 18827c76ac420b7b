"""check.py BUILD [--update]: runs statements on an engine, in both spellings of hierarchies. Compares the results with the
expected results, with results/, with the result and figure blocks of README and the guides, and with the tables of
docs/results.md; --update rewrites them. The statements are those of the examples, README, the guides and docs/results.md."""

import collections
import difflib
import itertools
import math
import pathlib
import re
import subprocess
import sys
import time

import cookbook
import documents
import operation_results
import results_page
from arithmetic import Rejected
from engine import Engine, Session, respell, table
from show import statements

HERE = pathlib.Path(__file__).parent
ROOT = HERE.parent.parent
PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]
# Operations of the reference that docs/results.md does not name.
NOT_NAMED = {
    "GenerateField": "`make` calls it",
    "GenerateMemberProperty": "the cookbook and an example use it",
    "GenerateQuery": "`make` calls it",
    "GenerateSet": "`make` calls it",
    "GenerateValue": "`make` calls it",
    "SpecifyDrillThrough": "this dialect has no drill-through",
    "getQuotedText": "it is the text of a formula, and formulas are run",
}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, encoding="utf-8").stdout


def read(text, flat, page=""):
    """The statements of a text by their titles."""
    found = {}
    for title, forms, _ in statements(respell(text, flat), page):
        title = title if title.startswith(page) else f"{page}: {title}"
        if title in found:
            sys.exit(f"Two statements are called {title}.")
        found[title] = forms[0]
    return found


def sources(build, flat):
    """The statements and their expected results, by the files of results/."""
    def shown_by(page):  # its blocks of text, which are what its programs print
        return "\n".join(re.findall(r"^```text\n(.*?)^```", page.read_text("utf-8"), re.DOTALL | re.MULTILINE))

    guides = {}
    for page in PAGES:
        guides |= read(shown_by(page), flat, page.stem)
    sales_json = output(build / "tools/report_from_json/report_from_json", ROOT / "examples/sales.json")
    return {
        "pivot": (read(output(build / "examples/pivot"), flat), cookbook.PIVOT),
        "sales_report": (read(output(build / "examples/sales_report"), flat), documents.SALES_REPORT),
        "sales_json": (read(sales_json, flat), documents.SALES_JSON),
        "guides": (guides, documents.GUIDES),
        "operations": (read(output(build / "tests/engine/results_page", *(["flat"] if flat else [])), flat),
                       operation_results.EXPECTED),
    }


def same(shown, expected):
    if expected is None or isinstance(expected, str):
        return shown == (expected or "")
    try:
        return math.isclose(float(shown), expected, rel_tol=1e-9, abs_tol=1e-9)
    except ValueError:
        return False


def differences(result, expected):
    """Where a result differs from the expected result."""
    def names(axis):
        return [" * ".join("/".join((member.hierarchy, *member.path)) for member in position) for position in axis]

    for number, (shown, wanted) in enumerate(itertools.zip_longest(
            map(names, result.axes), map(names, expected.axes))):
        if shown != wanted:
            return [f"axis {number} shows {shown}", f"but should show {wanted}"]
    found = [f"cell {n} shows {shown!r} but should show {wanted!r}"
             for n, (shown, wanted) in enumerate(zip(result.values, expected.cells(), strict=True))
             if not same(shown, wanted)]
    shown = {name: values for name, *values in result.properties}
    wanted = {name: [of(position[0]) or "" for position in expected.axes[1]] for name, of in expected.properties.items()}
    return found if shown == wanted else found + [f"the properties are {shown} but should be {wanted}"]


def faults(run, expected):
    """How the run of a statement differs from what is expected."""
    if expected is None:
        return ["no expected result: add one to documents.py, operation_results.py or cookbook.py"]
    if isinstance(expected, Rejected):
        return [] if run.result is None and expected.reason in run.reason else [
            f"it should be rejected with {expected.reason!r}; instead: {'accepted' if run.result else repr(run.reason)}"]
    if run.result is None:
        return [f"it is rejected: {run.reason}"]
    found = differences(run.result, expected)
    if expected.known_wrong:
        return [] if found else ["its result is right: remove its `known_wrong`"]
    return found


def described(title, text, run, expected):
    """A statement and its result, for readers and for comparing."""
    yield f"== {title} =="
    yield from (line.rstrip() for line in text.splitlines())
    if run.reason:
        yield f"Rejected: {run.reason}"
    if isinstance(expected, Rejected):
        yield expected.why
    if run.result is not None:
        if run.text != text:
            yield "Run as:"
            yield run.text.strip()
        if reason := getattr(expected, "known_wrong", ""):
            yield f"Wrong: {reason}"
        yield from table(run.result)
    yield ""


def summary(runs):
    """The figures for the statements, each given as title, run and expected result. Both spellings have the same figures."""
    rejected = collections.Counter(getattr(expected, "why", "") for _, run, expected in runs if run.result is None)
    accepted = [(title, run, getattr(expected, "known_wrong", "")) for title, run, expected in runs if run.result is not None]
    lacking = collections.Counter(name for _, run, _ in accepted for name in run.lacking)
    reworded = sum(bool(run.lacking) for _, run, _ in accepted)
    cells = sum(len(run.result.values) for _, run, fault in accepted if not fault)
    yield (f"{len(runs)} statements: {len(accepted) - reworded} accepted, {reworded} accepted after rewording,"
           f" {rejected.total()} rejected; {cells:,} cells compared with arithmetic")
    yield "\nAccepted after rewording, because the engine lacks"
    yield from (f"{number:4}  {name}" for name, number in lacking.items())
    yield "\nRejected"
    yield from (f"{number:4}  {reason}" for reason, number in rejected.items())
    yield "\nKnown to be wrong"
    yield from (f"      {title}: {fault}" for title, _, fault in accepted if fault)


def run_all(build, flat):
    """Runs everything in one spelling. Returns the texts of results/ by name, the tables of results and the texts for
    docs/results.md by the titles of their statements, and what is not as expected."""
    texts, tables, brief, runs, unexpected = {}, {}, {}, [], []
    with Engine(flat) as engine:
        for name, (found, expected) in sources(build, flat).items():
            session, lines = Session(engine), []
            for title, text in found.items():
                run = session.run(text)
                if wrong_here := faults(run, expected.get(title)):
                    unexpected += [f"{name}: {title}: {fault}" for fault in wrong_here] + [f"    {run.text}"]
                if title in expected:
                    runs.append((title, run, expected[title]))
                    lines += described(title, text, run, expected[title])
                if name == "operations":
                    brief[title] = results_page.brief(run, expected.get(title))
                tables[title] = table(run.result) if run.result else [f"Rejected: {run.reason}"]
            unexpected += [f"{name}: {title}: there is no such statement" for title in expected if title not in found]
            texts[name] = respell("\n".join(lines), False)
    texts["summary"] = "\n".join(summary(runs)) + "\n"
    return texts, tables, brief, unexpected


def unused_operations():
    """Operations of the reference that docs/results.md does not use."""
    calls = re.findall(r"^\| `([^`]*)`", (ROOT / "docs/operations.md").read_text("utf-8"), re.MULTILINE)
    documented = {name for call in calls for name in re.findall(r"->(\w+)\(", call)}
    used = {name for *_, code in results_page.calls(results_page.PAGE.read_text("utf-8")) for name in re.findall(r"\w+", code)}
    return sorted(documented - used - set(NOT_NAMED))


def with_results(page, tables, figures):
    """The page with its ```result and ```figures blocks filled in. A ```result block is for the statement before it."""
    shown = ""

    def filled(block):
        nonlocal shown
        if block[1] == "text":
            shown += block[2] + "\n"  # which ends the statement
            return block[0]
        if block[1] == "figures":
            return f"```figures\n{figures}\n```"
        return "\n".join(("```result", *tables[list(read(shown, False, page.stem))[-1]], "```"))

    return re.sub(r"^```(text|result|figures)\n(.*?)^```", filled, page.read_text("utf-8"), flags=re.DOTALL | re.MULTILINE)


def compared(before, now, before_name, now_name):
    return list(difflib.unified_diff(before.splitlines(), now.splitlines(), before_name, now_name, lineterm=""))


def main(build, update):
    unexpected = [f"docs/results.md does not use {name}" for name in unused_operations()]
    results, pages = {}, {}
    for flat, spelling in ((False, "unique names"), (True, "flat names")):
        begin = time.monotonic()
        texts, tables, brief, found = run_all(build, flat)
        if not pages:
            pages = {page: with_results(page, tables, texts["summary"].rstrip()) for page in PAGES}
            pages[results_page.PAGE] = results_page.with_results(pages[results_page.PAGE], brief)
        unexpected += [f"{spelling}: {line}" for line in found]
        for name, text in texts.items():
            unexpected += compared(results.setdefault(name, text), text, f"{name}, unique names", f"{name}, flat names")
        print(f"{spelling}, {time.monotonic() - begin:.0f} s: {texts['summary'].splitlines()[0]}", flush=True)
    print(*results["summary"].splitlines()[1:], sep="\n")
    files = {HERE / "results" / f"{name}.txt": text for name, text in results.items()} | pages
    for file, text in files.items():
        if update:
            file.write_text(text, "utf-8")
        else:
            unexpected += compared(file.read_text("utf-8"), text, str(file.relative_to(ROOT)), "now")
    for line in unexpected:
        print(line, file=sys.stderr)
    sys.exit(1 if unexpected else 0)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), "--update" in sys.argv[2:])
