#!/usr/bin/env bash
# Configures and builds every tree of the project:
#   build/efi   the firmware images (clang++ and lld-link: UserInterface.efi and the test app)
#   build/host  host tests with clang++ and the sanitizers
#   build/gcc   the same sources with g++ (warnings are errors on both toolchains)
set -euo pipefail
cd "$(dirname "$0")/.."

jobs=$(nproc)
configure() {
  local dir=$1; shift
  if [ ! -f "$dir/build.ninja" ]; then
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug "$@" >/dev/null
  fi
}

configure build/efi -DCMAKE_TOOLCHAIN_FILE=cmake/EfiToolchain.cmake
configure build/host -DCMAKE_CXX_COMPILER=clang++ -DKESTUI_EFI_BUILD_DIR="$PWD/build/efi"
configure build/gcc -DCMAKE_CXX_COMPILER=g++ -DKESTUI_EFI_BUILD_DIR="$PWD/build/efi"

for dir in ${BUILD_TREES:-build/efi build/host build/gcc}; do
  ninja -C "$dir" -j "$jobs" | grep -vE '^\[[0-9]+/[0-9]+\]' || true
  [ "${PIPESTATUS[0]}" -eq 0 ] || exit 1
done
