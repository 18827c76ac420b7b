#!/usr/bin/env bash
# package_test.sh BUILD_FOLDER COMPILER: installs what was built into a temporary folder, moves it elsewhere, and
# builds and runs a small host against it: once through CMake, once through pkg-config.
set -euo pipefail
build=$1
compiler=$2
host=$(cd "$(dirname "${BASH_SOURCE[0]}")/package" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

expect() {
    local want='SELECT NON EMPTY {[Store].[All]} ON COLUMNS FROM [Sales] ' have
    have=$("$2" && echo .) || { echo "$1: the host failed" >&2; exit 1; }
    have=${have%.}
    [[ $have == "$want" ]] || { printf '%s: want |%s|\n%s: have |%s|\n' "$1" "$want" "$1" "$have" >&2; exit 1; }
}

cmake --install "$build" --prefix "$work/first" > "$work/log"
mv "$work/first" "$work/prefix"

# Nothing outside the prefix may be named by what was installed.
if grep -rIlF -e "$build" -e "$work/first" "$work/prefix"; then
    echo "the files above name the folder they came from" >&2
    exit 1
fi

cmake -G Ninja -S "$host" -B "$work/host" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$work/prefix" \
    > "$work/log" 2>&1 && cmake --build "$work/host" >> "$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
expect "CMake" "$work/host/host"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 "$host/host.cpp" -o "$work/pc_host" $(pkg-config --cflags --libs odbomodule) \
    -Wl,-rpath,"$(pkg-config --variable=libdir odbomodule)"
expect "pkg-config" "$work/pc_host"
