# shellcheck shell=bash
# Functions for the other scripts, which source this file.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}
export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}
export LC_ALL=C.UTF-8 # for cpack and Wine, which read the names of folders by the locale

say() { printf '%s\n' "== $*" >&2; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# need PROBE PACKAGE...: installs each Debian package whose probe finds nothing. A probe is a command, or a pattern
# for a file if there is a slash in it.
need() {
    local packages=() missing=()
    find_missing "$@"
    ((${#missing[@]} == 0)) && return
    install_packages "${packages[@]}"
    find_missing "$@"
    ((${#missing[@]} == 0)) || fail "Still missing after the installation: ${missing[*]}"
}

# Sets `missing` to the probes that find nothing, and `packages` to their packages.
find_missing() {
    missing=() packages=()
    while (($# > 0)); do
        case $1 in
        */*) compgen -G "$1" > /dev/null || { missing+=("$1") && packages+=("$2"); } ;;
        *) command -v "$1" > /dev/null || { missing+=("$1") && packages+=("$2"); } ;;
        esac
        shift 2
    done
}

# install_packages PACKAGE...: installs the packages and keeps no package lists or downloads.
install_packages() {
    command -v apt-get > /dev/null || fail "Missing: ${missing[*]}
Please install the contents of these Debian packages: $*"
    local as_root=()
    if [[ $(id -u) != 0 ]]; then
        as_root=(sudo)
        [[ -t 0 ]] || as_root+=(-n) # there is nobody to type a password
        "${as_root[@]}" true 2> /dev/null || fail "Missing: ${missing[*]}
This user may not install packages. As an administrator, run: apt-get install $*"
    fi
    say "installing $*"
    local work apt status=0
    use_temporary_lists
    apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${apt[@]}")
    { "${apt[@]}" update; "${apt[@]}" install -y --no-install-recommends "$@"; } \
        > "$work/log" 2>&1 < /dev/null || status=$?
    ((status == 0)) || cat "$work/log" >&2
    "${as_root[@]}" rm -rf "$work"
    ((status == 0)) || fail "These packages could not be installed: $*"
}

# unpack_package PACKAGE FOLDER: downloads a Debian package and unpacks it in the folder, without installing it.
unpack_package() {
    local work apt status=0
    use_temporary_lists
    mkdir -p "$2"
    (cd "$work" && { "${apt[@]}" update; "${apt[@]}" download "$1"; } && dpkg -x "$1"_*.deb "$2") \
        > "$work/log" 2>&1 < /dev/null || status=$?
    ((status == 0)) || cat "$work/log" >&2
    rm -rf "$work"
    ((status == 0)) || fail "This package could not be downloaded: $1"
}

# Sets `work` to a temporary folder, and `apt` to a command that keeps package lists and downloads there.
use_temporary_lists() {
    work=$(mktemp -d)
    chmod a+rwx "$work" # apt-get downloads as another user
    mkdir "$work/lists" "$work/archives"
    apt=(apt-get -o DPkg::Lock::Timeout=600 -o Dir::State::Lists="$work/lists" -o Dir::Cache="$work"
        -o Dir::Cache::Archives="$work/archives")
}

need_build_tools() { need g++ g++ cmake cmake ninja ninja-build "$@"; }
need_test_tools() {
    need_build_tools '/usr/include/gtest/gtest.h' libgtest-dev '/usr/include/gmock/gmock.h' libgmock-dev \
        nm binutils pkg-config pkgconf python3 python3 '/usr/include/nlohmann/json.hpp' nlohmann-json3-dev "$@"
}
# Mondrian, an MDX engine, and what tests/engine needs to run it.
need_engine() {
    local java=/usr/share/java
    need python3 python3 javac default-jdk-headless "$java/mondrian.jar" libmondrian-java \
        "$java/hsqldb.jar" libhsqldb-java "$java/commons-collections3.jar" libcommons-collections3-java \
        "$java/commons-io.jar" libcommons-io-java "$java/commons-lang.jar" libcommons-lang-java \
        "$java/slf4j-nop.jar" libslf4j-java
}

# build_dir NAME: makes the folder for a build and prints its path. It is build/NAME or, if that is not writable, a
# folder in the user's cache or the temporary folder, separate for each checkout.
build_dir() {
    local base checkout
    checkout=odbomodule-$(cksum <<< "$root" | cut -d' ' -f1)
    for base in "$root/build" ${HOME:+"${XDG_CACHE_HOME:-$HOME/.cache}/$checkout"} \
        "${TMPDIR:-/tmp}/$checkout-$(id -u)"; do
        if mkdir -p "$base/$1" 2> /dev/null && [[ -w $base/$1 && (-O $base || $base == "$root"/*) ]]; then
            echo "$base/$1"
            return
        fi
    done
    fail "There is no writable folder for the build."
}

# build PRESET NAME [TARGET [OPTION...]]: configures and builds, which is quick if nothing changed. The output goes
# to a log, which is printed if there is an error or a warning. A terminal shows the progress instead.
build() {
    local preset=$1 dir log
    dir=$(build_dir "$2")
    local configure=(cmake --preset "$preset" -B "$dir" "${@:4}") build=(cmake --build "$dir")
    [[ -n ${3:-} ]] && build+=(--target "$3")
    # A checkout that was moved or copied has a build folder that is configured for the old place.
    if [[ -e $dir/CMakeCache.txt ]] && ! { grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$dir/CMakeCache.txt" &&
        grep -qxF "CMAKE_CACHEFILE_DIR:INTERNAL=$dir" "$dir/CMakeCache.txt"; }; then
        configure+=(--fresh)
    fi
    log=$dir/build.log
    say "building $2$([[ -t 2 ]] || echo " (log: $log)")"
    (cd "$root" && "${configure[@]}") > "$log" 2>&1 < /dev/null ||
        { cat "$log" >&2; fail "The build of $2 could not be configured."; }
    if [[ -t 2 ]]; then
        "${build[@]}" >&2 < /dev/null || fail "The build of $2 failed."
    else
        "${build[@]}" >> "$log" 2>&1 < /dev/null || { cat "$log" >&2; fail "The build of $2 failed."; }
    fi
    if grep -q 'warning:' "$log"; then cat "$log" >&2; fi
}

# at_fixed_addresses COMMAND...: runs the command without address randomization. The sanitizers of these compilers
# cannot start at some of the addresses that newer kernels choose.
at_fixed_addresses() {
    if setarch "$(uname -m)" -R true 2> /dev/null; then
        setarch "$(uname -m)" -R "$@"
    else
        "$@"
    fi
}
