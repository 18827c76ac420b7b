#!/usr/bin/env bash
# report_test.sh NATIVE_REPORT REPORT WINE...: the example for Windows, run by WINE..., prints byte for byte what the one for
# this system prints, and writes the same query log when the registry asks for one, with the line ends of Windows.
set -euo pipefail
native=$1
report=$2
shift 2
wine=("$@")
work=$(mktemp -d)
place='Software\Quarry Lane\Fieldstone 11.0\Tideline\BRIM(o)\Log\Modules\ODBOMODULE'
registry() { "${wine[@]}" reg "$@" > "$work/reg.log" 2>&1 < /dev/null; }
clean() {
    registry delete "HKLM\\$place" /f || true
    rm -rf "$work"
}
trap clean EXIT
export XDG_CONFIG_HOME=$work/settings HOME=${HOME:-$work}

# compare NAME: runs both and compares what they print.
compare() {
    "$native" > "$work/native-$1"
    "${wine[@]}" "$report" > "$work/windows-$1" < /dev/null
    cmp "$work/native-$1" "$work/windows-$1"
}
compare off
grep -q 'The query log is off' "$work/windows-off"

mkdir -p "$XDG_CONFIG_HOME/odbomodule"
printf '%s\n' "[HKEY_LOCAL_MACHINE\\$place]" "\"MDX Query Log\"=\"$work/native Zürich.log\"" \
    > "$XDG_CONFIG_HOME/odbomodule/registry.reg"
windows_log="Z:${work//\//\\}\\windows Zürich.log"
registry add "HKLM\\$place" /v 'MDX Query Log' /t REG_SZ /d "$windows_log" /f || { cat "$work/reg.log" >&2; exit 1; }
compare on
grep -q 'was written to the query log' "$work/windows-on"
sed 's/$/\r/' "$work/native Zürich.log" | cmp - "$work/windows Zürich.log"

registry add "HKLM\\$place" /v 'MDX Query Clock' /t REG_DWORD /d 1 /f
"${wine[@]}" "$report" > "$work/windows-clock" < /dev/null
tail -n 1 "$work/windows Zürich.log" | grep -qE $'^Query duration: [0-9]+\\.[0-9]{3} seconds\r$'
