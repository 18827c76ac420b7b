#!/usr/bin/env bash
# msvc_test.sh CLANG MINGW_COMPILER FOLDER: compiles, as the compiler of Visual Studio would see them, the headers as a host and as
# either library includes them, and the sources that are for Windows alone: with its rules for classes that a DLL exports (all
# members made at once, so that none may need what is incomplete), its layout and no GNU extension. Visual Studio's own headers
# are not to be had here: MinGW's stand in for them, so that what its standard library differs in goes unseen.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
clang=$1
compiler=$2
include=$3

# MinGW's folders, less those with what a compiler brings itself.
includes=()
while read -r folder; do
    [[ $folder =~ /lib/gcc/[^/]+/[^/]+/include(-fixed)?$ ]] || includes+=(-isystem "$folder")
done < <("$compiler" -E -x c++ -v /dev/null 2>&1 | sed -n '/^#include </,/^End of search/ s/^ //p')
((${#includes[@]} > 0))

failed=0
# check WHAT ARGUMENT...
check() {
    "$clang" --target=x86_64-pc-windows-msvc -fno-ms-compatibility -U_MSC_VER -fgnuc-version=12.2.0 -D__MINGW32__ \
        -D__MINGW64__ -D__declspec=__declspec -nostdinc++ "${includes[@]}" -I "$include" \
        -Wall -Wextra -Wpedantic -Werror -fsyntax-only -x c++ "${@:2}" || { echo "not as it should be: $1" >&2; failed=1; }
}
cd "$include"
host=$(printf '#include "%s"\n' odbomodule/odbomodule.h odbomodule/dialect/*.h odbomodule/host/*.h)
check "the headers for a host" -std=c++17 - <<< "$host"
check "the headers for the module" -std=c++20 -DODBOMODULE_BUILD - <<< "$host"
check "the headers for the support library" -std=c++20 -DSUPPORT_DLL_BUILD - <<< "$(printf '#include "%s"\n' odbomodule/host/*.h)"
check library_entry.cpp -std=c++20 -DODBOMODULE_BUILD "$root/source/frame/library_entry.cpp"
for source in "$root"/support/windows/*.cpp; do
    check "$source" -std=c++20 -DSUPPORT_DLL_BUILD -DNOMINMAX "$source"
done
exit "$failed"
