#!/usr/bin/env bash
# Format check and clang-tidy over the project's C++ sources.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t sources < <(git ls-files '*.cpp' '*.h')

echo "== format check"
clang-format --dry-run --Werror "${sources[@]}"

echo "== clang-tidy (host build)"
[ -f build/host/compile_commands.json ] || bash Scripts/build.sh
mapfile -t units < <(git ls-files '*.cpp')
printf '%s\n' "${units[@]}" | xargs -P "$(nproc)" -n 8 clang-tidy -p build/host --quiet 2>/dev/null
echo "lint: clean"
