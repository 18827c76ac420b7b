#!/usr/bin/env bash
# exports_test.sh LIBRARY LIST [--update]: compares the library's exports with a list: functions and data by name, and one line for each
# class with a virtual table or type information. --update writes the list from a library for Linux.
# A DLL has the same list with three differences: OLE automation belongs to the system, a nested class is not exported with the outer
# one, and std::size_t is unsigned long long.
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
    printf '%s\n' "$changes" "The exports have changed. If this is intended, run: $0 $library $list --update" >&2
    exit 1
fi
