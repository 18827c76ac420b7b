#!/usr/bin/env bash
# layout_test.sh [--update]: compares the layout of the classes in the public headers of source/ with tests/abi/layout.txt. --update
# writes the file.
set -euo pipefail
export LC_ALL=C
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
list=tests/abi/layout.txt
python=/usr/bin/python3 # Debian's, for which python3-clang is installed
$python -c 'import clang.cindex' 2> /dev/null || { echo "skipped: python3-clang is not installed"; exit 77; }

mapfile -t headers < <(grep -rlw --include='*.h' MDX_API source | sort; ls source/host/*.h)
layout=$($python tests/abi/layout.py "${headers[@]}")
if [[ ${1:-} == --update ]]; then
    printf '%s\n' "$layout" > "$list"
    echo "$(wc -l < "$list") lines written to $list"
elif ! printf '%s\n' "$layout" | diff -u --label "$list" --label headers "$list" - >&2; then
    echo "The class layout has changed. If this is intended, run: $0 --update" >&2
    exit 1
fi
