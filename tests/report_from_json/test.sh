#!/usr/bin/env bash
# test.sh PROGRAM [--update]: the program prints the texts beside this script for examples/sales.json and every_name.json,
# every_name.json uses all names that the program knows, and a fault of a file is reported with its place. --update writes
# the texts.
set -euo pipefail
program=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
sample=$here/../../examples/sales.json
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for file in "$sample" "$here/every_name.json"; do
    text=$here/$(basename "$file" .json).txt
    if [[ ${2:-} == --update ]]; then
        "$program" "$file" --steps > "$text"
    fi
    "$program" "$file" --steps | diff -u "$text" -
done

guide=$here/../../docs/report_file.md
awk '/^```/ { inside = $0 == "```json"; next } inside' "$guide" > "$work/guide.json"
"$here/../document_test.sh" "$guide" "$program" "$work/guide.json"

failed=0

# expect_names TITLE PREFIX AXIS: the report with that title uses each name that the program accepts in place of
# "?" in AXIS. PREFIX is what is before a name there.
expect_names() {
    local report names name
    report=$(awk -v title="\"title\": \"$1\"" '/"title":/ { inside = index($0, title) } inside' "$here/every_name.json")
    sed -e '/"reports": \[/q' "$here/every_name.json" > "$work/names.json"
    printf '{ "title": "", "statement": "select", "axes": [%s] }]}\n' "$3" >> "$work/names.json"
    names=$("$program" "$work/names.json" 2>&1 | sed -n 's/.*"?" is unknown here; known: //p' || true)
    while read -r name; do
        [[ $report == *"$2\"$name\""* ]] || { echo "every_name.json, $1: $2\"$name\" is missing" >&2; failed=1; }
    done <<< "${names//, /$'\n'}"
}
expect_names 'Steps of a set' '[' '{ "steps": [["?"]] }'
expect_names 'Steps of a member' '[' '{ "from": { "members": [{ "from": "[Store].[All]", "steps": [["?"]] }] } }'
expect_names 'Steps of a value' '[' '{ "steps": [["OrderByValue", "ascending", { "steps": [["?"]] }]] }'
expect_names 'Conditions' '[' '{ "steps": [["TakeFilter", ["?"]]] }'
expect_names 'Steps of a set' '' '{ "steps": [["Order", "?", "[Store].[All]"]] }'
expect_names 'Steps of a set' '' '{ "steps": [["TakeExtremity", "?", "Sum", 1]] }'
expect_names 'Steps of a set' '' '{ "steps": [["TakeExtremity", "Top", "?", 1]] }'
expect_names 'Steps of a set' '{ ' '{ "from": { "?": 1 } }'

# fault TEXT OTHER MESSAGE: with OTHER in the place of TEXT, the file is rejected by a line that begins with the message.
fault() {
    local file status=0
    file=$(< "$sample")
    printf '%s\n' "${file//"$1"/$2}" > "$work/file.json"
    "$program" "$work/file.json" > "$work/out" 2> "$work/err" || status=$?
    if [[ $status != 1 || -s $work/out || $(< "$work/err") != "$work/file.json: $3"* ]]; then
        printf '%s\n' "With \"$2\" instead of \"$1\", expected the message: $3" "status $status and:" "$(< "$work/err")" >&2
        failed=1
    fi
}
fault '"TakeLeafNodes"' '"TakeLeaves"' 'reports[2].axes[1].steps[0][0]: "TakeLeaves" is unknown here; known: *=, +=, -=, AddCalculations,'
fault '"TakeSubset", 0' '"TakeSubset", "first"' 'reports[2].axes[1].steps[1][1]: expected a whole number, found "first"'
fault '"TakeSubset", 0, 20' '"TakeSubset", 0' 'reports[2].axes[1].steps[1]: TakeSubset takes 2 arguments, found 1'
fault '"level": "[Store].[City]"' '"level": "[Store].[Town]"' 'reports[1].axes[1].from.level: "[Store].[Town]" is unknown here; known: [Measures].'
fault '["is empty"' '["is nil"' 'reports[0].axes[1].steps[2][1][2][1][0]: "is nil" is unknown here; known: !=, *, +,'
fault '"nonEmpty": true' '"nonEmtpy": true' 'reports[0].axes[1]: "nonEmtpy" is unknown here; known: from, nonEmpty, properties, steps'
fault '"Count", 3, "[Measures].[Store Sales]"' '"Sum", 3' \
    'reports[1].axes[1].steps[1]: The operation or condition needs a tuple, but none was given.'
fault '"sets": ["[Home]"]' '"sets": []' 'reports[5]: '
fault '"Store Cost", "Unit Sales"' '"Store Sales"' 'cube.dimensions[0]: The cube already has [Measures].[Store Sales]'
fault '["TakeLeafNodes", "[Store]"]' '["TakeFilter", ["current"]]' 'reports[2].axes[1].steps[0]: The tuple is empty.'
fault '["TakeLeafNodes", "[Store]"]' "$(printf '["not",%.0s' {1..200})" 'lists and objects are nested more than 200 levels deep'
fault '["TakeLeafNodes", "[Store]"]' '["TakeAncestorsOfMember", "[Store].[Europe]", 2147483647]' \
    'reports[2].axes[1].steps[0][2]: expected at most 64 levels'
fault '["LoopLeft"]' "$(printf '["LoopLeft"],%.0s' {1..16})[\"DrillUp\"]" \
    'reports[2].axes[0].from.members[0].steps[6]: the text gets longer than 1000000 characters'
long() { printf '{ "from": "[Store].[Europe]", "steps": [["LoopLeft"]%s] }' "$(printf ', ["LoopLeft"]%.0s' {1..6})"; }
fault '["TakeLeafNodes", "[Store]"]' "[\"TakeAncestorsOfMember\", $(long), 64, true]" \
    'reports[2].axes[1].steps[0][2]: the text gets longer than 1000000 characters'
fault '["TakeLeafNodes", "[Store]"]' "[\"TakeSubsetAround\", [$(long), $(long)], 0, 1]" \
    'reports[2].axes[1].steps[0][1]: the text gets longer than 1000000 characters'
fault '["TakeLeafNodes", "[Store]"]' "[\"TakeFilter\", $(printf '["between",%.0s' {1..40}) 1$(printf ', 1, 1]%.0s' {1..40})]" \
    'reports[2].axes[1].steps[0][1]: the text gets longer than 1000000 characters'
fault '"Europe", "parent"' '"Europe", "name": "x", "parent"' \
    'cube.dimensions[2].hierarchies[0].calculations[0]: "name" is given twice'
fault '"Top"' "\"$(printf 'ü%.0s' {1..100})\"" \
    "reports[1].axes[1].steps[1][1]: \"$(printf 'ü%.0s' {1..80})...\" is unknown here; known: Bottom, Top"
fault '["[Measures].[Unit Sales]", "[Measures].[Store Sales]"]' 5 \
    'reports[2].axes[0].steps[0][1]: expected MDX, a list of members or an object, found 5'
fault '"slicer": ["[Time]' '"slicer": ["[Tmie]' \
    'reports[0].slicer[0]: "[Tmie].[Calendar].[2025].[Q1]" is unknown here; known: [Measures].[Profit], [Store].[Europe], [M'
fault '"solveOrder": 2' '"solveOrder": 1e400' "number overflow parsing '1e400'"
fault '"cube": {' '"cube": [' 'parse error at line 3, column 15: '

# expect_failure MESSAGE COMMAND...: the command ends with status 1 and prints the message to standard error.
expect_failure() {
    local status=0
    "${@:2}" 2> "$work/err" || status=$?
    if [[ $status != 1 || $(< "$work/err") != "$1" ]]; then
        printf '%s\n' "${*:2} should have printed: $1" "status $status and:" "$(< "$work/err")" >&2
        failed=1
    fi
}
# shellcheck disable=SC2317 # called by name
to_a_full_disk() { "$program" "$sample" > /dev/full; }
expect_failure 'The output could not be written.' to_a_full_disk
expect_failure "$work: the file cannot be read" "$program" "$work"
printf '%s\0{' "$(< "$sample")" > "$work/zero.json"
expect_failure "$work/zero.json: the file has a zero byte at offset $(($(wc -c < "$work/zero.json") - 2))" \
    "$program" "$work/zero.json"
printf '{ "\xff\n' > "$work/invalid.json"
"$program" "$work/invalid.json" 2> "$work/err" || iconv -f UTF-8 -t UTF-8 "$work/err" > "$work/out" || failed=1

# A condition of many operands takes a moment, not minutes.
{
    sed '/"reports": \[/q' "$sample"
    printf '{ "title": "", "statement": "select", "axes": [{ "steps": [["TakeFilter", ["or"'
    printf ', ["and", 1, 2]%.0s' {1..20000}
    printf ']]] }] }]}'
} > "$work/long.json"
timeout 100 "$program" "$work/long.json" > "$work/out" || { echo 'a long condition failed' >&2; failed=1; }
exit "$failed"
