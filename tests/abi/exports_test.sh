#!/usr/bin/env bash
# exports_test.sh LIBRARY LIST [--update]: holds what the library exports against its list beside this script: the functions
# and data by name, each class with a virtual table or type information as one line. --update writes the list, from a
# library of Linux.
# A DLL has the same list but for three things. OLE automation is the system's own there. A class within a class is not
# exported with it. A size is an unsigned long long. Else nothing is left out: members that are written in a class are
# not exported there either, and its classes show by their virtual tables, since each module has the type information
# for itself.
set -euo pipefail
export LC_ALL=C
library=$1
list=$2

names() {
    case $library in
    *.dll) "${OBJDUMP:-objdump}" -p "$library" | sed -n '/^\[Ordinal\/Name Pointer\]/,/^$/ s/^\t\[.*\] //p' ;;
    *) "${NM:-nm}" -D --defined-only --format=posix "$library" | cut -d' ' -f1 ;;
    esac
}
exported() {
    names | c++filt |
        sed -E 's/^(vtable|VTT|typeinfo|typeinfo name) for /class /; /^(non-)?virtual thunk to /d' | sort -u
}
difference() {
    case $library in
    *.dll)
        diff -u --label "$list" --label "$library" \
            <(sed -E '/^(Sys|Variant)[A-Za-z]+$/d; /^class BaseError::Insert$/d' "$list") \
            <(exported | sed 's/unsigned long long/unsigned long/g')
        ;;
    *) exported | diff -u --label "$list" --label "$library" "$list" - ;;
    esac
}

if [[ ${3:-} == --update && $library != *.dll ]]; then
    exported > "$list"
    echo "$(wc -l < "$list") lines written to $list"
elif ! changes=$(difference); then
    printf '%s\n' "$changes" "What is exported has changed. If that is meant, run: $0 $library $list --update" >&2
    exit 1
fi
