#!/usr/bin/env bash
# hardening_test.sh LIBRARY...: checks in the built libraries that the compiler and the linker hardened them.
set -euo pipefail
export LC_ALL=C
objdump=${OBJDUMP:-objdump}
failed=0
# expect WHAT PATTERN: fails the test if no line of standard input matches the pattern.
expect() { grep -qE -e "$2" || { echo "$library: no $1" >&2; failed=1; }; }
for library; do
    if [[ $library == *.dll ]]; then
        characteristics=$("$objdump" -p "$library" | sed -n '/^DllCharacteristics/,/^Size/p')
        for name in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
            expect "$name" "^[[:space:]]*$name" <<< "$characteristics"
        done
        continue
    fi
    elf=$(readelf --wide --file-header --segments --dynamic --dyn-syms --string-dump .comment "$library")
    expect "read-only relocations" GNU_RELRO <<< "$elf"
    expect "non-executable stack" 'GNU_STACK .* RW ' <<< "$elf"
    expect "binding at load time" BIND_NOW <<< "$elf"
    expect "stack protector" __stack_chk_fail <<< "$elf"
    if [[ $elf != *clang* ]]; then
        # The stack frames are too small for visible probes, but g++ writes its options into the debug information.
        expect "stack clash protection" -fstack-clash-protection \
            < <(readelf --debug-dump=info --dwarf-depth=1 "$library")
        # Only the support library calls functions that can be fortified; clang does not fortify this one.
        if [[ $library == *support_dll* ]]; then expect "fortified function" __fprintf_chk <<< "$elf"; fi
    fi
    # Without the protection, only the compiler's start-up files have a few of these instructions.
    if [[ $elf == *X86-64* && $("$objdump" --disassemble "$library" | grep -c endbr64) -lt 50 ]]; then
        echo "$library: no control-flow protection" >&2
        failed=1
    fi
done
exit "$failed"
