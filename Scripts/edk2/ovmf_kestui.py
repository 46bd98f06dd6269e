#!/usr/bin/env python3
"""Writes OVMF's X64 platform description with KestUi in its flash, as copies beside the originals.

  ovmf_kestui.py EDK2_SOURCE_TREE

reads OvmfPkg/OvmfPkgX64.dsc and .fdf of the tree and writes OvmfPkg/OvmfPkgX64KestUi.dsc and .fdf:
- the copies build into Build/OvmfKestUiX64 and use each other;
- the DSC maps KestUi's library classes and lists its modules in [Components], the FDF puts them
  into the DXE firmware volume next to the front page (UiApp);
- with -D KESTUI_UI_BINARY=TRUE the UI driver comes from the prebuilt image of
  KestUiBinary/UserInterfaceBinary.inf instead of its source INF; OVMF's FDF has no rule for a binary
  DXE driver, so the copy gets one;
- Debian's edk2 makes the Shell use SecureBootVariableLib, which OVMF maps only with Secure Boot:
  the copy maps it in the other branch as well.
Exits non-zero with a message when a line it edits is not where it expects it.
"""
import os
import sys

SOURCE_INF = "KestUiPkg/Drivers/UserInterface/UserInterface.inf"
BINARY_INF = "KestUiBinary/UserInterfaceBinary.inf"
PLATFORM_INFS = ["KestUiPkg/Platform/StandInDriver/KestPlatform.inf",
                 "KestUiPkg/Platform/BootFlowApp/SysPrepRegistrationDxe.inf",
                 "KestUiPkg/Platform/BootFlowApp/WelcomeSysPrepApp.inf"]
LIBRARY_CLASSES = ["FileMgrLib|KestUiPkg/Library/FileMgrLib/FileMgrLib.inf",
                   "TrackedAllocationLib|KestUiPkg/Library/TrackedAllocationLib/TrackedAllocationLib.inf",
                   "PrerequisiteWaitLib|KestUiPkg/Library/PrerequisiteWaitLib/PrerequisiteWaitLib.inf",
                   "ModuleInfoLib|KestUiPkg/Library/ModuleInfoLib/ModuleInfoLib.inf",
                   "TscTimerLib|KestUiPkg/Library/TscTimerLib/TscTimerLib.inf",
                   "StandInsLib|KestUiPkg/Platform/StandIns/StandInsLib.inf",
                   "FirmwareCommonLib|KestUiPkg/Platform/FirmwareCommon/FirmwareCommonLib.inf"]


BINARY_DXE_DRIVER_RULE = """
# KestUi: a prebuilt DXE driver, its image and its dependency expression
[Rule.Common.DXE_DRIVER.BINARY]
  FILE DRIVER = $(NAMED_GUID) {
    DXE_DEPEX DXE_DEPEX Optional      |.depex
    PE32      PE32                    |.efi
    UI        STRING="$(MODULE_NAME)" Optional
    VERSION   STRING="$(INF_VERSION)" Optional BUILD_NUM=$(BUILD_NUMBER)
  }
"""


def replace_once(text, old, new, what):
    if text.count(old) != 1:
        sys.exit(f"ovmf_kestui.py: {what}: expected one '{old.strip()}' in OVMF's files, found {text.count(old)}")
    return text.replace(old, new)


def ui_driver_lines(prefix):
    return (f"!if $(KESTUI_UI_BINARY) == TRUE\n{prefix}{BINARY_INF}\n!else\n{prefix}{SOURCE_INF}\n!endif\n")


def main():
    tree = sys.argv[1]
    dsc_path = os.path.join(tree, "OvmfPkg", "OvmfPkgX64.dsc")
    fdf_path = os.path.join(tree, "OvmfPkg", "OvmfPkgX64.fdf")
    with open(dsc_path) as file:
        dsc = file.read()
    with open(fdf_path) as file:
        fdf = file.read()

    dsc = replace_once(dsc, "OUTPUT_DIRECTORY               = Build/OvmfX64",
                       "OUTPUT_DIRECTORY               = Build/OvmfKestUiX64", "output directory")
    dsc = replace_once(dsc, "FLASH_DEFINITION               = OvmfPkg/OvmfPkgX64.fdf",
                       "FLASH_DEFINITION               = OvmfPkg/OvmfPkgX64KestUi.fdf", "flash definition")
    dsc = replace_once(dsc, "  DEFINE BUILD_SHELL             = TRUE\n",
                       "  DEFINE BUILD_SHELL             = TRUE\n  DEFINE KESTUI_UI_BINARY        = FALSE\n",
                       "KestUi's define")
    null_auth = "  AuthVariableLib|MdeModulePkg/Library/AuthVariableLibNull/AuthVariableLibNull.inf\n!endif\n"
    dsc = replace_once(dsc, null_auth, null_auth.replace(
        "!endif\n",
        "  SecureBootVariableLib|SecurityPkg/Library/SecureBootVariableLib/SecureBootVariableLib.inf\n"
        "  PlatformPKProtectionLib|SecurityPkg/Library/PlatformPKProtectionLibVarPolicy/"
        "PlatformPKProtectionLibVarPolicy.inf\n!endif\n"), "Shell's SecureBootVariableLib")
    dsc += ("\n#\n# KestUi: the UI driver and the demo platform around it (Scripts/edk2/ovmf_kestui.py)\n#\n"
            "[LibraryClasses]\n" + "".join(f"  {line}\n" for line in LIBRARY_CLASSES) +
            "\n[Components]\n" + ui_driver_lines("  ") + "".join(f"  {inf}\n" for inf in PLATFORM_INFS))

    front_page = "INF  MdeModulePkg/Application/UiApp/UiApp.inf\n"
    fdf = replace_once(fdf, front_page, front_page + "\n# KestUi: the UI driver and the demo platform around it\n" +
                       ui_driver_lines("INF  ") + "".join(f"INF  {inf}\n" for inf in PLATFORM_INFS),
                       "front page in the DXE volume")

    fdf += BINARY_DXE_DRIVER_RULE

    with open(os.path.join(tree, "OvmfPkg", "OvmfPkgX64KestUi.dsc"), "w") as file:
        file.write(dsc)
    with open(os.path.join(tree, "OvmfPkg", "OvmfPkgX64KestUi.fdf"), "w") as file:
        file.write(fdf)


if __name__ == "__main__":
    main()
