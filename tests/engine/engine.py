"""Mondrian, an MDX engine, with the cube of this folder in memory.

It lacks some MDX expressions, and CREATE and DROP. Session rewords a statement with such an expression, and adds the
definitions of a CREATE to each later statement.
"""

import pathlib
import re
import subprocess
import tempfile
import typing
import unicodedata

import cube
import rewording

HERE = pathlib.Path(__file__).parent
LIBRARIES = ("log4j-over-slf4j slf4j-api slf4j-nop mondrian olap4j hsqldb eigenbase-properties eigenbase-resgen eigenbase-xom"
             " commons-collections3 commons-dbcp commons-io commons-lang commons-logging commons-math commons-pool"
             " commons-vfs2 cup java-cup-0.11b-runtime")
# With these, the engine computes all sets itself and uses SQL only to read sums.
OPTIONS = [f"-Dmondrian.native.{operation}.enable=false" for operation in ("crossjoin", "filter", "nonempty", "topcount")]


def respell(text, flat):
    """The text with hierarchies spelled flat, [Time.Fiscal], or by unique names, [Time].[Fiscal]."""
    return re.sub(r"\[Time\]\.\[(Calendar|Fiscal)\]", r"[Time.\1]", text) if flat else re.sub(
        r"\[Time\.(Calendar|Fiscal)\]", r"[Time].[\1]", text)


def member(unique_name):
    """The member of a unique name in either spelling. The engine leaves out All above a member, and a skipped level is [#null]."""
    hierarchy, *path = re.findall(r"\[((?:[^\]]|\]\])*)\](?:\.|$)", respell(unique_name, True))
    names = tuple(name.replace("]]", "]") for name in path if name != "#null")
    return cube.Member(hierarchy, () if names == (cube.Member(hierarchy).name,) else names)


class Result(typing.NamedTuple):
    """A table: positions (tuples of members) and properties of each axis, and the cells row by row: the position on
    the first axis changes fastest."""
    axes: list
    properties: list
    values: list
    formatted: list


class Rejected(Exception):
    """The engine's reason."""


class Engine:
    def __init__(self, flat):
        self.flat = flat
        self.folder = tempfile.TemporaryDirectory()
        schema, tables = (pathlib.Path(self.folder.name) / name for name in ("schema.xml", "tables.sql"))
        schema.write_text(respell((HERE / "schema.xml").read_text("utf-8"), flat), "utf-8")
        tables.write_text("\n".join(cube.sql()), "utf-8")
        classes = ":".join(f"/usr/share/java/{name}.jar" for name in LIBRARIES.split())
        self.process = subprocess.Popen(
            ["java", "-Dmondrian.olap.SsasCompatibleNaming=" + ("false" if flat else "true"), *OPTIONS, "-cp", classes,
             HERE / "RunStatements.java", schema, tables],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait()
        self.folder.cleanup()

    def run(self, statement):
        self.process.stdin.write(statement.strip("\n").replace("\n", "\\n") + "\n")
        self.process.stdin.flush()
        axes, properties, cells = [], [], {}
        while line := self.process.stdout.readline().removesuffix("\n"):
            kind, *fields = line.split("\t")
            if kind == "error":
                self.process.stdout.readline()
                raise Rejected(fields[0])
            if kind == "axis":
                axes.append([tuple(member(name) for name in position.split(" * ")) for position in fields])
            elif kind == "property":
                properties.append(fields)
            else:
                cells[kind] = fields
        if not cells:
            raise RuntimeError("The engine ended.")
        return Result(axes, properties, cells["values"], cells["formatted"])


class Run(typing.NamedTuple):
    """What became of a statement: its result, or None if it was rejected, even after rewording."""
    text: str  # as it was run
    result: Result | None
    reason: str = ""  # the engine's message about `text` or, if that was accepted, about the statement before rewording
    lacking: tuple = ()  # what was replaced by rewording, since the engine lacks it
    is_definition: bool = False  # it is CREATE or DROP


class Session:
    """Runs statements one after another. What CREATE makes is defined in the statements after it, until it is dropped."""

    def __init__(self, engine):
        self.engine = engine
        self.kept = {}

    def run(self, statement):
        keeps = rewording.keep(statement, self.kept)
        text = statement if keeps else rewording.with_kept(statement, self.kept)
        try:
            return Run(text, self.engine.run(text))
        except Rejected as error:
            reason = str(error)
        reworded, lacking = rewording.reworded(text)
        if keeps or not lacking:
            return Run(text, None, reason, (), keeps)
        try:
            return Run(reworded, self.engine.run(reworded), reason, tuple(lacking))
        except Rejected as error:
            return Run(reworded, None, str(error), tuple(lacking))


def width(text):
    return sum(2 if unicodedata.east_asian_width(character) in "WF" else 1 for character in text)


def labels(axis):
    """The members of an axis. A member that follows one of its ancestors is indented."""
    if any(len(position) != 1 for position in axis):
        return [", ".join(member.name for member in position) for position in axis]
    found, above = [], []
    for member, in axis:
        while above and not (member.hierarchy == above[-1].hierarchy and member.is_in(above[-1]) and member != above[-1]):
            above.pop()
        found.append("  " * len(above) + member.name)
        above.append(member)
    return found


def grid(lines):
    """Pads each column to one width. The first column is aligned left, the others right. A long field is cut."""
    lines = [[field if width(field) <= 40 else field[:39] + "…" for field in line] for line in lines]
    widths = [max(width(line[n]) for line in lines) for n in range(len(lines[0]))]
    return ["  ".join(field + " " * (widths[n] - width(field)) if n == 0 else " " * (widths[n] - width(field)) + field
                      for n, field in enumerate(line)).rstrip() for line in lines]


def table(result):
    """The lines of a result, for readers. A result of one axis is shown downwards."""
    axes = result.axes if len(result.axes) > 1 else [[()], result.axes[0]]
    columns, rows, *pages = axes
    header = ["", *labels(columns), *(name for name, *_ in result.properties)]
    lines = []
    for n, page in enumerate(pages[0] if pages else [()]):
        cells = result.formatted[n * len(columns) * len(rows):]
        lines += [f"-- {member.name}" for member in page] + grid([header, *(
            [label, *cells[r * len(columns):(r + 1) * len(columns)], *(values[r] for _, *values in result.properties)]
            for r, label in enumerate(labels(rows)))])
    return [line for line in lines if line] if rows else ["(nothing)"]
