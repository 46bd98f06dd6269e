/** @file
  The boot-flow application: the platform's part in a boot of the demo and
  the end-to-end tests. Booted by OVMF as \EFI\BOOT\BOOTX64.EFI, it reads
  \kestui\demo.cfg, hands the configuration over as variables, loads the
  platform stand-in driver and the UI driver that lie beside it, plays the
  configured flow and powers the machine off.
**/
#include "BootFlows.h"

#include <FirmwareCommon/BootConfig.h>
#include <FirmwareCommon/OwnVolumeFiles.h>
#include <FirmwareCommon/SerialLog.h>
#include <Library/CompileTimeLib.h>
extern "C" {
#include <Library/MemoryAllocationLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

//
// Time for a last screenshot before the power goes off.
//
#define FINAL_HOLD_MICROSECONDS 1500000

STATIC constexpr auto mConfigPath = CompileTime::MakeWideString (u"\\kestui\\demo.cfg");
STATIC constexpr auto mPlatformPath = CompileTime::MakeWideString (u"\\kestui\\KestPlatform.efi");
STATIC constexpr auto mUiDriverPath = CompileTime::MakeWideString (u"\\kestui\\UserInterface.efi");

/**
  Loads and starts a driver image from this application's volume.
**/
STATIC
EFI_STATUS
StartDriver (IN CONST CHAR16 *Path, IN CONST CHAR8 *Name)
{
  EFI_HANDLE Driver = nullptr;
  VOID *Image = nullptr;
  UINTN Size = 0;
  EFI_STATUS Status;

  Status = ReadFileFromOwnVolume (Path, &Image, &Size);
  if (!EFI_ERROR (Status)) {
    Status = gBS->LoadImage (FALSE, gImageHandle, nullptr, Image, Size, &Driver);
    FreePool (Image);
  }

  if (!EFI_ERROR (Status)) {
    Status = gBS->StartImage (Driver, nullptr, nullptr);
  }

  SerialLogLine ("KESTUI-BOOT %a started: %r", Name, Status);
  return Status;
}

extern "C" EFI_STATUS EFIAPI
BootFlowAppMain (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  BOOT_CONFIG Config;
  VOID *Text = nullptr;
  UINTN Size = 0;

  //
  // No console text over the pages: the screen belongs to the UI.
  //
  gST->ConOut->ClearScreen (gST->ConOut);
  gST->ConOut->EnableCursor (gST->ConOut, FALSE);
  if (EFI_ERROR (ReadFileFromOwnVolume (mConfigPath.Text, &Text, &Size))) {
    Text = nullptr;
    Size = 0;
  }

  ParseBootConfig ((CONST CHAR8 *)Text, Size, &Config);
  if (Text != nullptr) {
    FreePool (Text);
  }

  //
  // Loaded from a disk, the platform keeps its boot menu and Setup on its own
  // screens unless the file asks for the firmware's.
  //
  if (Config.HandOver == BootHandOverUnset) {
    Config.HandOver = BootHandOverScreens;
  }

  PublishBootConfig (&Config);
  if (!EFI_ERROR (StartDriver (mPlatformPath.Text, "platform")) &&
      !EFI_ERROR (StartDriver (mUiDriverPath.Text, "UI driver"))) {
    if (Config.Mode == BootModeFlash) {
      RunFlashFlow (&Config);
    } else {
      RunWelcomeFlow (&Config);
    }
  }

  SerialLogLine ("KESTUI-BOOT power off");
  gBS->Stall (FINAL_HOLD_MICROSECONDS);
  gRT->ResetSystem (EfiResetShutdown, EFI_SUCCESS, 0, nullptr);
  return EFI_SUCCESS;
}
