/** @file
  The welcome flow as a SysPrep#### application. The boot manager runs it at
  TPL_APPLICATION once the consoles are up, so it can drive the pages' event
  loops; when it returns, the boot goes on to the Boot#### options.

  Configured by QEMU's demo configuration file when there is one. Setup is
  entered through the Setup-entry event group that the UI driver signals: its
  notification only records the request (an event loop cannot run at
  TPL_CALLBACK), and the firmware's front page is started once the welcome
  flow is over.
**/
#include "BootFlows.h"

#include <FirmwareCommon/BootConfig.h>
#include <FirmwareCommon/LoadOptions.h>
#include <FirmwareCommon/QemuFwCfg.h>
#include <FirmwareCommon/SerialLog.h>
#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/MemoryAllocationLib.h>
}
#include <Library/UefiBootServicesTableLib.h>

//
// MdeModulePkg's UiApp: the front page of EDK II firmware, a Boot#### option of its own.
//
STATIC CONST EFI_GUID mFrontPageFile = {0x462caa21, 0x7614, 0x4503, {0x83, 0x6e, 0x8a, 0xb6, 0xf4, 0x66, 0x23, 0x31}};

STATIC BOOLEAN mSetupRequested = FALSE;

STATIC
VOID EFIAPI
SetupEntryNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  mSetupRequested = TRUE;
}

/**
  Starts the firmware's front page through its boot option.
**/
STATIC
VOID
EnterFrontPage (VOID)
{
  UINT16 Number;

  if (EFI_ERROR (FindBootOptionOfFile (&mFrontPageFile, &Number))) {
    SerialLogLine ("KESTUI-BOOT no front page boot option");
    return;
  }

  SerialLogLine ("KESTUI-BOOT entering the front page");
  StartBootOption (Number);
}

/**
  Entry point (ENTRY_POINT of WelcomeSysPrepApp.inf).

  @retval EFI_SUCCESS  Always: the boot goes on whatever the pages did.
**/
extern "C" EFI_STATUS EFIAPI
WelcomeSysPrepMain (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  BOOT_CONFIG Config;
  EFI_EVENT SetupEntry = nullptr;
  VOID *Text = nullptr;
  UINTN Size = 0;

  if (EFI_ERROR (ReadQemuConfigFile (QEMU_DEMO_CONFIG_FILE, &Text, &Size))) {
    Text = nullptr;
    Size = 0;
  }

  ParseBootConfig ((CONST CHAR8 *)Text, Size, &Config);
  if (Text != nullptr) {
    FreePool (Text);
  }

  //
  // No console text over the pages: the screen belongs to the UI.
  //
  gST->ConOut->ClearScreen (gST->ConOut);
  gST->ConOut->EnableCursor (gST->ConOut, FALSE);
  gBS->CreateEventEx (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, SetupEntryNotify, nullptr, &gSetupEntryEventGroupGuid,
                      &SetupEntry);
  SerialLogLine ("KESTUI-BOOT SysPrep started");
  if (Config.Mode == BootModeFlash) {
    RunFlashFlow (&Config);
  } else {
    RunWelcomeFlow (&Config);
  }

  if (SetupEntry != nullptr) {
    gBS->CloseEvent (SetupEntry);
  }

  if (mSetupRequested) {
    EnterFrontPage ();
  }

  gST->ConOut->EnableCursor (gST->ConOut, TRUE);
  SerialLogLine ("KESTUI-BOOT SysPrep done, the boot goes on");
  return EFI_SUCCESS;
}
