/** @file
  The flash update page: the protocol record that the firmware-update driver
  calls, the page with its logo, warning, progress bar, percentage, status
  line and outcome, its count-up and closing rules, and the session
  pass-through to the UI framework.

  The page never runs the framework's event loop: it closes only from its
  event handler, while the framework delivers events to it.
**/
#include "FlashUpdatePage.h"
#include "UICommon.h"
#include "UiFrameworkCalls.h"
#include "UiResources.h"
#include "UserInterface.h"
#include "WelcomePage.h"

#include <Library/CompileTimeLib.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/PrintLib.h>
}
#include <Library/TrackedAllocationLib.h>

#define TRACKED_POOL_FILE "Drivers/UserInterface/FlashUpdatePage"

#define FLASH_PAGE_THEME STR_FLASH_PAGE_THEME
#define PROGRESS_THEME STR_PROGRESS_THEME

#define COLOR_WHITE 0xFFFFFF
#define COLOR_RED 0xDC5034
#define COLOR_GREEN 0x7AB800

///
/// Characters of the status line.
///
#define FLASH_STATUS_LENGTH 50

///
/// "   100%" and its terminator fit.
///
#define FLASH_PERCENT_TEXT_LENGTH 10

//
// The flash page's own handles; it shares the image, progress and status
// controls and the countdown with the welcome page.
//
STATIC UINTN mFlashPage = 0;
STATIC UINTN mFlashLogoImage = 0;
STATIC UINTN mFlashMessageControl = 0;
STATIC UINTN mFlashLabelControl = 0;
STATIC UINTN mFlashPercentControl = 0;
STATIC UINTN mFlashProgress = 0;
STATIC UINTN mFlashTickCount = 0;
STATIC CHAR16 mFlashStatusText[FLASH_STATUS_LENGTH + 1];

STATIC constexpr auto mAsciiFormat = CompileTime::MakeWideString (u"%a");
STATIC constexpr auto mPercentFormat = CompileTime::MakeWideString (u"   %d%%");
STATIC CONST CHAR8 mEmptyText[] = "";

///
/// The outcomes' messages and colours, by FLASH_UPDATE_RESULT.
///
typedef struct {
  EFI_STRING_ID StringId;
  UINTN Color;
} FLASH_RESULT_MESSAGE;

STATIC CONST FLASH_RESULT_MESSAGE mResultMessages[] = {
  {STR_FLASH_SUCCESS_REBOOT, COLOR_GREEN},
  {STR_FLASH_FAILURE_REBOOT, COLOR_RED},
  {STR_FLASH_ANTI_THEFT_BLOCKED, COLOR_RED},
  {STR_FLASH_DOWNGRADE_BLOCKED, COLOR_RED},
  {STR_FLASH_SECURE_BOOT_DOWNGRADE_BLOCKED, COLOR_RED},
  {STR_FLASH_SUCCESS, COLOR_GREEN},
  {STR_FLASH_FAILURE, COLOR_RED},
};

STATIC_ASSERT (ARRAY_SIZE (mResultMessages) == FlashResultFailure + 1, "one message per outcome");

//
// The controls' attributes, in the order they are set. The two layout links
// to other controls are set after each table, since those handles are known
// only at run time.
//
STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mLogoAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 40, 40}, {UI_STYLE_FLOW, 1, 0, 0}, {UI_STYLE_LAYOUT, 0, 0, 0},       {UI_STYLE_LAYOUT, 2, 0, 0},
  {UI_STYLE_IMAGE_FIT, 5, 0, 0}, {UI_STYLE_FLOW, 1, 0, 0}, {UI_STYLE_LAYOUT, 0x100, 30, 18},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mProgressAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 50, 5},        {UI_STYLE_LAYOUT, 0, 0, 0}, {UI_STYLE_LAYOUT, 2, 0, 0},
  {UI_STYLE_LAYOUT, 0x20, 0, 0},       {UI_STYLE_FLOW, 1, 0, 0},   {UI_DATA_PROGRESS_MAXIMUM, 100, 0, 0},
  {UI_DATA_PROGRESS_MINIMUM, 0, 0, 0},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mMessageAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 100, 20}, {UI_STYLE_FLOW, 1, 0, 0},  {UI_STYLE_TEXT_COLOR, COLOR_WHITE, 0, 0},
  {UI_STYLE_FONT, 0, 0, 22},      {UI_STYLE_ALIGN, 4, 0, 0}, {UI_STYLE_LAYOUT, 0, 0, 0},
  {UI_STYLE_LAYOUT, 2, 0, 0},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mStatusAttributes[] = {
  {UI_PROPERTY_MARGIN, 0, 10, 10}, {UI_PROPERTY_SIZE, 4, 100, 10},
  {UI_STYLE_FLOW, 1, 0, 0},        {UI_STYLE_TEXT_COLOR, COLOR_WHITE, 0, 0},
  {UI_STYLE_ALIGN, 5, 0, 0},       {UI_STYLE_LAYOUT, 0, 0, 0},
  {UI_STYLE_LAYOUT, 2, 0, 0},      {UI_STYLE_ALIGN, 5, 0, 0},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mLabelAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 20, 5}, {UI_STYLE_FLOW, 1, 0, 0},  {UI_STYLE_TEXT_COLOR, COLOR_WHITE, 0, 0},
  {UI_STYLE_FONT, 0, 0, 22},    {UI_STYLE_ALIGN, 2, 0, 0}, {UI_STYLE_LAYOUT, 0x20, 0, 0},
  {UI_STYLE_LAYOUT, 1, 0, 0},
};

STATIC constexpr UI_CONTROL_ATTRIBUTE_VALUE mPercentAttributes[] = {
  {UI_PROPERTY_SIZE, 4, 20, 5}, {UI_STYLE_FLOW, 1, 0, 0},      {UI_STYLE_TEXT_COLOR, COLOR_WHITE, 0, 0},
  {UI_STYLE_FONT, 0, 0, 22},    {UI_STYLE_LAYOUT, 0x20, 0, 0}, {UI_STYLE_LAYOUT, 4, 0, 0},
};

STATIC_ASSERT (UiAttributesSettable (mLogoAttributes) && UiAttributesSettable (mProgressAttributes) &&
                 UiAttributesSettable (mMessageAttributes) && UiAttributesSettable (mStatusAttributes) &&
                 UiAttributesSettable (mLabelAttributes) && UiAttributesSettable (mPercentAttributes),
               "every attribute has a family that can be set");

VOID
ForgetFlashUpdatePage (VOID)
{
  mFlashPage = 0;
  mFlashLogoImage = 0;
  mFlashMessageControl = 0;
  mFlashLabelControl = 0;
  mFlashPercentControl = 0;
}

VOID
ResetFlashUpdatePageState (VOID)
{
  ForgetFlashUpdatePage ();
  mFlashProgress = 0;
  mFlashTickCount = 0;
  ZeroMem (mFlashStatusText, sizeof (mFlashStatusText));
}

#define SET_ATTRIBUTES(Control, Table)                                                                                 \
  UiSetAttributes (mFlashPage, UI_PAGE_CONTAINER, (Control), (Table), ARRAY_SIZE (Table))

EFI_STATUS
InitFlashUpdatePageDriverInterfaces (VOID)
{
  EFI_STATUS Status;

  Status = ALLOCATE_TRACKED_POOL (gFlashUpdatePageProtocol, sizeof (FLASH_UPDATE_PAGE_PROTOCOL));
  if (gFlashUpdatePageProtocol != nullptr) {
    gFlashUpdatePageProtocol->Show = ShowFlashUpdatePage;
    gFlashUpdatePageProtocol->SetProgress = SetFlashProgress;
    gFlashUpdatePageProtocol->SetStatusText = SetFlashStatusText;
    gFlashUpdatePageProtocol->ShowResult = ShowFlashResult;
    gFlashUpdatePageProtocol->Revision = FLASH_UPDATE_PAGE_PROTOCOL_REVISION;
    gFlashUpdatePageProtocol->Reserved = 0;
    gFlashUpdatePageProtocol->SessionPassThrough = FlashSessionPassThrough;
  }

  return Status;
}

/**
  Builds the flash page: logo, message line, progress bar, status line,
  label and percentage.

  @return the status of the page's creation when it failed, else that of the percentage control's.
**/
STATIC
EFI_STATUS
BuildFlashUpdatePage (VOID)
{
  EFI_STATUS Status;

  Status = gPageEngine->CreatePage (&mFlashPage, UI_PAGE_ID, 0, 0, 0, gHiiHandle, FLASH_PAGE_THEME);
  if (EFI_ERROR (Status)) {
    mFlashPage = 0;
    UiDisplayPage (mFlashPage);
    return Status;
  }

  if (!EFI_ERROR (gPageEngine->CreateImageControl (mFlashPage, UI_PAGE_CONTAINER, gHiiHandle, FLASH_PAGE_THEME, 0, 0, 0,
                                                   FlashUpdatePageEventHandler, &gLogoControl))) {
    SET_ATTRIBUTES (gLogoControl, mLogoAttributes);
  } else {
    gLogoControl = 0;
  }

  if (!EFI_ERROR (gPageEngine->CreateProgressControl (mFlashPage, UI_PAGE_CONTAINER, gHiiHandle, PROGRESS_THEME, 0, 0,
                                                      100, 0, FlashUpdatePageEventHandler, &gProgressControl))) {
    SET_ATTRIBUTES (gProgressControl, mProgressAttributes);
  } else {
    gProgressControl = 0;
  }

  if (!EFI_ERROR (
        gPageEngine->CreateTextControl (mFlashPage, UI_PAGE_CONTAINER, gHiiHandle, 0, 0, &mFlashMessageControl))) {
    SET_ATTRIBUTES (mFlashMessageControl, mMessageAttributes);
    UiSetStyle (mFlashPage, UI_PAGE_CONTAINER, mFlashMessageControl, UI_STYLE_LAYOUT, 0x40, 2, gLogoControl);
  } else {
    mFlashMessageControl = 0;
  }

  if (!EFI_ERROR (gPageEngine->CreateTextControl (mFlashPage, UI_PAGE_CONTAINER, gHiiHandle, 0, 0, &gStatusControl))) {
    SET_ATTRIBUTES (gStatusControl, mStatusAttributes);
    UiSetStyle (mFlashPage, UI_PAGE_CONTAINER, gStatusControl, UI_STYLE_LAYOUT, 0x40, 3, gProgressControl);
  } else {
    gStatusControl = 0;
  }

  if (!EFI_ERROR (
        gPageEngine->CreateTextControl (mFlashPage, UI_PAGE_CONTAINER, gHiiHandle, 0, 0, &mFlashLabelControl))) {
    SET_ATTRIBUTES (mFlashLabelControl, mLabelAttributes);
  } else {
    mFlashLabelControl = 0;
  }

  Status = gPageEngine->CreateTextControl (mFlashPage, UI_PAGE_CONTAINER, gHiiHandle, STR_FLASH_PERCENTAGE, 0,
                                           &mFlashPercentControl);
  if (!EFI_ERROR (Status)) {
    SET_ATTRIBUTES (mFlashPercentControl, mPercentAttributes);
  } else {
    mFlashPercentControl = 0;
  }

  UiSetEventHandler (FlashUpdatePageEventHandler);
  UiDisplayPage (mFlashPage);
  return Status;
}

STATIC
VOID
RefreshFlashPage (VOID)
{
  if (mFlashPage != 0) {
    UiRefreshPage (mFlashPage);
  }
}

/**
  Writes the percentage, "   7%" to "   100%"; the caller redraws.
**/
STATIC
VOID
UpdateFlashPercentText (IN UINTN Value)
{
  CHAR16 Text[FLASH_PERCENT_TEXT_LENGTH];

  if (mFlashPercentControl == 0) {
    return;
  }

  UnicodeSPrint (Text, sizeof (Text), mPercentFormat.Text, Value);
  UiSetData (mFlashPage, UI_PAGE_CONTAINER, mFlashPercentControl, UI_DATA_TEXT, (UINTN)Text, (UINTN)gHiiHandle, 0);
}

/**
  Shows Text on the message line in Colour.
**/
STATIC
VOID
SetFlashMessage (IN CHAR16 *Text, IN UINTN Colour)
{
  UiSetData (mFlashPage, UI_PAGE_CONTAINER, mFlashMessageControl, UI_DATA_TEXT, (UINTN)Text, (UINTN)gHiiHandle, 0);
  UiSetStyle (mFlashPage, UI_PAGE_CONTAINER, mFlashMessageControl, UI_STYLE_TEXT_COLOR, Colour);
  RefreshFlashPage ();
}

/**
  Closes the flash page and ends the UI session.
**/
STATIC
VOID
ExitFlashUpdatePage (VOID)
{
  UiExitEventLoop ();
  if (mFlashPage != 0) {
    gPageEngine->DestroyPage (mFlashPage);
  }

  mFlashPage = 0;
  UiEndUiSession ();
}

UINTN
EFIAPI
FlashUpdatePageEventHandler (IN OUT UI_EVENT *Event)
{
  UINTN Result = UI_EVENT_NOT_HANDLED;

  if ((mPageCountdown < 0) || (mFlashProgress >= 100)) {
    SetFlashProgress (100);
    mLastTickValue = 0;
    mFlashTickCount = 0;
    if (Event != nullptr) {
      Event->EventCode = UI_EVENT_CLOSE;
    }

    ExitFlashUpdatePage ();
    Result = UI_EVENT_HANDLED_PAGE_CLOSED;
  }

  if (Event == nullptr) {
    return Result;
  }

  switch (Event->EventCode) {
    case UI_EVENT_TIMER_TICK:
      //
      // A count-up by clock seconds on the bar: ten points for each new second.
      //
      if ((Event->Control != gProgressControl) || !CountPageSecond (Event->Data)) {
        return Result;
      }

      if (mFlashTickCount > 100) {
        mFlashTickCount = 100;
      }

      SetFlashProgress (mFlashTickCount * 10);
      mFlashTickCount++;
      return UI_EVENT_HANDLED;

    case UI_EVENT_KEY:
      if ((Event->Data == UI_KEY_ENTER) || (Event->Data == UI_KEY_ESCAPE)) {
        ExitFlashUpdatePage ();
        return UI_EVENT_HANDLED;
      }

      return Result;

    default:
      return Result;
  }
}

VOID EFIAPI
ShowFlashUpdatePage (VOID)
{
  CHAR16 *Text;

  if (mFlashPage == 0) {
    UiSetUiMode (1);
    BuildFlashUpdatePage ();
    UpdateKestFlashLogo (mFlashPage, &mFlashLogoImage);
    SetFlashProgress (0);
    SetFlashStatusText (nullptr);
    Text = UiGetString (STR_FLASH_UPDATING);
    SetFlashMessage (Text, COLOR_RED);
    Text = UiGetString (STR_FLASH_PROGRESS_TITLE);
    UiSetData (mFlashPage, UI_PAGE_CONTAINER, mFlashLabelControl, UI_DATA_TEXT, (UINTN)Text, (UINTN)gHiiHandle, 0);
    UiSetStyle (mFlashPage, UI_PAGE_CONTAINER, mFlashLabelControl, UI_STYLE_TEXT_COLOR, COLOR_WHITE);
    mFlashTickCount = 0;
  }

  RefreshFlashPage ();
}

VOID EFIAPI
SetFlashProgress (IN UINTN Percent)
{
  mFlashProgress = Percent;
  if (Percent > 100) {
    return;
  }

  UiSetData (mFlashPage, UI_PAGE_CONTAINER, gProgressControl, UI_DATA_PROGRESS_VALUE, Percent);
  UpdateFlashPercentText (Percent);
  RefreshFlashPage ();
}

VOID EFIAPI
SetFlashStatusText (IN CHAR8 *Text OPTIONAL)
{
  //
  // The text is the client's: "%a" stops at its terminator or at the 50
  // characters that fit, whichever comes first.
  //
  UnicodeSPrint (mFlashStatusText, sizeof (mFlashStatusText), mAsciiFormat.Text, (Text != nullptr) ? Text : mEmptyText);
  UiSetData (mFlashPage, UI_PAGE_CONTAINER, gStatusControl, UI_DATA_TEXT, (UINTN)mFlashStatusText);
  RefreshFlashPage ();
}

VOID EFIAPI
ShowFlashResult (IN UINT32 Result)
{
  CHAR16 *Text;

  if (Result >= ARRAY_SIZE (mResultMessages)) {
    return;
  }

  Text = UiGetString (mResultMessages[Result].StringId);
  if (Text != nullptr) {
    SetFlashMessage (Text, mResultMessages[Result].Color);
  }
}

/**
  Passes a session request to the UI framework unchanged, but for the first
  argument, which becomes the framework's service table.
**/
EFI_STATUS EFIAPI
FlashSessionPassThrough (
  IN VOID *Unused, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4)
{
  UI_SERVICES *Services;

  if (gUiFramework == nullptr) {
    return EFI_NOT_READY;
  }

  Services = gUiFramework->Services;
  return Services->Session->SessionRequest (Services, Argument1, Argument2, Argument3, Argument4);
}
