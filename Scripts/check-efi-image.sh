#!/usr/bin/env bash
# Checks that an image is what firmware expects of a boot-service driver:
# PE32+ for x86-64, subsystem 11, an entry point, base relocations, no import
# table, and no compiler-generated initialiser sections (nothing may run
# before _ModuleEntryPoint).
# Usage: check-efi-image.sh IMAGE [SUBSYSTEM_NUMBER]
set -euo pipefail
image=${1:?usage: check-efi-image.sh IMAGE [SUBSYSTEM]}
subsystem=${2:-11}
[ -f "$image" ] || { echo "FAIL: $image does not exist (build the firmware tree first)"; exit 1; }

headers=$(llvm-readobj --file-headers "$image")
sections=$(llvm-readobj --sections "$image" | awk '/Name:/ {print $2}')
imports=$(llvm-readobj --coff-imports "$image" | grep -c 'Import {' || true)
failures=0
check() {
  if eval "$2"; then echo "PASS: $1"; else echo "FAIL: $1"; failures=$((failures + 1)); fi
}

field() { echo "$headers" | awk -v key="$1:" '$1 == key {print $2; exit}'; }

check "PE32+ (magic 0x20B)" '[ "$(field Magic)" = "0x20B" ]'
check "machine x86-64" 'echo "$headers" | grep -q "Machine: IMAGE_FILE_MACHINE_AMD64"'
check "subsystem $subsystem" 'echo "$headers" | grep -qiE "Subsystem: .*\(($subsystem|$(printf "0x%X" "$subsystem"))\)"'
check "entry point set" '[ "$(field AddressOfEntryPoint)" != "0x0" ]'
check "base relocations present" '[ "$(field BaseRelocationTableSize)" != "0x0" ] && [ -n "$(field BaseRelocationTableSize)" ]'
check "no imports" '[ "$imports" -eq 0 ] && [ "$(field ImportTableSize)" = "0x0" ]'
check "no initialiser sections" '! echo "$sections" | grep -qE "^\.(CRT|init_array|ctors|tls)"'
echo "image size: $(stat -c %s "$image") bytes"
exit $failures
