"""gdb printers for the objects of the library. They read memory and call no function of the program.

An expression is shown as its text and the number of its holders, a statement with its parts, a KelpString as text,
a RefPtr as its object, an error as its code and inserts, a condition as its text. Texts and lists are cut at the
limit of `set print elements`.
"""

import gdb
import gdb.printing
import gdb.types


def shown(count):
    """The number of characters or elements to show. Before an object is constructed, its count may be garbage."""
    return min(count, gdb.parameter("print elements") or count)


def characters_of(string):
    """The address of a KelpString's characters, and their number, which gdb limits to 31 bits."""
    return string["_M_dataplus"]["_M_p"], min(int(string["_M_string_length"]), 2**31 - 1)


def text(string):
    """The text of a KelpString."""
    pointer, length = characters_of(string)
    characters = pointer.string("utf-16", "replace", shown(length))
    if shown(length) < length:
        characters += "..."
    return characters.encode(gdb.host_charset(), "backslashreplace").decode(gdb.host_charset())


def elements(vector):
    """The elements of a vector, or the objects that its std::unique_ptrs own."""
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
    count = int(value["fRefCount"]["_M_i"])
    return "1 holder" if count == 1 else f"{count} holders"


class Line:
    """An object without parts."""

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
    """A statement with its parts as children."""

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


def enumerator(type_name, number):
    """The name of an enumerator, or its number if it has no name."""
    for field in gdb.lookup_type(type_name).fields():
        if field.enumval == number:
            return field.name.split("::")[-1]
    return str(number)


def error(value):
    inserts = ", ".join(own_text(insert) for insert in elements(value["fInserts"]))
    code = enumerator("MDXErrorCode", int(value["fCode"]))
    return Line(f'{value.type.name} {code}{inserts and ": "}{inserts}')


# Templates of the conditions that are not written as NAME( operands ).
CONDITIONS = {
    "BETWEEN": "{0} >= {1} AND {0} <= {2}",
    "OUTSIDE": "{0} < {1} OR {0} > {2}",
    "TUPLE_IS_NULL": "{0} = NULL",
    "TUPLE_VALUE": "{0}",
    "MEMBER_VALUE": "{0}",
    "EQUALTO": "{0} = {1}",
    "NOTEQUALTO": "{0} <> {1}",
    "LESSTHAN": "{0} < {1}",
    "LESSTHANOREQUALTO": "{0} <= {1}",
    "GREATERTHAN": "{0} > {1}",
    "GREATERTHANOREQUALTO": "{0} >= {1}",
    "AND": "{0} AND {1}",
    "OR": "{0} OR {1}",
    "NEGATE": "-( {0} )",
    "GROUP_190": "( {0} )",
    "GROUP_206": "( {0} )",
}


ARITHMETIC = {"ADD": "+", "SUBTRACT": "-", "TIMES": "*", "DIVIDE": "/", "INTDIVIDE": "/"}


def condition_kind(value):
    return enumerator("BRIM_o::ExpressionType", int(value["fNode"]["fType"])).removeprefix("ET_")


def condition_text(value, depth=0):
    if depth == 20:
        return "..."
    kind = condition_kind(value)
    if kind in ("VALUE", "BOOLVAL"):
        number = float(value["fNode"]["fValue"]["dblVal"])
        return f"{number:.16g}" if kind == "VALUE" else "true" if number else "false"
    own = own_text(value["fNode"])
    if own:
        return own
    nodes = elements(value["fNode"]["fOperands"])
    operands = [condition_text(node, depth + 1) for node in nodes]
    if kind in ARITHMETIC:
        bare = [condition_kind(node) == "TUPLE_VALUE" for node in nodes]
        return f" {ARITHMETIC[kind]} ".join(text if b else f"( {text} )" for text, b in zip(operands, bare))
    try:
        return CONDITIONS[kind].format(*operands)
    except (KeyError, IndexError):
        return f'{kind.removeprefix("TUPLE")}( {", ".join(operands)} )' if operands else kind


def condition(value):
    return Line(f'{value.type.name} "{condition_text(value)}"')


# A class is shown by the printer of its nearest base that is listed here, which may be the class itself.
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
    "BaseError": error,
    "memory_cube::Condition": condition,
}
# A value is printed if its static type is listed here or derives from a listed one. The object's dynamic type
# selects the printer, so the first three need none.
ROOTS = {"support::RefCount", "MDXSingleFormulaSpecification", "BRIM_o::AnyError", *PRINTERS}


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
        if value.type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
        dynamic = gdb.types.get_basic_type(value.dynamic_type)
        if dynamic != type:
            value = value.cast(dynamic)
        for name in line_of_bases(dynamic):
            if name in PRINTERS:
                return PRINTERS[name](value)
        return None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers("odbomodule"), replace=True)
