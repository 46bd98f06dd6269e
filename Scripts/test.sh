#!/usr/bin/env bash
# Runs every test: the host tests (clang++ and g++ builds, under AddressSanitizer
# and UndefinedBehaviorSanitizer), the checks of the firmware image, and the
# real-firmware test in OVMF under QEMU.
set -euo pipefail
cd "$(dirname "$0")/.."

bash Scripts/install-deps.sh
bash Scripts/build.sh

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

echo "== host tests (clang++), firmware image checks and the OVMF test"
ctest --test-dir build/host --output-on-failure -j "$(nproc)"
echo "== host tests (g++)"
ctest --test-dir build/gcc --output-on-failure -j "$(nproc)" -LE ovmf
