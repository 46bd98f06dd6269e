/** @file
  The boot menu, diagnostics and Setup screens of the platform stand-in.

  The boot menu lists the firmware's real boot options; handing over to the
  firmware (DemoConfiguration.h) it boots the chosen one, and Setup is left to
  the boot flow, which starts the firmware's front page. Each screen waits for a key for a while (a person at the keyboard, or the
  demo's script) and then gives control back, so an unattended boot never
  hangs on one of them.
**/
#include "ServiceScreens.h"

#include "DemoConfiguration.h"
#include "KeyWait.h"

#include <FirmwareCommon/LoadOptions.h>
#include <FirmwareCommon/SerialLog.h>
#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/PrintLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <StandIns/StandInCalls.h>
#include <StandIns/StandInRender.h>

#define SCREEN_WAIT_MILLISECONDS 8000
#define MAX_MENU_ENTRIES 8
#define MENU_ENTRY_LENGTH 48

STATIC constexpr auto mBootMenuTitle = CompileTime::MakeWideString (u"Boot Menu");
STATIC constexpr auto mDiagnosticsTitle = CompileTime::MakeWideString (u"Diagnostics");
STATIC constexpr auto mSetupTitle = CompileTime::MakeWideString (u"Setup");
STATIC constexpr auto mNoBootOption = CompileTime::MakeWideString (u"No boot option is configured");
STATIC constexpr auto mDiagnosticsLine1 = CompileTime::MakeWideString (u"Platform diagnostics are starting.");
STATIC constexpr auto mDiagnosticsLine2 =
  CompileTime::MakeWideString (u"Memory, storage and input devices will be tested.");
STATIC constexpr auto mSetupLine1 = CompileTime::MakeWideString (u"Administrator access granted.");
STATIC constexpr auto mSetupLine3 = CompileTime::MakeWideString (u"Press Esc to leave Setup.");

STATIC CHAR16 mMenuText[MAX_MENU_ENTRIES][MENU_ENTRY_LENGTH];
STATIC EFI_EVENT mSetupEntryEvent = nullptr;

/**
  Fills the menu with the boot options of BootOrder that a person may choose:
  active and not hidden.
  @return how many there are (one line saying so when there is none).
**/
STATIC
UINTN
GatherBootOptions (OUT CONST CHAR16 **Lines, OUT UINT16 *Numbers)
{
  UINT16 Order[MAX_MENU_ENTRIES * 4];
  UINTN OrderCount = ReadBootOrder (Order, ARRAY_SIZE (Order));
  UINTN Count = 0;

  for (UINTN Index = 0; (Index < OrderCount) && (Count < MAX_MENU_ENTRIES); Index++) {
    LOAD_OPTION Option;
    UINTN Length = 0;

    if (EFI_ERROR (ReadBootOption (Order[Index], &Option))) {
      continue;
    }

    if (((Option.Attributes & LOAD_OPTION_ACTIVE) != 0) && ((Option.Attributes & LOAD_OPTION_HIDDEN) == 0)) {
      while ((Option.Description[Length] != 0) && (Length + 1 < MENU_ENTRY_LENGTH)) {
        mMenuText[Count][Length] = Option.Description[Length];
        Length++;
      }

      mMenuText[Count][Length] = 0;
      if (Length != 0) {
        Lines[Count] = mMenuText[Count];
        Numbers[Count] = Order[Index];
        Count++;
      }
    }

    FreeLoadOption (&Option);
  }

  if (Count == 0) {
    Lines[Count++] = mNoBootOption.Text;
  }

  return Count;
}

/**
  The one-time boot menu: arrows move, Enter chooses, Esc (or the wait) leaves.
  Handing over to the firmware, the chosen option is booted here; otherwise
  the choice is only reported.
**/
STATIC
VOID
RunBootMenuScreen (VOID)
{
  CONST CHAR16 *Lines[MAX_MENU_ENTRIES];
  UINT16 Numbers[MAX_MENU_ENTRIES] = {};
  UINTN Count = GatherBootOptions (Lines, Numbers);
  UINTN Selected = 0;
  EFI_INPUT_KEY Key;

  for (;;) {
    StandInDrawScreen ("bootmenu", mBootMenuTitle.Text, Lines, Count, Selected);
    if (!WaitForKey (SCREEN_WAIT_MILLISECONDS, &Key) || (Key.ScanCode == SCAN_ESC)) {
      SerialLogLine ("KESTUI-PLATFORM boot menu left");
      return;
    }

    if (Key.UnicodeChar == CHAR_CARRIAGE_RETURN) {
      SerialLogLine ("KESTUI-PLATFORM boot menu chose %d (Boot%04x)", (INT32)Selected, (UINT32)Numbers[Selected]);
      if ((Lines[Selected] != mNoBootOption.Text) && DemoHandsOverToFirmware ()) {
        StartBootOption (Numbers[Selected]);
      }

      return;
    }

    if ((Key.ScanCode == SCAN_UP) && (Selected > 0)) {
      Selected--;
    } else if ((Key.ScanCode == SCAN_DOWN) && (Selected + 1 < Count)) {
      Selected++;
    }
  }
}

STATIC
VOID
ShowScreenUntilKey (IN CONST CHAR8 *Name, IN CONST CHAR16 *Title, IN CONST CHAR16 *CONST *Lines, IN UINTN Count)
{
  EFI_INPUT_KEY Key;

  StandInDrawScreen (Name, Title, Lines, Count, MAX_UINTN);
  WaitForKey (SCREEN_WAIT_MILLISECONDS, &Key);
  SerialLogLine ("KESTUI-PLATFORM %a left", Name);
}

STATIC
VOID EFIAPI
ObserveStandInCall (IN VOID *Context,
                    IN STAND_IN_OPERATION Operation,
                    IN CONST UINTN *Arguments,
                    IN UINTN ArgumentCount)
{
  STATIC CONST CHAR16 *CONST DiagnosticsLines[] = {mDiagnosticsLine1.Text, mDiagnosticsLine2.Text};

  (VOID) Context;
  (VOID) Arguments;
  (VOID) ArgumentCount;
  if (Operation == StandInOpRunBootMenu) {
    RunBootMenuScreen ();
  } else if (Operation == StandInOpStartDiagnostics) {
    ShowScreenUntilKey ("diagnostics", mDiagnosticsTitle.Text, DiagnosticsLines, ARRAY_SIZE (DiagnosticsLines));
  }
}

STATIC
VOID EFIAPI
SetupEntryNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  CHAR16 Firmware[MENU_ENTRY_LENGTH];
  CONST CHAR16 *Lines[3];

  (VOID) Event;
  (VOID) Context;

  //
  // Handing over to the firmware, the boot flow starts the firmware's own
  // front page once the welcome flow is over (a notification cannot run it).
  //
  if (DemoHandsOverToFirmware ()) {
    SerialLogLine ("KESTUI-PLATFORM setup entry left to the firmware's front page");
    return;
  }

  UnicodeSPrint (Firmware, sizeof (Firmware), CompileTime::MakeWideString (u"Firmware: %s, revision %x").Text,
                 (gST->FirmwareVendor != nullptr) ? gST->FirmwareVendor : CompileTime::MakeWideString (u"?").Text,
                 gST->FirmwareRevision);
  Lines[0] = mSetupLine1.Text;
  Lines[1] = Firmware;
  Lines[2] = mSetupLine3.Text;
  ShowScreenUntilKey ("setup", mSetupTitle.Text, Lines, ARRAY_SIZE (Lines));
}

EFI_STATUS
WatchServiceScreens (VOID)
{
  StandInSetCallObserver (ObserveStandInCall, nullptr);
  return gBS->CreateEventEx (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, SetupEntryNotify, nullptr, &gSetupEntryEventGroupGuid,
                             &mSetupEntryEvent);
}
