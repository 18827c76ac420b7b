#!/usr/bin/env bash
# gdb_test.sh COMPILER [BUILD_FOLDER]: compares what gdb shows of tests/gdb/host.cpp, inside the library and in the host, with
# tests/gdb/expected.txt. Without BUILD_FOLDER, the installed Debian packages are tested. With it, the build is installed in a temporary
# folder, stripped, with the debug symbols in separate files.
set -euo pipefail
compiler=$1
build=${2:-}
folder=$(dirname "${BASH_SOURCE[0]}")/gdb
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C.UTF-8

skip() { echo "skipped: $*"; exit 77; }
command -v gdb > /dev/null || skip "gdb is not installed"
gdb -nx -batch -ex run -args true > "$work/log" 2>&1 || true
if grep -q 'ptrace: Operation not permitted' "$work/log"; then skip "this process may not trace another"; fi

options=()
rpath=
if [[ -n $build ]]; then
    for component in runtime development symbols; do
        cmake --install "$build" --prefix "$work/prefix" --strip --component "$component" > "$work/log"
    done
    PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
    export PKG_CONFIG_PATH
    rpath=-Wl,-rpath,$(pkg-config --variable=libdir odbomodule)
    options=(-iex "add-auto-load-safe-path $work/prefix" -iex "set debug-file-directory $work/prefix/lib/debug")
fi
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 -g "$folder/host.cpp" -o "$work/host" $(pkg-config --cflags --libs odbomodule) ${rpath:+"$rpath"}
gdb -nx -batch "${options[@]}" -x "$folder/commands.gdb" "$work/host" > "$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }

# Keeps the place of the first breakpoint, which needs the library's debug symbols, and the printed values.
sed -nE 's/^Breakpoint 1, (.*) \(.* at .*(source\/sets\/.*):[0-9]+$/\1 in \2/p; /^[$a-z][a-z0-9]* = /p' "$work/log" > "$work/shown"
if ! diff -u --label expected.txt --label gdb "$folder/expected.txt" "$work/shown" >&2; then
    echo "This is all of gdb's output:" >&2
    cat "$work/log" >&2
    exit 1
fi
