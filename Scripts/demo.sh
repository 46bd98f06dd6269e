#!/usr/bin/env bash
# The main job: builds the firmware images (UserInterface.efi, the platform
# stand-in driver and the boot-flow application) and plays the demo scenarios
# in real UEFI firmware (Debian's OVMF under QEMU) with real keys. Screenshots
# and an index page go to out/demo/ (open out/demo/index.html).
#   demo.sh                 all scenarios
#   demo.sh --interactive   a QEMU window to press the keys yourself
set -euo pipefail
cd "$(dirname "$0")/.."

bash Scripts/install-deps.sh
BUILD_TREES=build/efi bash Scripts/build.sh
bash Scripts/check-efi-image.sh build/efi/Drivers/UserInterface/UserInterface.efi
exec python3 Scripts/demo.py --build-dir build/efi --out out/demo "$@"
