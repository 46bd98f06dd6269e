#!/usr/bin/env bash
# The main job: builds UserInterface.efi and runs it in real UEFI firmware
# (Debian's OVMF under QEMU), printing what the firmware-side test app saw.
# Logs and the screenshot go to out/ovmf/.
set -euo pipefail
cd "$(dirname "$0")/.."

bash Scripts/install-deps.sh
BUILD_TREES=build/efi bash Scripts/build.sh
bash Scripts/check-efi-image.sh build/efi/Drivers/UserInterface/UserInterface.efi
bash Scripts/ovmf-test.sh build/efi
