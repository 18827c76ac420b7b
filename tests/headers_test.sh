#!/usr/bin/env bash
# headers_test.sh COMPILER HEADER...: each header that a host may include has to compile alone, as C++17.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
compiler=$1
shift
(($# > 0)) || { echo "no headers given" >&2; exit 1; }

failed=0
for header; do
    printf '#include <%s>\n#include <%s>\n' "$header" "$header" |
        "$compiler" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
            -I "$root/source" -x c++ - || { echo "does not stand alone: $header" >&2; failed=1; }
done
exit "$failed"
