#!/usr/bin/env bash
# readme_texts_test.sh COMPILER LIBRARY...: each call in the table "Calls and texts" of README.md gives the text beside it.
# The calls are built into a program, with the objects that the README names, and run on fresh ones.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
compiler=$1
shift
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

rows=$(awk -F '` [|] `' '/^## / { inside = $0 == "## Calls and texts" }
    inside && sub(/^[|] `/, "") && sub(/` [|]$/, "") { printf "    row(R\"~(%s)~\", ROW(%s), R\"~(%s)~\");\n", $1, $1, $2 }' "$root/README.md")
[[ $rows ]] || { echo "README.md has no table of calls and texts" >&2; exit 1; }

cat > "$folder/texts.cpp" <<END
#include "examples/memory_cube.h"
#include "odbomodule/odbomodule.h"
#include <iostream>

static bool good = true;

template <class Call>
void row(char const * name, Call call, std::string const & want)
{
    std::unique_ptr<MDXQueryGenerator> const owner(createMSOLAP7QueryGenerator("[Sales]", false));
    MDXQueryGenerator * const generator = owner.get();
    memory_cube::Dimension dimension("Store", "[Store]");
    memory_cube::Hierarchy hierarchy(&dimension, "", "[Store]");
    memory_cube::Calculation europe(&hierarchy, "[Store].[Europe]");
    hierarchy.fCalculations = { { 1, &europe } };
    RefPtr s(generator->GenerateSet("s")), t(generator->GenerateSet("t"));
    RefPtr m(generator->GenerateField("m"));
    RefPtr k(generator->GenerateTuple());
    k->AddField(m.get());
    RefPtr x(generator->GenerateValue("x")), v(generator->GenerateValue("v")), w(generator->GenerateValue("w"));
    auto * const object = call(generator, &hierarchy, s.get(), t.get(), m.get(), k.get(), x.get(), v.get(), w.get());
    if (std::string const have = object->getText().toUTF8(); have != want) {
        good = false;
        std::cout << "README.md: " << name << " gives |" << have << "|, not |" << want << "|\n";
    }
}
#define ROW(...) [](auto generator, auto hierarchy, auto s, auto t, auto m, auto k, auto x, auto v, auto w) { return __VA_ARGS__; }

int main()
{
$rows
    return good ? 0 : 1;
}
END
libraries=()
for library; do
    libraries+=("$library" "-Wl,-rpath,$(dirname "$library")")
done
"$compiler" -std=c++17 -I "$root" "$folder/texts.cpp" "${libraries[@]}" -o "$folder/texts"
"$folder/texts"
