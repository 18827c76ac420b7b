#!/usr/bin/env bash
# package_test.sh BUILD_FOLDER COMPILER [TOOLCHAIN_FILE EMULATOR...]: installs what was built into a temporary folder, moves it
# elsewhere, and builds and runs a small host against it: once through CMake, once through pkg-config. For another
# system, the toolchain file is that build's, and the emulator runs the hosts.
set -euo pipefail
build=$1
compiler=$2
toolchain=${3:-}
emulator=("${@:4}")
host=$(cd "$(dirname "${BASH_SOURCE[0]}")/package" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

expect() {
    local want='SELECT NON EMPTY {[Store].[All]} ON COLUMNS FROM [Sales] ' have
    have=$("${emulator[@]}" "$2" && echo .) || { echo "$1: the host failed" >&2; exit 1; }
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

options=(-DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$work/prefix")
if [[ -n $toolchain ]]; then
    options=(-DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_FIND_ROOT_PATH="$work/prefix" -DCMAKE_PREFIX_PATH=/)
    export WINEPATH="Z:${work//\//\\}\\prefix\\bin" # where programs find their DLLs
fi
cmake -G Ninja -S "$host" -B "$work/host" "${options[@]}" \
    > "$work/log" 2>&1 && cmake --build "$work/host" >> "$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
suffix=$([[ -z $toolchain ]] || echo .exe)
expect "CMake" "$work/host/host$suffix"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
export PKG_CONFIG_PATH
rpath=()
[[ -n $toolchain ]] || rpath=(-Wl,-rpath,"$(pkg-config --variable=libdir odbomodule)")
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 "$host/host.cpp" -o "$work/pc_host$suffix" $(pkg-config --cflags --libs odbomodule) "${rpath[@]}"
expect "pkg-config" "$work/pc_host$suffix"
