#!/usr/bin/env bash
# Runs UserInterface.efi in real UEFI firmware (OVMF under QEMU) with the
# firmware-side test app, and prints the app's report. Builds nothing.
# Usage: ovmf-test.sh [EFI_BUILD_DIR] [--timeout SECONDS] [--driver IMAGE] [--out DIR]   (default build/efi)
# Exit status 0 only when every check passed; see Scripts/ovmf-test.py.
set -euo pipefail
exec python3 "$(dirname "$0")/ovmf-test.py" "$@"
