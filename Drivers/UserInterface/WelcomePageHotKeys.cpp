/** @file
  The welcome page's hot keys: the list of watched keys, their registration
  with the console, and the notification that records the chosen action.

  The notification only records: the action itself runs later, from the
  page's event handler or when the platform finishes the welcome page.
**/
#include "UiFrameworkCalls.h"
#include "UiResources.h"
#include "UserInterface.h"
#include "WelcomePage.h"

#include <Guid/KestUiGuids.h>
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

typedef struct {
  UINT16 ScanCode;
  CHAR16 UnicodeChar;
  UINTN Action;
  VOID *NotifyHandle; ///< from RegisterKeyNotify; null until registered
} HOT_KEY_ENTRY;

#define HOT_KEY_COUNT 86

typedef struct {
  HOT_KEY_ENTRY Entry[HOT_KEY_COUNT + 1]; ///< ended by a record with no scan code and no character
} HOT_KEY_LIST;

/**
  The watched keys, in registration order: the three hot keys, the cursor and
  paging keys and Escape, digits and lower-case letters, backspace, tab and
  carriage return, then space and the ASCII punctuation marks.
**/
constexpr HOT_KEY_LIST
MakeHotKeyList ()
{
  HOT_KEY_LIST List = {};
  UINTN Count = 0;

  auto AddScan = [&List, &Count] (UINT16 ScanCode, UINTN Action) {
    List.Entry[Count++] = {ScanCode, 0, Action, nullptr};
  };
  auto AddChars = [&List, &Count] (CHAR16 First, CHAR16 Last) {
    for (UINT32 Character = First; Character <= Last; Character++) {
      List.Entry[Count++] = {SCAN_NULL, (CHAR16)Character, HOT_KEY_ACTION_NONE, nullptr};
    }
  };

  AddScan (SCAN_F2, HOT_KEY_ACTION_SETUP);
  AddScan (SCAN_F9, HOT_KEY_ACTION_DIAGNOSTICS);
  AddScan (SCAN_F12, HOT_KEY_ACTION_BOOT_MENU);
  for (UINT16 ScanCode = SCAN_UP; ScanCode <= SCAN_PAGE_DOWN; ScanCode++) {
    AddScan (ScanCode, HOT_KEY_ACTION_NONE);
  }

  AddScan (SCAN_ESC, HOT_KEY_ACTION_NONE);
  AddChars ('0', '9');
  AddChars ('a', 'z');
  AddChars (CHAR_BACKSPACE, CHAR_TAB);
  AddChars (CHAR_CARRIAGE_RETURN, CHAR_CARRIAGE_RETURN);
  AddChars (0x20, 0x2F);
  AddChars (0x3A, 0x40);
  AddChars (0x5B, 0x60);
  AddChars (0x7B, 0x7E);
  return List;
}

constexpr UINTN
CountHotKeys (const HOT_KEY_LIST &List)
{
  UINTN Count = 0;

  while ((List.Entry[Count].ScanCode != SCAN_NULL) || (List.Entry[Count].UnicodeChar != CHAR_NULL)) {
    Count++;
  }

  return Count;
}

STATIC constexpr HOT_KEY_LIST mHotKeyTemplate = MakeHotKeyList ();

STATIC_ASSERT (CountHotKeys (mHotKeyTemplate) == HOT_KEY_COUNT, "86 watched keys, then the end record");
STATIC_ASSERT (mHotKeyTemplate.Entry[0].ScanCode == SCAN_F2, "F2 first");
STATIC_ASSERT (mHotKeyTemplate.Entry[13].ScanCode == SCAN_ESC, "Escape after the cursor keys");
STATIC_ASSERT (mHotKeyTemplate.Entry[14].UnicodeChar == '0', "digits after Escape");
STATIC_ASSERT (mHotKeyTemplate.Entry[50].UnicodeChar == CHAR_BACKSPACE, "control characters after the letters");
STATIC_ASSERT (mHotKeyTemplate.Entry[85].UnicodeChar == 0x7E, "tilde last");

//
// Written at run time (the notify handles), so a mutable copy of the template.
//
STATIC HOT_KEY_LIST mHotKeys = mHotKeyTemplate;
STATIC EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *mTextInputEx = nullptr;

STATIC constexpr auto mAbortFlagName = CompileTime::MakeWideString (u"KestDiagAbortFlag");

EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *
GetTextInputEx (VOID)
{
  if (mTextInputEx == nullptr) {
    if (EFI_ERROR (
          gBS->HandleProtocol (gST->ConsoleInHandle, &gEfiSimpleTextInputExProtocolGuid, (VOID **)&mTextInputEx))) {
      mTextInputEx = nullptr;
    }
  }

  return mTextInputEx;
}

EFI_STATUS
RegisterHotKeys (VOID)
{
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *TextInputEx;
  EFI_KEY_DATA KeyData;
  EFI_STATUS Status = EFI_SUCCESS;

  TextInputEx = GetTextInputEx ();
  if ((TextInputEx == nullptr) || (TextInputEx->RegisterKeyNotify == nullptr)) {
    return EFI_UNSUPPORTED;
  }

  for (UINTN Index = 0; Index < HOT_KEY_COUNT; Index++) {
    KeyData.Key.ScanCode = mHotKeys.Entry[Index].ScanCode;
    KeyData.Key.UnicodeChar = mHotKeys.Entry[Index].UnicodeChar;
    KeyData.KeyState.KeyShiftState = EFI_SHIFT_STATE_VALID;
    KeyData.KeyState.KeyToggleState = EFI_TOGGLE_STATE_VALID;
    Status = TextInputEx->RegisterKeyNotify (TextInputEx, &KeyData, HotKeyNotify, &mHotKeys.Entry[Index].NotifyHandle);
  }

  return Status;
}

VOID
UnregisterHotKeys (VOID)
{
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *TextInputEx;

  TextInputEx = GetTextInputEx ();
  if ((TextInputEx == nullptr) || (TextInputEx->UnregisterKeyNotify == nullptr)) {
    return;
  }

  //
  // A handle is forgotten once it is unregistered, so a second exit does not
  // hand the console stale handles.
  //
  for (UINTN Index = 0; Index < HOT_KEY_COUNT; Index++) {
    if (mHotKeys.Entry[Index].NotifyHandle != nullptr) {
      TextInputEx->UnregisterKeyNotify (TextInputEx, mHotKeys.Entry[Index].NotifyHandle);
      mHotKeys.Entry[Index].NotifyHandle = nullptr;
    }
  }
}

VOID
ResetHotKeyState (VOID)
{
  mHotKeys = mHotKeyTemplate;
  mTextInputEx = nullptr;
}

EFI_STATUS
EFIAPI
HotKeyNotify (IN EFI_KEY_DATA *KeyData)
{
  EFI_STRING_ID Message;
  UINT8 AbortFlag = 1;

  if (KeyData == nullptr) {
    return EFI_SUCCESS;
  }

  switch (KeyData->Key.ScanCode) {
    case SCAN_F2:
      mHotKeyAction = HOT_KEY_ACTION_SETUP;
      Message = STR_ENTER_SETUP_MESSAGE;
      break;
    case SCAN_F9:
      mHotKeyAction = HOT_KEY_ACTION_DIAGNOSTICS;
      Message = STR_LAUNCH_DIAGNOSTICS_MESSAGE;
      break;
    case SCAN_F12:
      mHotKeyAction = HOT_KEY_ACTION_BOOT_MENU;
      Message = STR_BOOT_MENU_MESSAGE;
      break;
    default:
      Message = STR_BOOT_OPTIONS_HINT;
      break;
  }

  if (mHotKeyAction != HOT_KEY_ACTION_NONE) {
    gRT->SetVariable (const_cast<CHAR16 *> (mAbortFlagName.Text), &gKestDiagAbortFlagGuid,
                      EFI_VARIABLE_BOOTSERVICE_ACCESS, sizeof (AbortFlag), &AbortFlag);
    mActionPending = TRUE;
  }

  UiSetData (mWelcomePage, UI_PAGE_CONTAINER, mMessageControl, UI_DATA_TEXT, 0, (UINTN)gHiiHandle, Message);
  ShowWelcomeProgressBar ();
  return EFI_SUCCESS;
}
