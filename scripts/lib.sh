# Shared by the scripts beside it; sourced, not run.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}
export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}

say() { printf '%s\n' "== $*" >&2; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# need PROBE PACKAGE ...: installs the packages whose probe finds nothing. A probe is a command, or a file with
# a slash in its name, in which a pattern may stand.
need() {
    local missing=()
    while (($# > 0)); do
        case $1 in
        */*) compgen -G "$1" > /dev/null || missing+=("$2") ;;
        *) command -v "$1" > /dev/null || missing+=("$2") ;;
        esac
        shift 2
    done
    ((${#missing[@]} == 0)) && return
    local as_root=()
    if [[ $(id -u) != 0 ]]; then
        as_root=(sudo -n)
        "${as_root[@]}" true 2> /dev/null || fail "Please have these packages installed first: ${missing[*]}
(this user may not install any; an administrator would run: apt-get install ${missing[*]})"
    fi
    command -v apt-get > /dev/null || fail "Please install what these Debian packages hold: ${missing[*]}"
    say "installing ${missing[*]}"
    local log
    log=$(mktemp)
    {
        "${as_root[@]}" apt-get update && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y --no-install-recommends "${missing[@]}"
    } > "$log" 2>&1 < /dev/null || { cat "$log" >&2; fail "The packages could not be installed."; }
    rm -f "$log"
}

need_build_tools() { need g++ g++ cmake cmake ninja ninja-build "$@"; }
need_test_tools() {
    need_build_tools '/usr/include/gtest/gtest.h' libgtest-dev '/usr/include/gmock/gmock.h' libgmock-dev \
        nm binutils pkg-config pkg-config "$@"
}

# Where the build NAME goes: into the tree, or for a user who may not write there into a folder of his own.
build_dir() {
    local base
    for base in "$root/build" "${XDG_CACHE_HOME:-${HOME:-/nonexistent}/.cache}/odbomodule" \
        "${TMPDIR:-/tmp}/odbomodule-$(id -u)"; do
        if mkdir -p "$base" 2> /dev/null && [[ -w $base && (-O $base || $base == "$root"/*) ]]; then
            echo "$base/$1"
            return
        fi
    done
    fail "There is no folder to build in."
}

# build PRESET NAME [TARGET] [OPTION...]: configures and builds, which is quick when nothing changed. What the
# tools say is shown when they fail, or when there is a warning in it.
build() {
    local preset=$1 dir log
    dir=$(build_dir "$2")
    local targets=()
    [[ -n ${3:-} ]] && targets=(--target "$3")
    mkdir -p "$dir"
    log=$dir/build.log
    say "building $2 (log: $log)"
    (
        cd "$root"
        cmake --preset "$preset" -B "$dir" "${@:4}" && cmake --build "$dir" "${targets[@]}"
    ) > "$log" 2>&1 < /dev/null || { cat "$log" >&2; fail "The build of $2 failed."; }
    if grep -q 'warning:' "$log"; then cat "$log" >&2; fi
}
