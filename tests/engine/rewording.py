"""Replaces MDX expressions that the engine lacks by equivalents that it has."""

import re

import cube

NAME = r"\[(?:[^\]]|\]\])*\]"
HIERARCHIES = {f"[{name}]" for name in cube.LEVELS} | {
    f"[{name.replace('.', '].[')}]" for name in cube.LEVELS if "." in name}


def call(text, function):
    """The first call of a function in the text: what is before it, its arguments, and what follows."""
    found = re.search(r"\b" + function + r"\(", text, re.IGNORECASE)
    arguments, depth, start = [], 0, found.end()
    for token in re.compile(NAME + r'|"[^"]*"|.', re.DOTALL).finditer(text, found.end()):
        if depth == 0 and token[0] in (",", ")"):
            arguments.append(text[start:token.start()].strip())
            start = token.end()
            if token[0] == ")":
                return text[:found.start()], arguments, text[start:]
        depth += (token[0] in ("(", "{")) - (token[0] in (")", "}"))
    raise ValueError(f"{function} has no end in {text}")


def hierarchy_of(text):
    """The hierarchy whose name comes first in the text."""
    parts = re.match(rf".*?({NAME})(\.{NAME})?", text, re.DOTALL)
    both = parts[1] + (parts[2] or "")
    return both if both in HIERARCHIES else parts[1]


def drill_up(text):
    before, (shown, closed), after = call(text, "DRILLUPMEMBER")
    current = hierarchy_of(closed) + ".CURRENTMEMBER"
    return f"{before}EXCEPT( {shown}, GENERATE( {closed}, DESCENDANTS( {current}, {current}.LEVEL, AFTER ) ) ){after}"


def sum_of_sets(text):
    before, arguments, after = call(text, "GENERATE")
    other = re.match(r"\s*\+\s*(\{.*?\}|" + NAME + r"(?:\.\w+)?)", after)
    return f"{before}{{ GENERATE( {', '.join(arguments)} ), {other[1]} }}{after[other.end():]}"


def set_of_text(text):
    """Replaces STRTOSET( IIF( c, "a", "b" ) ) by IIF( c, a, b )."""
    before, (argument,), after = call(text, "STRTOSET")
    return before + argument.replace('"', "") + after


def level_count(text):
    def count(found):
        return str(len(cube.LEVELS.get(found[1].strip("[]").replace("].[", "."), ())))
    return re.sub(rf"({NAME}(?:\.{NAME})?)\.LEVELS\.COUNT", count, text)


# What the engine lacks, a pattern that finds it, and a function that replaces at least one use of it.
REWORDINGS = [
    ("DRILLUPMEMBER", r"\bDRILLUPMEMBER\(", drill_up),
    ("set + set", r"\bGENERATE\(.*\)\s*\+\s*\S", sum_of_sets),
    ("LEVELS.COUNT", r"\.LEVELS\.COUNT\b", level_count),
    ("STRTOSET of one argument", r"\bSTRTOSET\(", set_of_text),
    ("MEMBERS( n )", r"\.MEMBERS\(", lambda text: text.replace(".MEMBERS(", ".MEMBERS.ITEM(")),
    ("DESCRIPTION", r"\.DESCRIPTION\b", lambda text: text.replace(".DESCRIPTION", '.PROPERTIES("DESCRIPTION")')),
    ("a calculated member's name without its parent", r"\[Product\]\.\[Snacks \]\]Salty\[ and",
     lambda text: text.replace("[Product].[Snacks ]]Salty[ and", "[Product].[Food].[Snacks ]]Salty[ and")),
]


def reworded(text):
    """The text after rewording, and what the engine lacks of it."""
    lacking = []
    for name, pattern, replace in REWORDINGS:
        while re.search(pattern, text, re.IGNORECASE):
            text = replace(text)
            if name not in lacking:
                lacking.append(name)
    return text, lacking


DEFINITION = re.compile(
    rf"(MEMBER|SET) \[Sales\]\.({NAME}(?:\.{NAME})*) AS (.*?)(?= (?:MEMBER|SET) \[Sales\]\.|\s*$)", re.DOTALL)


def keep(statement, kept):
    """Updates `kept` for CREATE and DROP. Returns whether the statement is one of them."""
    if statement.startswith("CREATE "):
        for kind, name, definition in DEFINITION.findall(statement):
            kept[name] = f"{kind} {name} AS {definition}"
        return True
    if statement.startswith("DROP "):
        for name in re.findall(rf"\[Sales\]\.({NAME}(?:\.{NAME})*)", statement):
            kept.pop(name, None)
        return True
    return False


def with_kept(statement, kept):
    """The statement with a WITH clause that defines what is kept."""
    if not kept:
        return statement
    return "WITH " + " ".join(kept.values()) + " " + re.sub(r"^\s*WITH\s", "", statement)
