#!/usr/bin/env bash
# The main job: builds OVMF from Debian's edk2 source with KestUi in its flash
# (Scripts/edk2-build.sh: the UI driver, the demo platform's stand-in driver
# and its SysPrep welcome flow in the DXE firmware volume), boots it under QEMU
# and plays the demo scenarios with real keys. Screenshots and an index page
# go to out/demo/ (open out/demo/index.html).
#   demo.sh                 all scenarios in the firmware with KestUi in its flash
#   demo.sh --quick         the quicker mode: Debian's OVMF loads the clang-built
#                           images from a disk (no EDK II build)
#   demo.sh --interactive   a QEMU window to press the keys yourself (either mode)
set -euo pipefail
cd "$(dirname "$0")/.."

firmware=edk2
if [ "${1:-}" = "--quick" ]; then
  firmware=debian
  shift
fi

bash Scripts/install-deps.sh
BUILD_TREES=build/efi bash Scripts/build.sh
bash Scripts/check-efi-image.sh build/efi/Drivers/UserInterface/UserInterface.efi
if [ "$firmware" = edk2 ]; then
  bash Scripts/edk2-build.sh
fi
exec python3 Scripts/demo.py --firmware "$firmware" --build-dir build/efi --out out/demo "$@"
