#!/usr/bin/env bash
# gdb_test.sh COMPILER [BUILD_FOLDER]: compares what gdb shows of a host, inside the library and in the host, with the text below.
# Without BUILD_FOLDER, the installed Debian packages are tested. With it, the build is installed in a temporary folder, stripped, with
# the debug symbols in separate files.
set -euo pipefail
compiler=$1
build=${2:-}
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

cat > "$work/host.cpp" << 'EOF'
#include <odbomodule/memory_cube.h>
void stop() {}
struct Report {
    int number = 42;
    KelpString name = "north";
    int next = 7;
};
void inspect()
{
    Report report;
    using namespace memory_cube;
    using namespace memory_cube::conditions;
    Condition const condition = (value(mdx("a")) + 2) * mdx("b") >= 10 && !is_null(current());
    stop();
}
int main()
{
    inspect();
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", true));
    KelpString const city = KelpString::fromUTF8("Z\xC3\xBCrich");
    RefPtr<MDXSet> none;
    RefPtr set(generator->GenerateSet("s"));
    set->TakeExtremity(MDXSet::Top, MDXSet::Count, "10", nullptr);
    RefPtr const field(generator->GenerateField("m"));
    RefPtr value(generator->GenerateValue(5));
    RefPtr tuple(generator->GenerateTuple());
    tuple->AddField(field.get())->AddField(field.get());
    RefPtr property(generator->GenerateMemberProperty("[Store].[City]", "Manager"));
    RefPtr select(static_cast<MDXSelectQuery *>(generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
    select->AddMemberFormula(field.get(), value.get(), 1, {}, {});
    select->AddAxisSpecification(0, set.get(), {}, MDXSelectQuery::NES_NON_EMPTY);
    select->AddSlicerSpecification(field.get());
    select->AddCellProperty("VALUE");
    RefPtr create(static_cast<MDXCreateQuery *>(generator->GenerateQuery(MDXQuery::QT_CREATE, nullptr)));
    create->AddSetFormula("[Team]", set.get());
    RefPtr drop(static_cast<MDXDropQuery *>(generator->GenerateQuery(MDXQuery::QT_DROP, nullptr)));
    drop->AddSetToDrop("[Team]");
    try {
        generator->GenerateQuery(MDXQuery::QueryType(9), nullptr);
    } catch (MDXError const & error) {
        stop();
    }
}
EOF
# shellcheck disable=SC2046 # the flags are words
"$compiler" -std=c++17 -g "$work/host.cpp" -o "$work/host" $(pkg-config --cflags --libs odbomodule) ${rpath:+"$rpath"}

cat > "$work/commands" << 'EOF'
set breakpoint pending on
break MDXSet::TakeExtremity
break stop
run
up
info locals
continue
print *this
print amount
continue
up
print error
print city
print none
print set
print field
print value
print tuple
print property
print select
print create
print drop
set print elements 4
print set
EOF
gdb -nx -batch "${options[@]}" -x "$work/commands" "$work/host" > "$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }

# The locals, the place of the first breakpoint, which needs the library's debug symbols, and the printed values.
sed -nE 's/^Breakpoint 1, (.*) \(.* at .*(source\/sets\/.*):[0-9]+$/\1 in \2/p; /^(report|condition) = /p; s/^\$[0-9]+ = //p' \
    "$work/log" > "$work/shown"
if ! diff -u - "$work/shown" << 'EOF'; then
report = {number = 42, name = u"north", next = 7}
condition = memory_cube::Condition "( a + ( 2 ) ) * ( b ) >= 10 AND NOT( CURRENT = NULL )"
MDXSet::TakeExtremity in source/sets/set_filters.cpp
MSOLAP7Set "s", 1 holder
u"10"
MDXError MDX_ERR_BAD_ENUM: 9, QueryType
u"Zürich"
null
MSOLAP7Set "TOPCOUNT( s, 10 ) ", 3 holders
MSOLAP7Field "m", 5 holders
MSOLAP7Value "5", 2 holders
MSOLAP7Tuple "( m, m ) ", 1 holder
MSOLAP7MemberProperty "[Store].[City].[Manager]", 1 holder
MSOLAP7SelectQuery on [Sales], 1 holder = {formula 0 = MEMBER m AS 5, axis 0 = NON EMPTY TOPCOUNT( s, 10 )  ON AXIS(0), cell property 0 = u"VALUE", slicer = MDXTuple "m", 1 holder}
MSOLAP7CreateQuery on [Sales], 1 holder = {formula 0 = SET [Team] AS TOPCOUNT( s, 10 ) }
MSOLAP7DropQuery on [Sales], 1 holder = {name 0 = u"[Team]"}
MSOLAP7Set "TOPC...", 3 holders
EOF
    echo "gdb printed the lines with +. This is all of its output:" >&2
    cat "$work/log" >&2
    exit 1
fi
