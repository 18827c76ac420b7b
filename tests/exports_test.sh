#!/usr/bin/env bash
# exports_test.sh LIBRARY [--update]: holds what the library exports against packaging/exports.txt: the functions
# and data by name, each class with a virtual table or type information as one line. --update writes the list.
# A DLL has the same list with nothing left out: members that are written in a class are not exported there either, and
# its classes show by their virtual tables, since each module has the type information for itself.
set -euo pipefail
export LC_ALL=C
library=$1
list=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/packaging/exports.txt

names() {
    case $library in
    *.dll) "${OBJDUMP:-objdump}" -p "$library" | sed -n '/^\[Ordinal\/Name Pointer\]/,/^$/ s/^\t\[.*\] //p' ;;
    *) nm -D --defined-only --format=posix "$library" | cut -d' ' -f1 ;;
    esac
}
exported() {
    names | c++filt |
        sed -E 's/^(vtable|VTT|typeinfo|typeinfo name) for /class /; /^(non-)?virtual thunk to /d' | sort -u
}

if [[ ${2:-} == --update ]]; then
    exported > "$list"
    echo "$(wc -l < "$list") lines written to $list"
elif ! difference=$(exported | diff -u --label "$list" --label "$library" "$list" -); then
    printf '%s\n' "$difference" "What is exported has changed. If that is meant, run: $0 $library --update" >&2
    exit 1
fi
