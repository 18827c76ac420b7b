#!/usr/bin/env bash
# headers_test.sh COMPILER HEADER...: each header that a host may include has to compile alone, as C++17, and a host that
# includes odbomodule.h may see no macro but ours and the standard library's.
set -euo pipefail
export LC_ALL=C
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
compiler=$1
shift
(($# > 0)) || { echo "no headers given" >&2; exit 1; }

failed=0
for header; do
    printf '#include <%s>\n#include <%s>\n' "$header" "$header" |
        "$compiler" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
            -I "$root" -x c++ - || { echo "does not stand alone: $header" >&2; failed=1; }
done

# The names of the macros behind the text on standard input; those that begin with "_" are the compiler's to use.
macros() {
    "$compiler" -std=c++17 -I "$root" -x c++ -dM -E - | sed -E 's/^#define ([A-Za-z0-9_]+).*/\1/' | sort -u
}
all=$(macros <<< '#include <odbomodule/odbomodule.h>')
standard=$(cd "$root" && grep -hE '^#include <[a-z_]+>' "$@" | sort -u | macros)
ours=$(comm -13 <(printf '%s\n' "$standard") <(printf '%s\n' "$all") | grep -v '^_' | xargs)
if [[ $ours != "MDX_API MDX_EXPORT MDX_IMPORT SUPPORT_API SUPPORT_TYPE" ]]; then
    echo "odbomodule.h brings these macros: $ours" >&2
    failed=1
fi
# What some systems' own headers define, and a host has for itself.
if grep -xE 'min|max|near|far|small|interface|ERROR|DELETE|IN|OUT|GetObject|GetMessage|CreateFile|Yield|_WINDOWS_' <<< "$all"; then
    echo "odbomodule.h brings the macros above" >&2
    failed=1
fi
exit "$failed"
