#!/usr/bin/env bash
# report_test.sh REPORT [EMULATOR...]: the example sales_report, run by the emulator if there is one, prints
# tests/sales_report.txt byte for byte. If the settings ask for a query log, it logs one of the statements. A report for
# Windows, whose name ends in .exe, writes that log with Windows line ends.
set -euo pipefail
report=$1
emulator=("${@:2}")
expected=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/sales_report.txt
work=$(mktemp -d)
export XDG_CONFIG_HOME=$work HOME=${HOME:-$work}
place='Software\Quarry Lane\Fieldstone 11.0\Tideline\BRIM(o)\Log\Modules\ODBOMODULE'
registry() { "${emulator[@]}" reg "$1" "HKLM\\$place" "${@:2}" /f > "$work/reg.log" 2>&1 < /dev/null; }
clean() {
    [[ $report != *.exe ]] || registry delete || true
    rm -rf "$work"
}
trap clean EXIT

run() { "${emulator[@]}" "$report" < /dev/null; }
run | diff -u "$expected" -

log=$work/Zürich.log
if [[ $report != *.exe ]]; then
    line_end=
    mkdir "$work/odbomodule"
    printf '%s\n' "[HKEY_LOCAL_MACHINE\\$place]" "\"MDX Query Log\"=\"$log\"" '"MDX Query Clock"=dword:00000001' \
        > "$work/odbomodule/registry.reg"
else
    line_end='\r'
    registry add /v 'MDX Query Log' /t REG_SZ /d "Z:${log//\//\\}" || { cat "$work/reg.log" >&2; exit 1; }
    registry add /v 'MDX Query Clock' /t REG_DWORD /d 1
fi
run | diff -u <(sed 's/^The query log is off\.$/The statement was written to the query log./' "$expected") -
logged=$(awk -v RS= '/^WITH \n/ { print "[Sales]: " $0 }' "$expected") # the form on several lines
# shellcheck disable=SC2001 # at the end of each line
diff -u <(sed "s/\$/$line_end/" <<< "$logged") <(sed '$d' "$log")
tail -n 1 "$log" | grep -qE $'^Query duration: [0-9]+\\.[0-9]{3} seconds\r?$'
