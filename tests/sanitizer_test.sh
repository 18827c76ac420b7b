#!/usr/bin/env bash
# sanitizer_test.sh COMPILER BUILD_FOLDER: builds tests/sanitizer/host.cpp with the address sanitizer against the installed libraries, which
# are built without it, and expects the host's lines in the reports of a leak and of a use after the last unuse().
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/lib.sh"
compiler=$1
folder=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if ! { "$compiler" -fsanitize=address -x c++ - -o "$work/empty" <<< 'int main() {}' && at_fixed_addresses "$work/empty"; }; then
    echo "skipped: no address sanitizer"
    exit 77
fi

cmake --install "$folder" --prefix "$work/prefix" --strip > "$work/log"
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 -g -fsanitize=address "$root/tests/sanitizer/host.cpp" -o "$work/host" \
    $(pkg-config --cflags --libs odbomodule) "-Wl,-rpath,$(pkg-config --variable=libdir odbomodule)"

# expect FUNCTION ARGUMENT...: the host fails with a report that names a line of this function.
expect() {
    if at_fixed_addresses "$work/host" "${@:2}" > "$work/report" 2>&1 ||
        ! grep -q " in $1(.*/host\.cpp:[0-9]" "$work/report"; then
        cat "$work/report" >&2
        fail "The report does not name a line of the function $1 in host.cpp."
    fi
}
expect leak
expect make twice
expect end twice
expect use twice
