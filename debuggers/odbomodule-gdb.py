"""What gdb prints for the objects of the library. It reads them as they lie in memory and calls nothing.

An expression is shown as its text and the number of its holders, a statement with its parts, a KelpString as text, a
RefPtr as what it points to. Texts and lists end at gdb's limit, `set print elements`.
"""

import gdb
import gdb.printing
import gdb.types


def shown(count):
    """How many of so many characters or elements gdb is to show. An object that is not made yet may have any count."""
    return min(count, gdb.parameter("print elements") or count)


def characters_of(string):
    """Where the characters of a KelpString are, and how many, as far as gdb can count."""
    return string["_M_dataplus"]["_M_p"], min(int(string["_M_string_length"]), 2**31 - 1)


def text(string):
    """The text of a KelpString."""
    pointer, length = characters_of(string)
    characters = pointer.string("utf-16", "replace", shown(length))
    if shown(length) < length:
        characters += "..."
    return characters.encode(gdb.host_charset(), "backslashreplace").decode(gdb.host_charset())


def elements(vector):
    """What a vector holds, or what its std::unique_ptrs point to."""
    first, last = (vector["_M_impl"][name] for name in ("_M_start", "_M_finish"))
    element = first.type.strip_typedefs().target().strip_typedefs()
    owned = element.name is not None and element.name.startswith("std::unique_ptr<")
    if owned:
        pointers = element.template_argument(0).pointer().pointer()
        first, last = first.cast(pointers), last.cast(pointers)
    return [first[i].dereference() if owned else first[i] for i in range(shown(int(last - first)))]


def own_text(value):
    return text(value["fText"])


def tuple_text(value):
    fields = [own_text(field) for field in elements(value["fFields"])]
    return fields[0] if len(fields) == 1 else "( " + ", ".join(fields) + " ) " if fields else ""


def property_text(value):
    name = text(value["fPropertyName"])
    if value.type.name == "MSOLAP7MemberProperty":
        name = f"[{name}]"
    return text(value["fOwnerName"]) + "." + name


def holders(value):
    count = int(value["fRefCount"])
    return "1 holder" if count == 1 else f"{count} holders"


class Line:
    """An object that is shown on one line."""

    def __init__(self, line):
        self.line = line

    def to_string(self):
        return self.line


def expression(text_of):
    return lambda value: Line(f'{value.type.name} "{text_of(value)}", {holders(value)}')


def set_formula(value):
    return Line(f'SET {text(value["fSetName"])} AS {own_text(value["fSet"]["fObject"])}')


def member_formula(value):
    return Line(f'MEMBER {own_text(value["fMember"]["fObject"])} AS {own_text(value["fValue"]["fObject"])}')


def axis(value):
    non_empty = "NON EMPTY " if value["fNonEmpty"] else ""
    return Line(f'{non_empty}{own_text(value["fSet"]["fObject"])} ON AXIS({int(value["fAxisNumber"])})')


class Statement:
    """The cube and the holders, with the parts below."""

    def __init__(self, value, lists):
        self.value = value
        self.lists = lists

    def to_string(self):
        return f'{self.value.type.name} on {text(self.value["fCubeName"])}, {holders(self.value)}'

    def children(self):
        for name, field in self.lists:
            for i, element in enumerate(elements(self.value[field])):
                yield f"{name} {i}", element


class Create(Statement):
    def __init__(self, value):
        super().__init__(value, [("formula", "fFormulas")])

    def children(self):
        if self.value["fUseRawFormula"]:
            yield "text", self.value["fRawFormula"]
        else:
            yield from super().children()


class Drop(Statement):
    def __init__(self, value):
        super().__init__(value, [("name", "fDropNames")])


class Select(Statement):
    def __init__(self, value):
        super().__init__(value, [("formula", "fFormulas"), ("axis", "fAxes"), ("cell property", "fCellProperties")])

    def children(self):
        if self.value["fUseStoredQuery"]:
            yield "text", self.value["fStoredQuery"]
            return
        yield from super().children()
        if self.value["fSlicer"]["fObject"]:
            yield "slicer", self.value["fSlicer"]


class String:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        pointer, length = characters_of(self.value)
        return pointer.lazy_string(length=length)

    def display_hint(self):
        return "string"


class Holder:
    def __init__(self, value):
        self.object = value["fObject"]

    def to_string(self):
        return self.object.dereference() if self.object else "null"


# A class is shown as the first of its bases that stands here, itself included.
PRINTERS = {
    "KelpString": String,
    "MDXSet": expression(own_text),
    "MDXField": expression(own_text),
    "MDXValue": expression(own_text),
    "MDXTuple": expression(tuple_text),
    "MDXMemberProperty": expression(property_text),
    "MDXSetSpecification": set_formula,
    "MDXMemberSpecification": member_formula,
    "MDXSelectQuery::MDXAxisSpecification": axis,
    "MDXSelectQuery": Select,
    "MDXCreateQuery": Create,
    "MDXDropQuery": Drop,
}
# The bases from which the rest is known by the object alone.
ROOTS = {"support::RefCount", "MDXSingleFormulaSpecification", *PRINTERS}


def line_of_bases(type):
    """The names of a class, its first base, and so on."""
    while True:
        yield type.name
        fields = type.fields()
        if not fields or not fields[0].is_base_class:
            return
        type = fields[0].type


class Printers(gdb.printing.PrettyPrinter):
    def __call__(self, value):
        type = gdb.types.get_basic_type(value.type)
        if type.code != gdb.TYPE_CODE_STRUCT or type.name is None:
            return None
        if type.name.startswith("RefPtr<"):
            return Holder(value)
        if ROOTS.isdisjoint(line_of_bases(type)):
            return None
        type = gdb.types.get_basic_type(value.dynamic_type)
        for name in line_of_bases(type):
            if name in PRINTERS:
                return PRINTERS[name](value.cast(type))
        return None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers("odbomodule"), replace=True)
