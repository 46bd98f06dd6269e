#!/usr/bin/env bash
# Installs what KestUi needs on a Debian 12 machine (as root, or with sudo).
# Packages already present are not fetched again.
set -euo pipefail

PACKAGES=(
  cmake ninja-build g++ clang lld llvm clang-format clang-tidy   # toolchains and checks
  libclang-rt-dev                                                # sanitizer and libFuzzer runtimes
  libgtest-dev googletest libbenchmark-dev libpng-dev            # host tests and benchmarks
  ovmf qemu-system-x86 python3                                   # real-firmware tests and the demo
  dpkg-dev xz-utils make nasm acpica-tools uuid-dev gcc          # EDK II from Debian's edk2 source
)

missing=()
for package in "${PACKAGES[@]}"; do
  dpkg -s "$package" >/dev/null 2>&1 || missing+=("$package")
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi

echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
