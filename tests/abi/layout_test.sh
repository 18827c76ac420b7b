#!/usr/bin/env bash
# layout_test.sh COMPILER [--update]: compares the class layout in the public headers with tests/abi/layout.txt: the size, bases, fields,
# virtual operations and destructor of each class, and the enumerators of each enumeration. --update writes the file. The layout comes
# from g++'s debug information.
#
# The number of a base or field is its offset. The number of a virtual operation is its place in the virtual table; an override has the
# place of the operation that it overrides. A virtual destructor has two places, which the list leaves out.
set -euo pipefail
export LC_ALL=C
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
list=tests/abi/layout.txt
object=$(mktemp)
trap 'rm -f "$object"' EXIT

mapfile -t headers < <(grep -rlw --include='*.h' MDX_API source | sort; ls source/host/*.h)
printf '#include "%s"\n' "${headers[@]}" | "$1" -std=c++17 -I . -c -o "$object" -gdwarf-5 -femit-class-debug-always \
    -fno-eliminate-unused-debug-types -x c++ -

# Prints the lines of the list, each with the name of its class and a number for sorting.
sections() {
    readelf --debug-dump=rawline --debug-dump=info "$object" | c++filt | awk '
        # Only the files of this tree are in folders with relative names.
        /^ The (Directory|File Name) Table/ { table = $2 }
        /^  [0-9]+\t/ && table == "Directory" { relative[$1] = !/: \// }
        /^  [0-9]+\t/ && table == "File" { own[$1] = relative[$2] }

        # <depth><entry>: Abbrev Number: n (DW_TAG_kind)
        /^ *<[0-9]+><[0-9a-f]+>: Abbrev Number: .*DW_TAG_/ {
            split($0, part, /[<>]+/)
            entry = part[3]
            at[part[2]] = entry
            parent[entry] = at[part[2] - 1]
            kind[entry] = $NF
            gsub(/\(DW_TAG_|_type\)|\)/, "", kind[entry])
            children[parent[entry]] = children[parent[entry]] " " entry
            entries[++count] = entry
        }
        # <offset> DW_AT_name : value
        /^ *<[0-9a-f]+> +DW_AT_/ {
            name = substr($2, 7)
            sub(/:$/, "", name)
            sub(/^[^:]*: (\([^)]*\): )?/, "")
            sub(/[ \t]+$/, "")
            if (name == "type") gsub(/<0x|>/, "")
            if (name == "accessibility") gsub(/.*\(|\)/, "")
            if (name == "vtable_elem_location") gsub(/.*: |\)/, "")
            value[entry, name] = $0
        }

        function is_record(entry) { return kind[entry] ~ /^(class|structure|union)$/ }
        function scope(entry, outer) {
            outer = parent[entry]
            if (kind[outer] == "compile_unit") return ""
            if (kind[outer] != "namespace" && !is_record(outer)) return "(local)::"
            return scope(outer) (value[outer, "export_symbols"] ? "" : value[outer, "name"] "::")
        }
        function full_name(entry) { return scope(entry) value[entry, "name"] }
        function type(entry) {
            if (!entry) return "void"
            if (kind[entry] == "pointer") return type(value[entry, "type"]) "*"
            if (kind[entry] == "reference") return type(value[entry, "type"]) "&"
            if (kind[entry] == "const") return type(value[entry, "type"]) " const"
            return full_name(entry)
        }
        function access(entry) {
            if (value[entry, "accessibility"]) return value[entry, "accessibility"]
            return kind[parent[entry]] == "class" ? "private" : "public"
        }
        function say(order, line) { print section "\t" order "\t" line }
        function say_children(of, offset, list, count, i, entry, place, what) {
            count = split(children[of], list, " ")
            for (i = 1; i <= count; ++i) {
                entry = list[i]
                place = offset + value[entry, "data_member_location"]
                what = access(entry) " " type(value[entry, "type"])
                if (kind[entry] == "enumerator") say(i, "    " value[entry, "name"] " = " value[entry, "const_value"])
                if (kind[entry] == "inheritance") say(place, "    base " place ": " what)
                if (kind[entry] == "member" && !value[entry, "external"]) {
                    if (!value[entry, "name"]) say_children(value[entry, "type"], place)
                    else if (value[entry, "artificial"]) say(place, "    field " place ": the virtual table")
                    else say(place, "    field " place ": " what " " value[entry, "name"])
                }
                if (kind[entry] != "subprogram" || value[entry, "artificial"]) continue
                place = value[entry, "vtable_elem_location"]
                if (place != "") say(1000000 + place, "    virtual " place ": " what " " value[entry, "linkage_name"])
                else if (value[entry, "name"] ~ /^~/)
                    say(-1, "    destructor: " access(entry) (value[entry, "virtuality"] ? " virtual" : ""))
            }
        }
        END {
            for (i = 1; i <= count; ++i) {
                entry = entries[i]
                if (!is_record(entry) && kind[entry] != "enumeration") continue
                section = full_name(entry)
                if (!own[value[entry, "decl_file"]] || value[entry, "declaration"]) continue
                if (!value[entry, "name"] || section ~ /[<(]/) continue # unnamed, a template or local
                say(-3)
                say(-2, section ": " kind[entry] " of " value[entry, "byte_size"] " bytes")
                say_children(entry, 0)
            }
        }'
}
layout() {
    echo "# Class layout, written by tests/abi/layout_test.sh COMPILER --update"
    # Templates of the standard library are shown without their default arguments.
    local nested='[^<>]*'
    for _ in 1 2 3 4; do nested="([^<>]|<$nested>)*"; done
    sections | sort -t $'\t' -s -k 1,1 -k 2,2n | cut -f 3 |
        sed -E "s/__cxx11:://g; s/, std::(allocator|char_traits|default_delete|less)<$nested> ?//g"
}

if [[ ${2:-} == --update ]]; then
    layout > "$list"
    echo "$(wc -l < "$list") lines written to $list"
elif ! difference=$(layout | diff -u --label "$list" --label headers "$list" -); then
    printf '%s\n' "$difference" "The class layout has changed. If this is intended, run: $0 $1 --update" >&2
    exit 1
fi
