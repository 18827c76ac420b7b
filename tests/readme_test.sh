#!/usr/bin/env bash
# readme_test.sh COMMAND...: README.md shows the text of examples/readme_example.cpp and what the command, which runs a
# program built from it, prints.
# Blanks at the ends of lines, and empty lines before the output, do not count: the README has none.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# The text of the first block of that language in the README; fails when there is none.
block() {
    awk -v fence="\`\`\`$1" '$0 == fence { inside = found = 1; next }
        inside && $0 == "```" { exit }
        inside { print }
        END { exit !found }' "$root/README.md"
}
plain() { sed -e 's/[[:space:]]*$//' | sed -e '/./,$!d'; }
# compare WHAT SHOWN REAL
compare() {
    if [[ $2 != "$3" ]]; then
        echo "README.md shows another $1 (-) than there is (+):"
        diff -u <(printf '%s\n' "$2") <(printf '%s\n' "$3") || exit 1
    fi
}

shown=$(block cpp)
compare program "$shown" "$(cat "$root/examples/readme_example.cpp")"
shown=$(block text)
printed=$("$@")
compare output "$shown" "$(plain <<< "$printed")"
