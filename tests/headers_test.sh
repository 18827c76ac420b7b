#!/usr/bin/env bash
# headers_test.sh COMPILER FOLDER HEADER...: each header that a host may include has to compile alone, as C++17, without a
# warning. A host that includes memory_cube/maker.h, and with it odbomodule.h, may see no macro but ours and the standard
# library's. On Windows, host/automation.h leaves a host what the system's own headers declare.
set -euo pipefail
export LC_ALL=C
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
compiler=$1
include=$2
shift 2
(($# > 0)) || { echo "no headers given" >&2; exit 1; }

warnings=(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Woverloaded-virtual -Werror)
if ! "$compiler" --version | grep -q clang; then
    warnings+=(-Weffc++ -Wuseless-cast) # which clang does not have, or means otherwise
fi
# shellcheck disable=SC2317 # xargs calls it
stands_alone() {
    printf '#include <%s>\n#include <%s>\n' "$1" "$1" |
        "$compiler" -std=c++17 -fsyntax-only "${@:2}" -I "$include" -x c++ - ||
        { echo "does not stand alone: $1" >&2; return 1; }
}
export -f stands_alone
export compiler include
failed=0
printf '%s\n' "$@" | xargs -P "$(nproc)" -I '{}' bash -c 'stands_alone "$@"' - '{}' "${warnings[@]}" || failed=1

# The names of the macros that the text defines on standard input; those that begin with "_" are the compiler's to use.
macros() {
    "$compiler" -std=c++17 -I "$include" -x c++ -dM -E - | sed -E 's/^#define ([A-Za-z0-9_]+).*/\1/' | sort -u
}
all=$(macros <<< '#include <odbomodule/memory_cube/maker.h>')
standard=$(grep -rhE --include='*.h' '^#include <[a-z_]+>' "$root/source" "$root/memory_cube" | sort -u | macros)
ours=$(comm -13 <(printf '%s\n' "$standard") <(printf '%s\n' "$all") | grep -v '^_' | xargs)
if [[ $ours != "MDX_API MDX_EXPORT MDX_IMPORT SUPPORT_API SUPPORT_TYPE" ]]; then
    echo "maker.h brings these macros: $ours" >&2
    failed=1
fi
# What some systems' own headers define, and a host has for itself.
if grep -xE 'min|max|near|far|small|interface|ERROR|DELETE|IN|OUT|GetObject|GetMessage|CreateFile|Yield|_WINDOWS_' <<< "$all"; then
    echo "maker.h brings the macros above" >&2
    failed=1
fi

# declarations HEADER...: the text and the macros that the headers give a host, less where they come from.
declarations() {
    printf '#include <%s>\n' "$@" | "$compiler" -std=c++17 -I "$include" -x c++ -E -dD - | grep -v '^# ' | sort -u
}
if grep -qx _WIN32 <<< "$(macros < /dev/null)"; then
    before=$(declarations odbomodule/host/automation.h windows.h)
    diff <(declarations windows.h odbomodule/host/automation.h) - <<< "$before" ||
        { echo "host/automation.h before <windows.h> changes what a host sees" >&2; failed=1; }
fi
exit "$failed"
