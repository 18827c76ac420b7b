#!/usr/bin/env bash
# hardening_test.sh LIBRARY...: checks in the built libraries that the compiler and the linker hardened them.
set -euo pipefail
export LC_ALL=C
failed=0
# expect WHAT PATTERN: standard input has the pattern.
expect() { grep -qE "$2" || { echo "$library: no $1" >&2; failed=1; }; }
for library; do
    case $library in
    *.dll)
        characteristics=$("${OBJDUMP:-objdump}" -p "$library" | sed -n '/^DllCharacteristics/,/^Size/p')
        for name in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
            expect "$name" "^[[:space:]]*$name" <<< "$characteristics"
        done
        ;;
    *)
        expect "read-only relocations" GNU_RELRO < <(readelf --wide --segments "$library")
        expect "non-executable stack" 'GNU_STACK .* RW ' < <(readelf --wide --segments "$library")
        expect "binding at load time" BIND_NOW < <(readelf --dynamic "$library")
        expect "stack protector" __stack_chk_fail < <(readelf --wide --dyn-syms "$library")
        # Only the support library calls functions that can be fortified. glibc's headers fortify them for g++ only.
        if [[ $library == *support_dll* ]] && ! readelf --string-dump .comment "$library" | grep -q clang; then
            expect "fortified function" __fprintf_chk < <(readelf --wide --dyn-syms "$library")
        fi
        if readelf --file-header "$library" | grep -q X86-64; then
            expect "control-flow protection" endbr64 < <("${OBJDUMP:-objdump}" --disassemble "$library")
        fi
        ;;
    esac
done
exit "$failed"
