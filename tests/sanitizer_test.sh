#!/usr/bin/env bash
# sanitizer_test.sh COMPILER BUILD_FOLDER: builds a host with the address sanitizer against the installed libraries, which are built without
# it, and expects the lines of the host's source in the reports of a leak and of a use after the last unuse().
set -euo pipefail
compiler=$1
build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat > "$work/host.cpp" << 'EOF'
#include <odbomodule/odbomodule.h>
void leak(MDXQueryGenerator & generator)
{
    for (int i = 0; i < 10; ++i)
        generator.GenerateSet("s")->TakeTail(); // leaked
}
int main(int count, char **)
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", true));
    if (count == 1) {
        leak(*generator);
        return 0;
    }
    MDXSet * const set = generator->GenerateSet("s"); // made
    set->unuse(); // ended
    set->unuse(); // used
}
EOF
run=()
if setarch "$(uname -m)" -R true 2> /dev/null; then run=(setarch "$(uname -m)" -R); fi # some sanitizers need fixed addresses
skip() { echo "skipped: $*"; exit 77; }
echo 'int main() {}' > "$work/empty.cpp"
"$compiler" -fsanitize=address "$work/empty.cpp" -o "$work/empty" || skip "no address sanitizer"
"${run[@]}" "$work/empty" || skip "no address sanitizer"

cmake --install "$build" --prefix "$work/prefix" --strip > "$work/log"
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name odbomodule.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 -g -fsanitize=address "$work/host.cpp" -o "$work/host" $(pkg-config --cflags --libs odbomodule) \
    "-Wl,-rpath,$(pkg-config --variable=libdir odbomodule)"

# expect MARK ARGUMENT...: the host fails with a report that names the line of host.cpp with that comment.
expect() {
    local line
    line=$(grep -n "// $1" "$work/host.cpp" | cut -d: -f1)
    if "${run[@]}" "$work/host" "${@:2}" > "$work/report" 2>&1 || ! grep -q "host\.cpp:$line" "$work/report"; then
        cat "$work/report" >&2
        echo "The report does not name line $line of host.cpp ($1)." >&2
        exit 1
    fi
}
expect leaked
expect made twice
expect ended twice
expect used twice
