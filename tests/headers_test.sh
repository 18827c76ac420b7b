#!/usr/bin/env bash
# headers_test.sh COMPILER FOLDER HEADER...: each public header compiles by itself as C++17 without a warning.
# memory_cube/maker.h, which includes odbomodule.h, defines no macros but the library's and the standard library's.
# On Windows, host/automation.h changes nothing in <windows.h>.
set -euo pipefail
export LC_ALL=C
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
compiler=("$1" -std=c++17 -I "$2" -x c++)
shift 2
(($# > 0)) || { echo "no headers given" >&2; exit 1; }
failed=0

warnings=(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Woverloaded-virtual -Werror)
if ! "${compiler[0]}" --version | grep -q clang; then
    warnings+=(-Weffc++ -Wuseless-cast) # clang does not have these, or gives them another meaning
fi
printf '%s\n' "$@" | xargs -P "$(nproc)" -I '{}' \
    "${compiler[@]}" "${warnings[@]}" -fsyntax-only -include '{}' -include '{}' /dev/null || failed=1

# Prints the names of the macros that the source on standard input defines.
macros() { "${compiler[@]}" -dM -E - | sed -E 's/^#define ([A-Za-z0-9_]+).*/\1/' | sort -u; }
standard=$(grep -rhE --include='*.h' '^#include <[a-z_]+>' "$root/source" "$root/memory_cube" | sort -u | macros)
# Names that begin with "_" are reserved for the compiler and its library.
ours=$(macros <<< '#include <odbomodule/memory_cube/maker.h>' | comm -13 <(printf '%s\n' "$standard") - | grep -v '^_' | xargs)
if [[ $ours != "MDX_API MDX_EXPORT MDX_EXPORTS_BEGIN MDX_EXPORTS_END MDX_IMPORT SUPPORT_API SUPPORT_TYPE" ]]; then
    echo "maker.h defines these macros: $ours" >&2
    failed=1
fi

# Visual Studio warns of a field of a class type in an exported class, unless the class is between two macros.
if grep -rlE --include='*.h' '^class (MDX|SUPPORT)_API' "$root/source" |
    xargs grep -lE '^ +(std::|KelpString|RefPtr<).* f[A-Z]\w*( = .*|\{.*\})?;' |
    xargs grep -LzE 'MDX_EXPORTS_BEGIN.*MDX_EXPORTS_END' | grep .; then
    echo "The headers above export a class outside of MDX_EXPORTS_BEGIN and MDX_EXPORTS_END." >&2
    failed=1
fi

# declarations HEADER...: the preprocessed text and the macros of the headers, sorted, without line markers.
declarations() { printf '#include <%s>\n' "$@" | "${compiler[@]}" -E -dD - | grep -v '^# ' | sort -u; }
if grep -qx _WIN32 <<< "$(macros < /dev/null)"; then
    diff <(declarations windows.h odbomodule/host/automation.h) <(declarations odbomodule/host/automation.h windows.h) ||
        { echo "host/automation.h changes <windows.h> for a host that includes it first." >&2; failed=1; }
fi
exit "$failed"
