/** @file
  The welcome page: its build, progress, refresh, the countdown and the
  closing rules. The hot keys are in WelcomePageHotKeys.cpp, the actions they
  choose in WelcomePageBootActions.cpp.
**/
#include "WelcomePage.h"
#include "PlatformSettings.h"
#include "UICommon.h"
#include "UiFrameworkCalls.h"
#include "UiResources.h"
#include "UserInterface.h"

extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/PrintLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/BootLogo.h>

UINTN gLogoControl = 0;
UINTN gProgressControl = 0;
UINTN gStatusControl = 0;
INT16 mPageCountdown = 0;
UINTN mLastTickValue = 0;

UINTN mWelcomePage = 0;
UINTN mTextControl = 0;
UINTN mMessageControl = 0;
UINTN mWelcomeLogoImage = 0;
UINTN mHotKeyAction = HOT_KEY_ACTION_NONE;
BOOLEAN mActionPending = FALSE;
BOOLEAN mDiagnosticsAtBoot = FALSE;

STATIC BOOLEAN mProgressShown = FALSE;
STATIC UINTN mProgressValue = 0;
STATIC BOOLEAN mBootLogoPublished = FALSE;
STATIC CHAR16 mWelcomeText[WELCOME_TEXT_LENGTH + 1];
STATIC constexpr auto mAsciiFormat = CompileTime::MakeWideString (u"%a");

#define WELCOME_PAGE_THEME STR_WELCOME_PAGE_THEME
#define PROGRESS_THEME STR_PROGRESS_THEME
#define TEXT_COLOR_WHITE 0xFFFFFF

//
// The controls' attributes, in the order they are set. The layout links to
// other controls are set after each table, since those handles are known only
// at run time.
//
STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mLogoAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 40, 40}, {UI_STYLE_FLOW, 1, 0, 0},      {UI_STYLE_LAYOUT, 0, 0, 0},
  {UI_STYLE_LAYOUT, 2, 0, 0},    {UI_STYLE_IMAGE_FIT, 5, 0, 0}, {UI_STYLE_LAYOUT, 0x100, 30, 18},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mProgressAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 80, 5}, {UI_STYLE_LAYOUT, 2, 0, 0}, {UI_STYLE_LAYOUT, 0x20, 0, 0},
  {UI_STYLE_FLOW, 1, 0, 0},     {UI_STYLE_LAYOUT, 2, 0, 0}, {UI_PROPERTY_VISIBLE, 0, 0, 0},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mTextAttributes[] = {
  {UI_PROPERTY_MARGIN, 0, 10, 10}, {UI_PROPERTY_SIZE, 4, 100, 10}, {UI_STYLE_TEXT_COLOR, TEXT_COLOR_WHITE, 0, 0},
  {UI_STYLE_FLOW, 1, 0, 0},        {UI_STYLE_LAYOUT, 2, 0, 0},     {UI_STYLE_ALIGN, 5, 0, 0},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mMessageAttributes[] = {
  {UI_STYLE_TEXT_COLOR, TEXT_COLOR_WHITE, 0, 0},
  {UI_STYLE_FLOW, 1, 0, 0},
  {UI_STYLE_LAYOUT, 0x0C, 0, 0},
  {UI_STYLE_ALIGN, 2, 0, 0},
  {UI_STYLE_FONT, 0, 0, 24},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mStatusAttributes[] = {
  {UI_STYLE_FLOW, 1, 0, 0},
  {UI_STYLE_TEXT_COLOR, TEXT_COLOR_WHITE, 0, 0},
  {UI_STYLE_LAYOUT, 2, 0, 0},
};

STATIC_ASSERT (UiAttributesSettable (mLogoAttributes) && UiAttributesSettable (mProgressAttributes) &&
                 UiAttributesSettable (mTextAttributes) && UiAttributesSettable (mMessageAttributes) &&
                 UiAttributesSettable (mStatusAttributes),
               "every attribute has a family that can be set");

#define SET_ATTRIBUTES(Control, Table)                                                                                 \
  UiSetAttributes (mWelcomePage, UI_PAGE_CONTAINER, (Control), (Table), ARRAY_SIZE (Table))

/**
  Reads the welcome text line into Out: 80 characters, space-filled.

  @retval EFI_SUCCESS  Out holds 80 characters (all spaces when the item is missing).
  @return the status of the service's look-up, or of a read that failed otherwise.
**/
STATIC
EFI_STATUS
GetWelcomeText (OUT CHAR8 *Out)
{
  SETTINGS_PROTOCOL *Settings;
  CHAR8 Text[SETTING_WELCOME_TEXT_SIZE];
  EFI_STATUS Status;
  UINTN Length;

  Status = LocateSettings (&Settings);
  if (Status != EFI_SUCCESS) {
    return Status;
  }

  ZeroMem (Text, sizeof (Text));
  Status = ReadSetting (Settings, SETTING_WELCOME_TEXT, sizeof (Text), Text);
  if (EFI_ERROR (Status) && (Status != EFI_NOT_FOUND)) {
    return Status;
  }

  //
  // The item comes from another driver: a text without its terminator is
  // counted only as far as the buffer goes, and only 80 characters are used.
  //
  Length = 0;
  while ((Length < WELCOME_TEXT_LENGTH) && (Text[Length] != '\0')) {
    Length++;
  }

  SetMem (Text + Length, WELCOME_TEXT_LENGTH - Length, ' ');
  CopyMem (Out, Text, WELCOME_TEXT_LENGTH);
  return EFI_SUCCESS;
}

/**
  Builds the welcome page: logo, progress bar, welcome text, message line and
  status line; registers the hot keys and displays the page.

  @return the status of the page's creation when it failed, else that of the status line's.
**/
STATIC
EFI_STATUS
BuildWelcomePage (VOID)
{
  CHAR8 Text[SETTING_WELCOME_TEXT_SIZE];
  EFI_STATUS Status;

  Status = gPageEngine->CreatePage (&mWelcomePage, UI_PAGE_ID, 0, 0, 0, gHiiHandle, WELCOME_PAGE_THEME);
  if (EFI_ERROR (Status)) {
    mWelcomePage = 0;
    return Status;
  }

  if (!EFI_ERROR (gPageEngine->CreateImageControl (mWelcomePage, UI_PAGE_CONTAINER, gHiiHandle, WELCOME_PAGE_THEME, 0,
                                                   0, 0, WelcomePageEventHandler, &gLogoControl))) {
    SET_ATTRIBUTES (gLogoControl, mLogoAttributes);
  } else {
    gLogoControl = 0;
  }

  if (!EFI_ERROR (gPageEngine->CreateProgressControl (mWelcomePage, UI_PAGE_CONTAINER, gHiiHandle, PROGRESS_THEME, 0, 0,
                                                      100, 0, WelcomePageEventHandler, &gProgressControl))) {
    SET_ATTRIBUTES (gProgressControl, mProgressAttributes);
  }

  ZeroMem (Text, sizeof (Text));
  if (GetWelcomeText (Text) == EFI_SUCCESS) {
    if (!EFI_ERROR (
          gPageEngine->CreateTextControl (mWelcomePage, UI_PAGE_CONTAINER, gHiiHandle, 0, 0, &mTextControl))) {
      SET_ATTRIBUTES (mTextControl, mTextAttributes);
      UiSetStyle (mWelcomePage, UI_PAGE_CONTAINER, mTextControl, UI_STYLE_LAYOUT, 0x40, 2, gLogoControl);
    }

    UnicodeSPrint (mWelcomeText, sizeof (mWelcomeText), mAsciiFormat.Text, Text);
    UiSetData (mWelcomePage, UI_PAGE_CONTAINER, mTextControl, UI_DATA_TEXT, (UINTN)mWelcomeText);
  }

  if (!EFI_ERROR (
        gPageEngine->CreateTextControl (mWelcomePage, UI_PAGE_CONTAINER, gHiiHandle, 0, 0, &mMessageControl))) {
    SET_ATTRIBUTES (mMessageControl, mMessageAttributes);
  }

  Status = gPageEngine->CreateTextControl (mWelcomePage, UI_PAGE_CONTAINER, gHiiHandle, 0, 0, &gStatusControl);
  if (!EFI_ERROR (Status)) {
    SET_ATTRIBUTES (gStatusControl, mStatusAttributes);
    UiSetStyle (mWelcomePage, UI_PAGE_CONTAINER, gStatusControl, UI_STYLE_LAYOUT, 0x40, 3, gProgressControl);
  }

  RegisterHotKeys ();
  UiDisplayPage (mWelcomePage);
  return Status;
}

/**
  Hands the logo's place on the screen to the boot logo protocol, once.
**/
STATIC
VOID
PublishBootLogo (VOID)
{
  EFI_BOOT_LOGO_PROTOCOL *BootLogo = nullptr;
  UI_IMAGE_RECORD *Record;

  if (mBootLogoPublished) {
    return;
  }

  Record =
    UiPointer<UI_IMAGE_RECORD> (UiGetStyle (mWelcomePage, UI_PAGE_CONTAINER, gLogoControl, UI_STYLE_IMAGE_RECORD));
  if (Record == nullptr) {
    return;
  }

  if (EFI_ERROR (gBS->LocateProtocol (&gEfiBootLogoProtocolGuid, nullptr, (VOID **)&BootLogo)) ||
      (BootLogo == nullptr) || (BootLogo->SetBootLogo == nullptr)) {
    return;
  }

  if (!EFI_ERROR (BootLogo->SetBootLogo (BootLogo, (EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)Record->BltBuffer, Record->X,
                                         Record->Y, Record->Width, Record->Height))) {
    mBootLogoPublished = TRUE;
  }
}

VOID EFIAPI
ShowWelcomePage (VOID)
{
  SETTINGS_PROTOCOL *Settings;
  UINT8 Countdown;

  if (mWelcomePage == 0) {
    UiSetUiMode (1);
    BuildWelcomePage ();
    UpdateKestFlashLogo (mWelcomePage, &mWelcomeLogoImage);
    SetWelcomeProgress (0);
    RefreshWelcomePage ();
    if (!EFI_ERROR (LocateSettings (&Settings))) {
      Countdown = 0;
      ReadSetting (Settings, SETTING_PAGE_COUNTDOWN, sizeof (Countdown), &Countdown);
      mPageCountdown = (Countdown == 1) ? 5 : ((Countdown == 2) ? 10 : 0);
    }
  }

  RefreshWelcomePage ();
}

VOID EFIAPI
UpdateWelcomeProgress (IN CHAR16 *Message, IN UINTN Progress)
{
  EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *TextInputEx;
  EFI_KEY_DATA KeyData;

  //
  // A keyboard whose keys are not notified still reaches the hot keys here:
  // each progress update reads one key.
  //
  TextInputEx = GetTextInputEx ();
  if ((TextInputEx != nullptr) && (TextInputEx->ReadKeyStrokeEx != nullptr)) {
    ZeroMem (&KeyData, sizeof (KeyData));
    if (!EFI_ERROR (TextInputEx->ReadKeyStrokeEx (TextInputEx, &KeyData))) {
      HotKeyNotify (&KeyData);
    }
  }

  SetWelcomeProgress (Progress);
}

VOID
SetWelcomeProgress (IN UINTN Value)
{
  mProgressValue = Value;
  if (mProgressShown) {
    if (Value >= 100) {
      UiSetProperty (mWelcomePage, UI_PAGE_CONTAINER, gProgressControl, UI_PROPERTY_VISIBLE, 0);
    } else {
      UiSetData (mWelcomePage, UI_PAGE_CONTAINER, gProgressControl, UI_DATA_PROGRESS_VALUE, Value);
    }
  }

  RefreshWelcomePage ();
}

/**
  Shows the progress bar: from now on progress values reach it.
**/
VOID
ShowWelcomeProgressBar (VOID)
{
  UiSetProperty (mWelcomePage, UI_PAGE_CONTAINER, gProgressControl, UI_PROPERTY_VISIBLE, 1);
  mProgressShown = TRUE;
}

VOID EFIAPI
RefreshWelcomePage (VOID)
{
  if (mWelcomePage != 0) {
    UiRefreshPage (mWelcomePage);
  }

  PublishBootLogo ();
  if (mDiagnosticsAtBoot) {
    LaunchDiagnostics ();
  }
}

VOID
ResetWelcomePageState (VOID)
{
  gLogoControl = 0;
  gProgressControl = 0;
  gStatusControl = 0;
  mPageCountdown = 0;
  mLastTickValue = 0;
  mWelcomePage = 0;
  mTextControl = 0;
  mMessageControl = 0;
  mWelcomeLogoImage = 0;
  mHotKeyAction = HOT_KEY_ACTION_NONE;
  mActionPending = FALSE;
  mDiagnosticsAtBoot = FALSE;
  mProgressShown = FALSE;
  mProgressValue = 0;
  mBootLogoPublished = FALSE;
  ZeroMem (mWelcomeText, sizeof (mWelcomeText));
}

VOID
ExitWelcomePage (VOID)
{
  UnregisterHotKeys ();
  PublishBootLogo ();
  UiExitEventLoop ();
  if (mWelcomePage != 0) {
    gPageEngine->DestroyPage (mWelcomePage);
  }

  mWelcomePage = 0;
}

BOOLEAN
CountPageSecond (IN UINTN TimeData)
{
  EFI_TIME *Time = UiPointer<EFI_TIME> (TimeData);
  UINTN TickValue;

  if ((Time == nullptr) || (Time->Second >= 60)) {
    return FALSE;
  }

  //
  // Ticks may come faster than once a second and from several controls: only
  // a new clock second counts.
  //
  TickValue = ((UINTN)Time->Second * 100) / 60;
  if (TickValue == mLastTickValue) {
    return FALSE;
  }

  mLastTickValue = TickValue;
  mPageCountdown--;
  return TRUE;
}

UINTN
EFIAPI
WelcomePageEventHandler (IN OUT UI_EVENT *Event)
{
  UINTN Result = UI_EVENT_NOT_HANDLED;

  if ((mPageCountdown < 0) || (mProgressValue >= 100)) {
    SetWelcomeProgress (100);
    mLastTickValue = 0;
    if (Event != nullptr) {
      Event->EventCode = UI_EVENT_CLOSE;
    }

    ExitWelcomePage ();
    Result = UI_EVENT_HANDLED_PAGE_CLOSED;
  }

  if (Event == nullptr) {
    return Result;
  }

  switch (Event->EventCode) {
    case UI_EVENT_TIMER_TICK:
      return CountPageSecond (Event->Data) ? UI_EVENT_HANDLED : Result;

    case UI_EVENT_KEY:
      if (mActionPending) {
        RunHotKeyAction ();
        return Result;
      }

      if ((Event->Data == UI_KEY_ENTER) || (Event->Data == UI_KEY_ESCAPE)) {
        ExitWelcomePage ();
        return UI_EVENT_HANDLED;
      }

      return Result;

    default:
      return Result;
  }
}
