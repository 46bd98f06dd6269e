#!/usr/bin/env bash
# Runs every test: the host tests (clang++ and g++ builds, under AddressSanitizer
# and UndefinedBehaviorSanitizer), the checks of the firmware image, and the
# real-firmware tests in OVMF under QEMU: Debian's OVMF with the clang-built
# images, and OVMF built from Debian's edk2 source with KestUi in its flash
# (Scripts/edk2-build.sh, once per run). When EDK II cannot be fetched or
# built, the host tests still run, and the command fails at the end naming the
# step that failed.
set -euo pipefail
cd "$(dirname "$0")/.."

bash Scripts/install-deps.sh
bash Scripts/build.sh

failures=()
echo "== EDK II: Debian's edk2 source, KestUiPkg and OVMF with KestUi"
if ! bash Scripts/edk2-build.sh; then
  failures+=("EDK II build: $(cat build/edk2/FAILED 2>/dev/null || echo 'see the output above')")
fi

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

echo "== host tests (clang++), firmware image checks and the OVMF tests"
ctest --test-dir build/host --output-on-failure -j "$(nproc)" || failures+=("ctest in build/host")
echo "== host tests (g++)"
ctest --test-dir build/gcc --output-on-failure -j "$(nproc)" -LE ovmf || failures+=("ctest in build/gcc")

if [ ${#failures[@]} -ne 0 ]; then
  printf 'test: FAILED: %s\n' "${failures[@]}" >&2
  exit 1
fi
echo "test: all passed"
