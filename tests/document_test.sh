#!/usr/bin/env bash
# document_test.sh DOCUMENT COMMAND...: the command, which runs the program that the document shows, prints what the document's
# ```text blocks show, one after another. Blanks at the ends of lines, and empty lines, do not count.
set -euo pipefail
document=$1
shift

shown=$(awk '/^```/ { inside = !inside && $0 == "```text"; next } inside' "$document" | sed -e 's/[[:space:]]*$//' -e '/^$/d')
[[ -n $shown ]] || { echo "$document shows no output" >&2; exit 1; }
printed=$("$@" | sed -e 's/[[:space:]]*$//' -e '/^$/d')
diff -u --label "$document" --label "what its program prints" <(printf '%s\n' "$shown") <(printf '%s\n' "$printed")
