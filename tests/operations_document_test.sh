#!/usr/bin/env bash
# operations_document_test.sh: checks that docs/operations.md has a row for every operation that is exported, and as many rows as the
# operation has overloads.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

# The objects of the document, and their classes.
objects=(s=MDXSet m=MDXField x=MDXValue k=MDXTuple select=MDXSelectQuery create=MDXCreateQuery drop=MDXDropQuery
    generator=MSOLAP7QueryGenerator)
# What has no row, as "object operation".
exceptions=(
    '.* (getText|getQuotedText|writeText)'     # every row reads them
    '.* (MDX|MSOLAP7).*'                       # constructors: the generator calls them
    '.* operator='                             # not meant to be called
    '. unuseVector'                            # gives objects back; writes no text
    's (translate_condition|server_translate)' # what a dialect overrides
    'k FieldCount'                             # returns a number
    'drop add'                                 # private
    'generator (GetServerType|create_mdx_query_log)'
    'generator GenerateTuple'                  # a tuple without members has no text
)

alternatives() { local IFS='|'; echo "$*"; }

# Each overload, as "object operation".
exported() {
    local object
    for object in "${objects[@]}"; do
        sed -nE "s/^${object#*=}::([A-Za-z0-9_]+|operator[^(]+)\(.*/${object%%=*} \1/p" abi/exports.txt
    done | grep -vxE "$(alternatives "${exceptions[@]}")"
}
# Each row, in the same way.
documented() {
    # shellcheck disable=SC2016 # the quotes are those of Markdown
    grep -oE '^\| `[^`]*`' ../docs/operations.md | sort -u |
        grep -oE "\b($(alternatives "${objects[@]%%=*}"))->[A-Za-z0-9_]+\(|\*s [-+*]=" |
        sed -E 's/->/ /; s/\($//; s/^\*s /s operator/'
}

missing=$(awk 'NR == FNR { ++rows[$0]; next } ++overloads[$0] > rows[$0]' <(documented) <(exported) | sort -u)
if [[ -n $missing ]]; then
    printf '%s\n' "docs/operations.md has too few rows for these operations:" "$missing" >&2
    exit 1
fi
