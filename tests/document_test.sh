#!/usr/bin/env bash
# document_test.sh DOCUMENT COMMAND...: the command runs the program that the document shows. Compares its output with the document's
# ```text blocks. Blanks at the ends of lines and empty lines are ignored.
set -euo pipefail
document=$1
shift

shown=$(awk '/^```/ { inside = !inside && $0 == "```text"; next } inside' "$document" | sed -e 's/[[:space:]]*$//' -e '/^$/d')
[[ -n $shown ]] || { echo "$document has no block of text." >&2; exit 1; }
printed=$("$@" | sed -e 's/[[:space:]]*$//' -e '/^$/d')
diff -u --label "$document" --label "output of its program" <(printf '%s\n' "$shown") <(printf '%s\n' "$printed")
