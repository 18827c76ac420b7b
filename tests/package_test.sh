#!/usr/bin/env bash
# package_test.sh BUILD_FOLDER COMPILER [TOOLCHAIN_FILE EMULATOR...]: installs a build, or unpacks its .zip, in a temporary folder, moves
# that folder, and builds and runs hosts against it. The toolchain file and the emulator are those of a build for another system.
set -euo pipefail
build=$1
compiler=$2
toolchain=${3:-}
emulator=("${@:4}")
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
program=$build/tests/conditions.cpp # taken from docs/conditions.md; on Windows its conditions also need oleaut32
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# check HOW PROGRAM: the program prints what docs/conditions.md shows.
check() {
    "$tests/document_test.sh" "$tests/../docs/conditions.md" "${emulator[@]}" "$2" || { echo "The program was built by $1." >&2; exit 1; }
}

if [[ -z $toolchain ]]; then
    cmake --install "$build" --prefix "$work/first" > "$work/log"
else
    cpack --config "$build/CPackConfig.cmake" -B "$work/packages" > "$work/log"
    mkdir "$work/unpacked"
    (cd "$work/unpacked" && cmake -E tar xf "$work"/packages/*.zip)
    mv "$work"/unpacked/* "$work/first"
fi
mv "$work/first" "$work/prefix"

if grep -rIlF -e "$build" -e "$work/first" "$work/prefix"; then
    echo "The files above name a folder outside the prefix." >&2
    exit 1
fi

# Through CMake.
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
        strings -el "$library" | grep -qx FileVersion || { echo "$library has no version resource." >&2; exit 1; }
    done
fi

# Through pkg-config.
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
export PKG_CONFIG_PATH
read -ra flags < <(pkg-config --cflags --libs odbomodule)
if [[ -z $toolchain ]]; then flags+=("-Wl,-rpath,$(pkg-config --variable=libdir odbomodule)"); fi
"$compiler" -std=c++17 "$program" -o "$work/pc_host$suffix" "${flags[@]}"
check pkg-config "$work/pc_host$suffix"

# With host headers that have the same names as library headers.
"$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Weffc++ -Werror -I "$tests/package" "$tests/package/small_host.cpp" \
    -o "$work/small_host$suffix" "${flags[@]}"
"${emulator[@]}" "$work/small_host$suffix" || { echo "The small host got another text." >&2; exit 1; }
