#!/usr/bin/env bash
# test.sh PROGRAM [--update]: the program prints the texts beside this script for examples/sales.json and every_name.json,
# every_name.json uses all names that the program knows, and a fault of a file is reported, with its place if it has one.
# --update writes the texts.
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

# expect_failure MESSAGE COMMAND...: the command ends with status 1 and prints only a message that begins so, which is not long.
expect_failure() {
    local status=0
    "${@:2}" > "$work/out" 2> "$work/err" || status=$?
    if [[ $status != 1 || -s $work/out || $(< "$work/err") != "$1"* || $(wc -c < "$work/err") -gt 2000 ]]; then
        printf '%s\n' "${*:2} should have printed: $1" "status $status and:" "$(< "$work/err")" >&2
        failed=1
    fi
}

# fault TEXT OTHER MESSAGE: with OTHER in the place of TEXT, the sample is rejected with the message.
fault() {
    local file
    file=$(< "$sample")
    printf '%s\n' "${file//"$1"/$2}" > "$work/file.json"
    expect_failure "$work/file.json: $3" "$program" "$work/file.json"
}
while read -r line; do
    [[ $line =~ ^(.*)' | '(.*)' | '(.*)$ ]]
    fault "${BASH_REMATCH[@]:1}"
done < <(grep -v '^#' "$here/faults.txt")

# The other faults are too long for that file.
repeat() { printf -- "$2%.0s" $(seq "$1"); }
fault '"Switzerland": ["Zürich"]' "\"$(repeat 100 'ü')\": \"$(repeat 100 'ü')\"" "cube.dimensions[2].hierarchies[0].members.\
All Stores.$(repeat 80 'ü')...: expected an object or a list of names, found \"$(repeat 80 'ü')...\""
fault '"Country", "City"' "$(printf '"Level %s", ' {1..300}) \"Country\"" \
    'reports[1].axes[1].from.level: "[Store].[City]" is unknown here; known: [Measures].[MeasuresLevel], [Store].[(All)], '
fault '"Switzerland": ["Zürich"]' "\"$(repeat 30000 n)\": [$(printf '"%s", ' {1..2000}) \"\"]" "cube.dimensions[2].hierarchies[0].members.\
All Stores.$(repeat 80 n)...: all unique names together get longer than 50000000 characters"
step='["TakeLeafNodes", "[Store]"]'
fault "$step" "$(repeat 200 '["not",')" 'lists and objects are nested more than 200 levels deep'
too_long='the text gets longer than 1000000 characters'
fault '["LoopLeft"]' "$(repeat 16 '["LoopLeft"],')[\"DrillUp\"]" "reports[2].axes[0].from.members[0].steps[6]: $too_long"
long="{ \"from\": \"[Store].[Europe]\", \"steps\": [$(repeat 6 '["LoopLeft"],') [\"LoopLeft\"]] }"
fault "$step" "[\"TakeAncestorsOfMember\", $long, 64, true]" "reports[2].axes[1].steps[0][2]: $too_long"
fault "$step" "[\"TakeSubsetAround\", [$long, $long], 0, 1]" "reports[2].axes[1].steps[0][1]: $too_long"
fault "$step" "[\"TakeFilter\", $(repeat 40 '["between",') 1$(repeat 40 ', 1, 1]')]" "reports[2].axes[1].steps[0][1]: $too_long"
fault "$step" "[\"+=\", [$(repeat 99 "$long,") $long]]" \
    'reports[2].axes[1].steps[0][1][39].steps[5]: all texts together get longer than 50000000 characters'

expect_failure "$work: the file cannot be read" "$program" "$work"
printf '%s\0{' "$(< "$sample")" > "$work/zero.json"
expect_failure "$work/zero.json: the file has a zero byte at offset $(($(wc -c < "$work/zero.json") - 2))" \
    "$program" "$work/zero.json"
printf '{ "\xff\n' > "$work/invalid.json"
expect_failure "$work/invalid.json: " "$program" "$work/invalid.json"
iconv -f UTF-8 -t UTF-8 "$work/err" > "$work/out" || failed=1

# shellcheck disable=SC2317 # called by name
to_a_full_disk() { "$program" "$sample" > /dev/full; }
expect_failure 'The output could not be written.' to_a_full_disk
# shellcheck disable=SC2317
to_no_output() { "$program" "$sample" >&-; }
expect_failure 'The output could not be written.' to_no_output

# Conditions and entries in large numbers take a moment, not minutes. With little memory the program ends with a message.
printf '{ "cube": { "name": "[C]", "dimensions": [{ "name": "D", "hierarchies": [{ "levels": [], "members": {' > "$work/long.json"
printf '"%s": [],' {1..300000} >> "$work/long.json"
printf '"": [] } }] }] }, "reports": [{ "title": "", "statement": "select", "axes": [{ "steps": [["TakeFilter", ["or"%s]]] }] }] }' \
    "$(repeat 20000 ', ["and", 1, 2]')" >> "$work/long.json"
timeout 100 "$program" "$work/long.json" > "$work/out" || { echo 'a long file failed' >&2; failed=1; }
# shellcheck disable=SC2317
with_little_memory() { (ulimit -v 20000 && "$program" "$work/long.json"); }
if ! grep -q __asan_init "$program"; then # the sanitizer reserves memory by the terabyte
    expect_failure 'Out of memory.' with_little_memory
fi
exit "$failed"
