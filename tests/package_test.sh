#!/usr/bin/env bash
# package_test.sh BUILD_FOLDER COMPILER [TOOLCHAIN_FILE EMULATOR...]: installs what was built, or unpacks its package, in a
# temporary folder, moves it elsewhere, and builds and runs the program of docs/conditions.md, which looks into values,
# against it: once through CMake, once through pkg-config. For another system, the toolchain file is that build's, and the
# emulator runs the programs.
set -euo pipefail
build=$1
compiler=$2
toolchain=${3:-}
emulator=("${@:4}")
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
program=$build/tests/conditions.cpp # as it was taken from docs/conditions.md
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# check HOW PROGRAM: the program prints what docs/conditions.md shows.
check() { "$tests/document_test.sh" "$tests/../docs/conditions.md" "${emulator[@]}" "$2" || { echo "this is the program that was built by $1" >&2; exit 1; }; }

if [[ -z $toolchain ]]; then
    cmake --install "$build" --prefix "$work/first" > "$work/log"
else # as the .zip has it
    cpack --config "$build/CPackConfig.cmake" -B "$work/packages" > "$work/log"
    mkdir "$work/unpacked"
    (cd "$work/unpacked" && cmake -E tar xf "$work"/packages/*.zip)
    mv "$work"/unpacked/* "$work/first"
fi
mv "$work/first" "$work/prefix"

# Nothing outside the prefix may be named by what was installed.
if grep -rIlF -e "$build" -e "$work/first" "$work/prefix"; then
    echo "the files above name the folder they came from" >&2
    exit 1
fi

options=(-DPROGRAM="$program" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$work/prefix")
if [[ -n $toolchain ]]; then
    options=(-DPROGRAM="$program" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_FIND_ROOT_PATH="$work/prefix" -DCMAKE_PREFIX_PATH=/)
    export WINEPATH="Z:${work//\//\\}\\prefix\\bin" # where programs find their DLLs
fi
{ cmake -G Ninja -S "$tests/package" -B "$work/host" "${options[@]}" && cmake --build "$work/host"; } > "$work/log" 2>&1 ||
    { cat "$work/log" >&2; exit 1; }
suffix=$([[ -z $toolchain ]] || echo .exe)
check CMake "$work/host/host$suffix"

if [[ -n $toolchain ]]; then
    for library in "$work"/prefix/bin/{odbomodule,support_dll}.dll; do
        strings -el "$library" | grep -qx FileVersion || { echo "no version resource in $library" >&2; exit 1; }
    done
fi

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
export PKG_CONFIG_PATH
rpath=()
if [[ -z $toolchain ]]; then rpath=("-Wl,-rpath,$(pkg-config --variable=libdir odbomodule)"); fi
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 "$program" -o "$work/pc_host$suffix" $(pkg-config --cflags --libs odbomodule) "${rpath[@]}"
check pkg-config "$work/pc_host$suffix"
