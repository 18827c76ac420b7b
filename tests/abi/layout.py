"""layout.py HEADER...: prints the classes, enumerations and aliases that the headers declare, as clang sees them. The number of a field
is its offset in bytes. Virtual operations are in the order of their declaration, which is the order of the virtual table."""

import sys
from clang.cindex import CursorKind as Kind, Index

RECORDS = {Kind.CLASS_DECL: "class", Kind.STRUCT_DECL: "struct", Kind.UNION_DECL: "union", Kind.ENUM_DECL: "enum"}
ALIASES = (Kind.TYPE_ALIAS_DECL, Kind.TYPEDEF_DECL)


def show_members(record, members):
    for member in members:
        access = member.access_specifier.name.lower()
        virtual = "virtual " if member.is_virtual_method() else ""
        if member.kind == Kind.CXX_BASE_SPECIFIER:
            print(f"    base: {access} {member.type.spelling}")
        elif member.kind == Kind.FIELD_DECL and member.spelling:
            print(f"    {record.get_offset(member.spelling) // 8}: {access} {member.type.spelling} {member.spelling}")
        elif member.kind == Kind.ENUM_CONSTANT_DECL:
            print(f"    {member.spelling} = {member.enum_value}")
        elif member.kind == Kind.DESTRUCTOR:
            print(f"    {access} {virtual}{member.displayname}")
        elif virtual:
            const = " const" if member.is_const_method() else ""
            print(f"    {access} virtual {member.result_type.spelling} {member.displayname}{const}")
        elif member.is_anonymous():
            show_members(record, member.get_children())


source = "".join(f'#include "{header}"\n' for header in sys.argv[1:])
unit = Index.create().parse("headers.cpp", ["-std=c++17", "-I."], [("headers.cpp", source)])
if unit.diagnostics:
    sys.exit("\n".join(map(str, unit.diagnostics)))
found = [cursor for cursor in unit.cursor.walk_preorder()
         if str(cursor.location.file).startswith("./source/") and not cursor.is_anonymous()]
print("# Written by tests/abi/layout_test.sh --update")
for cursor in sorted(found, key=lambda cursor: cursor.type.spelling):
    if cursor.kind in ALIASES:
        print(f"\n{cursor.type.spelling}: {cursor.underlying_typedef_type.spelling}")
    elif cursor.kind in RECORDS and cursor.is_definition():
        print(f"\n{cursor.type.spelling}: {RECORDS[cursor.kind]} of {cursor.type.get_size()} bytes")
        show_members(cursor.type, cursor.get_children())
