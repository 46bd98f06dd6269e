/** @file
  The boot menu, diagnostics and Setup screens of the platform stand-in.

  Each screen waits for a key for a while (a person at the keyboard, or the
  demo's script) and then gives control back, so an unattended boot never
  hangs on one of them.
**/
#include "ServiceScreens.h"

#include "KeyWait.h"

#include <FirmwareCommon/SerialLog.h>
#include <Guid/GlobalVariable.h>
#include <Guid/KestUiGuids.h>
#include <Library/BaseMemoryLib.h>
#include <Library/CompileTimeLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <StandIns/StandInCalls.h>
#include <StandIns/StandInRender.h>

#define SCREEN_WAIT_MILLISECONDS 8000
#define MAX_MENU_ENTRIES 8
#define MENU_ENTRY_LENGTH 48
#define LOAD_OPTION_DESCRIPTION_OFFSET 6 ///< UINT32 attributes, UINT16 file path length
#define LOAD_OPTION_MAX_BYTES 1024

STATIC constexpr auto mBootMenuTitle = CompileTime::MakeWideString (u"Boot Menu");
STATIC constexpr auto mDiagnosticsTitle = CompileTime::MakeWideString (u"Diagnostics");
STATIC constexpr auto mSetupTitle = CompileTime::MakeWideString (u"Setup");
STATIC constexpr auto mNoBootOption = CompileTime::MakeWideString (u"No boot option is configured");
STATIC constexpr auto mDiagnosticsLine1 = CompileTime::MakeWideString (u"Platform diagnostics are starting.");
STATIC constexpr auto mDiagnosticsLine2 =
  CompileTime::MakeWideString (u"Memory, storage and input devices will be tested.");
STATIC constexpr auto mSetupLine1 = CompileTime::MakeWideString (u"Administrator access granted.");
STATIC constexpr auto mSetupLine3 = CompileTime::MakeWideString (u"Press Esc to leave Setup.");
STATIC constexpr auto mBootOrderName = CompileTime::MakeWideString (u"BootOrder");

STATIC CHAR16 mMenuText[MAX_MENU_ENTRIES][MENU_ENTRY_LENGTH];
STATIC EFI_EVENT mSetupEntryEvent = nullptr;

/**
  Copies the description of load option Boot####, bounded by the option's size.
  @return TRUE when the option exists and has a description.
**/
STATIC
BOOLEAN
ReadBootOptionDescription (IN UINT16 Number, OUT CHAR16 *Text)
{
  UINT8 Option[LOAD_OPTION_MAX_BYTES];
  CHAR16 Name[16];
  UINTN Size = sizeof (Option);
  UINTN Length = 0;

  UnicodeSPrint (Name, sizeof (Name), CompileTime::MakeWideString (u"Boot%04x").Text, Number);
  if (EFI_ERROR (gRT->GetVariable (Name, &gEfiGlobalVariableGuid, nullptr, &Size, Option)) ||
      (Size < LOAD_OPTION_DESCRIPTION_OFFSET + sizeof (CHAR16))) {
    return FALSE;
  }

  for (UINTN Offset = LOAD_OPTION_DESCRIPTION_OFFSET; (Offset + 1 < Size) && (Length + 1 < MENU_ENTRY_LENGTH);
       Offset += sizeof (CHAR16)) {
    CHAR16 Character = (CHAR16)(Option[Offset] | (Option[Offset + 1] << 8));

    if (Character == 0) {
      break;
    }

    Text[Length++] = Character;
  }

  Text[Length] = 0;
  return Length != 0;
}

/**
  Fills the menu with the descriptions of the boot options in BootOrder.
  @return how many there are.
**/
STATIC
UINTN
GatherBootOptions (OUT CONST CHAR16 **Lines)
{
  UINT16 Order[MAX_MENU_ENTRIES * 4];
  UINTN Size = sizeof (Order);
  UINTN Count = 0;

  if (EFI_ERROR (gRT->GetVariable ((CHAR16 *)mBootOrderName.Text, &gEfiGlobalVariableGuid, nullptr, &Size, Order))) {
    Size = 0;
  }

  for (UINTN Index = 0; (Index < Size / sizeof (UINT16)) && (Count < MAX_MENU_ENTRIES); Index++) {
    if (ReadBootOptionDescription (Order[Index], mMenuText[Count])) {
      Lines[Count] = mMenuText[Count];
      Count++;
    }
  }

  if (Count == 0) {
    Lines[Count++] = mNoBootOption.Text;
  }

  return Count;
}

/**
  The one-time boot menu: arrows move, Enter chooses, Esc (or the wait) leaves.
  The choice is reported; this platform boots nothing itself.
**/
STATIC
VOID
RunBootMenuScreen (VOID)
{
  CONST CHAR16 *Lines[MAX_MENU_ENTRIES];
  UINTN Count = GatherBootOptions (Lines);
  UINTN Selected = 0;
  EFI_INPUT_KEY Key;

  for (;;) {
    StandInDrawScreen ("bootmenu", mBootMenuTitle.Text, Lines, Count, Selected);
    if (!WaitForKey (SCREEN_WAIT_MILLISECONDS, &Key) || (Key.ScanCode == SCAN_ESC)) {
      SerialLogLine ("KESTUI-PLATFORM boot menu left");
      return;
    }

    if (Key.UnicodeChar == CHAR_CARRIAGE_RETURN) {
      SerialLogLine ("KESTUI-PLATFORM boot menu chose %d", (INT32)Selected);
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
