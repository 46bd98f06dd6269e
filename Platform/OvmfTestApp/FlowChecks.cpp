/** @file
  Plays the driver's pages in real firmware: the welcome page with its
  countdown, the administrator prompt (with OVMF's own SMBIOS serial in its
  caption), the end of the welcome flow and the flash page. Key presses cannot
  be made from inside the application, so events come from a script handed to
  the UI framework stand-in; the console, variables and SMBIOS are OVMF's.

  The flows avoid the boot paths that ask the PCD protocol: OVMF has a real
  one, which the driver would find before any stand-in.
**/
#include "FlowChecks.h"

#include "DriverChecks.h"
#include "ScreenHold.h"
#include "TestReport.h"
#include <StandIns/DemoLogo.h>

#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/FlashUpdatePage.h>
#include <Protocol/ServiceRequest.h>
#include <Protocol/UiDriver.h>
#include <Protocol/UiFramework.h>
#include <StandIns/PageEngineStandIn.h>
#include <StandIns/ServiceStandIns.h>
#include <StandIns/StandInRender.h>
#include <StandIns/UiFrameworkStandIn.h>

//
// Page layout as the pages build it: page id, themes and control order.
//
#define WELCOME_PAGE_ID 1000
#define WELCOME_THEME 2
#define FLASH_THEME 8
#define WELCOME_CONTROLS 5
#define FLASH_CONTROLS 6
#define FLASH_MESSAGE_CONTROL_INDEX 2
#define FLASH_PERCENT_CONTROL_INDEX 5
#define WELCOME_TEXT_LENGTH 80

//
// Settings items: the countdown (1 gives 5 seconds) and the welcome text.
//
#define ITEM_COUNTDOWN 1183
#define ITEM_WELCOME_TEXT 1563
#define COUNTDOWN_SETTING 1
#define COUNTDOWN_SECONDS 5

#define SUCCESS_COLOUR 0x7AB800

//
// Every clock second of the welcome script comes twice: only the first of
// each pair may count. The sixth counted second (countdown 5 passing below
// zero) is the first of the last pair; its second tick closes the page.
//
#define TICKS_PER_SECOND 2
#define WELCOME_EVENTS_TO_CLOSE (TICKS_PER_SECOND * COUNTDOWN_SECONDS + 2)
#define MAX_SCRIPT_EVENTS 24

STATIC CONST CHAR8 mWelcomeText[] = "Welcome to KestUi on OVMF";
STATIC constexpr auto mAbortFlagName = CompileTime::MakeWideString (u"KestDiagAbortFlag");
STATIC constexpr auto mProgressMessage = CompileTime::MakeWideString (u"Starting devices");
STATIC constexpr auto mRightPassword = CompileTime::MakeWideString (u"kestrel");
STATIC constexpr auto mWrongPassword = CompileTime::MakeWideString (u"falcon");
STATIC constexpr auto mEmpty = CompileTime::MakeWideString (u"");
STATIC constexpr auto mExpectedCaption = CompileTime::MakeWideString (u"KESTUI-OVMF-01 -3B7C");
STATIC constexpr auto mExpectedTitle = CompileTime::MakeWideString (u"Admin Unlock");
STATIC constexpr auto mExpectedPercent = CompileTime::MakeWideString (u"   50%");
STATIC constexpr auto mExpectedResult = CompileTime::MakeWideString (u"BIOS Update successful. Rebooting your system.");

///
/// Events handed one by one to the UI framework stand-in's loops.
///
typedef struct {
  UI_EVENT Events[MAX_SCRIPT_EVENTS];
  EFI_TIME Times[MAX_SCRIPT_EVENTS];          ///< what the timer ticks point to
  CONST CHAR8 *HoldBefore[MAX_SCRIPT_EVENTS]; ///< screenshot name to hold before the event, or null
  UINTN Count;
  UINTN Next; ///< events taken so far
} FLOW_SCRIPT;

STATIC FLOW_SCRIPT mScript;

//
// What the prompt's completion callback received.
//
STATIC UINTN mAcceptedCallbacks = 0;
STATIC UINTN mAcceptedKind = 0;

/**
  Event source of the stand-in: the next event of mScript.
**/
STATIC
BOOLEAN
EFIAPI
NextScriptEvent (IN VOID *Context, OUT UI_EVENT *Event)
{
  FLOW_SCRIPT *Script = (FLOW_SCRIPT *)Context;

  if (Script->Next >= Script->Count) {
    return FALSE;
  }

  if (Script->HoldBefore[Script->Next] != nullptr) {
    //
    // A submission is shown typed into the field (masked) before it is sent.
    //
    if (Script->Events[Script->Next].EventCode == UI_EVENT_TEXT_SUBMITTED) {
      StandInTypeText (0, (CONST CHAR16 *)Script->Events[Script->Next].Data); // NOLINT(performance-no-int-to-ptr)
    }

    HoldScreen (Script->HoldBefore[Script->Next]);
  }

  *Event = Script->Events[Script->Next++];
  return TRUE;
}

/**
  Appends an event to mScript; the caller keeps within MAX_SCRIPT_EVENTS.
**/
STATIC
VOID
AddScriptEvent (IN UINTN Control, IN UINTN Code, IN UINTN Data)
{
  UI_EVENT *Event = &mScript.Events[mScript.Count++];

  Event->Reserved = 0;
  Event->Control = Control;
  Event->EventCode = Code;
  Event->Data = Data;
}

STATIC
VOID EFIAPI
CountPasswordOutcome (IN UINTN Kind, IN EFI_STATUS Status)
{
  if (!EFI_ERROR (Status)) {
    mAcceptedCallbacks++;
    mAcceptedKind = Kind;
  }
}

/**
  @return the newest page of the model that is not destroyed and is a prompt
  page (Prompt) or a page with the welcome page's id (not Prompt); 0 if none.
**/
STATIC
UINTN
FindLivePage (IN BOOLEAN Prompt)
{
  STAND_IN_PAGE_INFO Info;
  UINTN Found = 0;
  UINTN Page;

  for (UINTN Index = 0; (Page = StandInPageAt (Index)) != 0; Index++) {
    if (StandInFindPage (Page, &Info) && !Info.Destroyed && (Info.Prompt == Prompt) &&
        (Prompt || (Info.PageId == WELCOME_PAGE_ID))) {
      Found = Page;
    }
  }

  return Found;
}

/**
  @return TRUE when the control's text is a copy equal to Expected.
**/
STATIC
BOOLEAN
ControlTextIs (IN UINTN Page, IN UINTN Control, IN CONST CHAR16 *Expected)
{
  STAND_IN_TEXT Text;

  return StandInGetControlText (Page, Control, &Text) && (Text.String != nullptr) &&
         (StrCmp (Text.String, Expected) == 0);
}

/**
  @return TRUE when Text is the ASCII welcome text filled with blanks to 80 characters.
**/
STATIC
BOOLEAN
IsPaddedWelcomeText (IN CONST CHAR16 *Text)
{
  UINTN Index = 0;

  if (Text == nullptr) {
    return FALSE;
  }

  for (; mWelcomeText[Index] != '\0'; Index++) {
    if (Text[Index] != (CHAR16)mWelcomeText[Index]) {
      return FALSE;
    }
  }

  for (; Index < WELCOME_TEXT_LENGTH; Index++) {
    if (Text[Index] != ' ') {
      return FALSE;
    }
  }

  return Text[Index] == 0;
}

/**
  Checks the welcome page that ShowWelcomePage built: its id and theme, its
  five controls in order, the welcome text line, and the bar hidden.

  @return the page, or 0 when there is none.
**/
STATIC
UINTN
CheckWelcomePageBuilt (VOID)
{
  STATIC CONST STAND_IN_CONTROL_KIND Kinds[WELCOME_CONTROLS] = {
    StandInControlImage, StandInControlProgress, StandInControlText, StandInControlText, StandInControlText};
  STAND_IN_PAGE_INFO Page;
  STAND_IN_CONTROL_INFO Control;
  STAND_IN_TEXT Text;
  UINTN Handle;

  ZeroMem (&Page, sizeof (Page));
  ZeroMem (&Control, sizeof (Control));
  ZeroMem (&Text, sizeof (Text));
  Handle = FindLivePage (FALSE);
  if (!ReportCheck ((Handle != 0) && StandInFindPage (Handle, &Page) && (Page.ThemeId == WELCOME_THEME) &&
                      (Page.DisplayCount > 0) && (Page.ControlCount == WELCOME_CONTROLS),
                    "welcome page 1000 built and displayed with 5 controls", "page %lu, theme %lu, %lu controls",
                    Handle, Page.ThemeId, Page.ControlCount)) {
    return Handle;
  }

  for (UINTN Index = 0; Index < WELCOME_CONTROLS; Index++) {
    if (!StandInFindControl (Handle, StandInControlAt (Handle, Index), &Control) || (Control.Kind != Kinds[Index]) ||
        (Control.Container != 1001) || (Control.Kind == StandInControlImage && Control.Handler == nullptr)) {
      ReportCheck (FALSE, "welcome controls in order", "control %lu is of kind %d", Index, (INT32)Control.Kind);
      return Handle;
    }
  }

  ReportCheck (TRUE, "welcome controls in order", nullptr);

  //
  // The third control shows item 1563, filled with blanks to its width.
  //
  ReportCheck (StandInGetControlText (Handle, StandInControlAt (Handle, 2), &Text) && IsPaddedWelcomeText (Text.String),
               "welcome text line from settings item 1563", "text \"%s\"",
               (Text.String != nullptr) ? Text.String : mEmpty.Text);
  ReportCheck (!StandInIsVisible (Handle, StandInControlAt (Handle, 1)), "welcome progress bar starts hidden",
               "visible");
  return Handle;
}

/**
  UpdateWelcomeProgress reads OVMF's console once (no key is waiting) and
  only records the value: the bar stays hidden and gets no value.
**/
STATIC
VOID
CheckProgressWithoutKey (IN UI_DRIVER_PROTOCOL *UiDriver, IN UINTN Page)
{
  UINTN Progress = 0;
  UINTN Bar = StandInControlAt (Page, 1);
  BOOLEAN HasValue;

  UiDriver->UpdateWelcomeProgress ((CHAR16 *)mProgressMessage.Text, 30);
  HasValue = StandInGetProgress (Page, Bar, &Progress);
  ReportCheck (!HasValue && !StandInIsVisible (Page, Bar), "progress without a key only recorded",
               "bar value set %d (%lu), visible %d", HasValue, Progress, StandInIsVisible (Page, Bar));
}

/**
  Timer ticks from the real clock, each second twice, on the page's image
  control: the countdown of 5 seconds from item 1183 must close the page at
  the first event after the sixth counted second.
**/
STATIC
VOID
CheckWelcomeCountdown (IN UI_FRAMEWORK_PROTOCOL *Framework, IN UINTN Page)
{
  STAND_IN_FRAMEWORK_STATE Before;
  STAND_IN_FRAMEWORK_STATE After;
  STAND_IN_PAGE_INFO Info;
  EFI_TIME Now;
  UINTN Logo = StandInControlAt (Page, 0);
  UINTN Ended;
  UINT8 FirstSecond;

  ZeroMem (&Now, sizeof (Now));
  ZeroMem (&mScript, sizeof (mScript));
  gRT->GetTime (&Now, nullptr);
  //
  // Seconds from 1 up, so that none repeats the page's start value and none
  // wraps past 59 within the script.
  //
  FirstSecond = (UINT8)((Now.Second % 30) + 1);
  for (UINTN Index = 0; Index < MAX_SCRIPT_EVENTS; Index++) {
    mScript.Times[Index] = Now;
    mScript.Times[Index].Second = (UINT8)(FirstSecond + (Index / TICKS_PER_SECOND));
    AddScriptEvent (Logo, UI_EVENT_TIMER_TICK, (UINTN)&mScript.Times[Index]);
  }

  StandInGetFrameworkState (&Before);
  StandInSetEventSource (NextScriptEvent, &mScript);
  Framework->Pages->RunEventLoop ();
  StandInSetEventSource (nullptr, nullptr);
  StandInGetFrameworkState (&After);

  //
  // The page ends the loop itself (close code or ExitEventLoop); a loop that
  // ran dry means the page never closed.
  //
  Ended = (After.LoopsEndedByClose - Before.LoopsEndedByClose) + (After.LoopsEndedByExit - Before.LoopsEndedByExit);
  ReportCheck ((mScript.Next == WELCOME_EVENTS_TO_CLOSE) && (Ended == 1) && (After.LoopsRanDry == Before.LoopsRanDry),
               "welcome page closes after countdown+1 counted seconds", "%lu ticks taken (expected %d), ended %lu",
               mScript.Next, WELCOME_EVENTS_TO_CLOSE, Ended);
  ReportCheck (StandInFindPage (Page, &Info) && Info.Destroyed, "welcome page destroyed at countdown end",
               "page %lu still alive", Page);
}

/**
  No key was pressed, so the driver must not have written the abort flag
  into OVMF's variable store.
**/
STATIC
VOID
CheckAbortFlagUnwritten (VOID)
{
  UINT8 Value = 0;
  UINTN Size = sizeof (Value);

  CheckStatus ("KestDiagAbortFlag not written without a key",
               gRT->GetVariable ((CHAR16 *)mAbortFlagName.Text, &gKestDiagAbortFlagGuid, nullptr, &Size, &Value),
               EFI_NOT_FOUND);
}

/**
  The administrator record of the password service stand-in is installed;
  a wrong then the right submission unlocks once, and the caption carries
  the serial number that QEMU put into OVMF's SMBIOS type 1 record.
**/
STATIC
VOID
CheckAdminPrompt (IN UI_DRIVER_PROTOCOL *UiDriver)
{
  STAND_IN_PROMPT_INFO Prompt;
  STAND_IN_SERVICE_REQUEST Request;
  CONST CHAR16 *Submitted[2] = {mWrongPassword.Text, mRightPassword.Text};
  UINTN Checks = 0;
  UINTN PromptPage;
  EFI_STATUS Status;

  ReportCheck (UiDriver->IsPasswordInstalled (PASSWORD_KIND_ADMIN), "administrator password installed",
               "IsPasswordInstalled(1) is FALSE");

  ZeroMem (&mScript, sizeof (mScript));
  for (UINTN Index = 0; Index < ARRAY_SIZE (Submitted); Index++) {
    AddScriptEvent (0, UI_EVENT_TEXT_SUBMITTED, (UINTN)Submitted[Index]);
  }

  mScript.HoldBefore[0] = "prompt";
  mScript.HoldBefore[1] = "prompt-wrong";

  mAcceptedCallbacks = 0;
  StandInSetEventSource (NextScriptEvent, &mScript);
  Status = UiDriver->PromptPassword (PASSWORD_KIND_ADMIN, CountPasswordOutcome);
  StandInSetEventSource (nullptr, nullptr);
  CheckStatus ("PromptPassword returned", Status, EFI_SUCCESS);
  ReportCheck ((mAcceptedCallbacks == 1) && (mAcceptedKind == PASSWORD_KIND_ADMIN) && (mScript.Next == 2),
               "wrong then right password: one accepted callback", "%lu accepted (kind %lu), %lu submissions taken",
               mAcceptedCallbacks, mAcceptedKind, mScript.Next);

  //
  // The service saw both texts, in order.
  //
  for (UINTN Index = 0; Index < StandInServiceRequestCount (); Index++) {
    if (StandInGetServiceRequest (Index, &Request) && CompareGuid (&Request.Family, &gPasswordRequestGuid) &&
        ((Request.Request == 5) || (Request.Request == 6)) && (Checks < ARRAY_SIZE (Submitted)) &&
        (StrCmp (Request.WideData, Submitted[Checks]) == 0)) {
      Checks++;
    }
  }

  ReportCheck (Checks == ARRAY_SIZE (Submitted), "password service checked both submissions in order",
               "%lu of 2 matched", Checks);

  PromptPage = FindLivePage (TRUE);
  if (!ReportCheck (StandInGetPrompt (PromptPage, &Prompt) && (Prompt.Title != nullptr) &&
                      (StrCmp (Prompt.Title, mExpectedTitle.Text) == 0),
                    "prompt shown with title Admin Unlock", "prompt page %lu", PromptPage)) {
    return;
  }

  ReportCheck ((Prompt.Caption != nullptr) && (StrCmp (Prompt.Caption, mExpectedCaption.Text) == 0),
               "prompt caption has the SMBIOS serial", "caption \"%s\"",
               (Prompt.Caption != nullptr) ? Prompt.Caption : mEmpty.Text);
}

/**
  Without item 36930 FinishWelcomePage reports the missing item, and no
  welcome page is left.
**/
STATIC
VOID
CheckFinishWelcome (IN UI_DRIVER_PROTOCOL *UiDriver)
{
  CheckStatus ("FinishWelcomePage without item 36930", UiDriver->FinishWelcomePage (), EFI_NOT_FOUND);
  ReportCheck (FindLivePage (FALSE) == 0, "no welcome page after FinishWelcomePage", "page %lu alive",
               FindLivePage (FALSE));
}

/**
  Show, 50 percent and the successful outcome through the flash page
  protocol, then Enter closes the page from its event handler.
**/
STATIC
VOID
CheckFlashPage (IN FLASH_UPDATE_PAGE_PROTOCOL *FlashPage, IN UI_FRAMEWORK_PROTOCOL *Framework)
{
  STAND_IN_PAGE_INFO Info;
  UINTN Values[3] = {0, 0, 0};
  UINTN Page;
  UINTN Message;

  FlashPage->Show ();
  Page = FindLivePage (FALSE);
  if (!ReportCheck ((Page != 0) && StandInFindPage (Page, &Info) && (Info.ThemeId == FLASH_THEME) &&
                      (Info.ControlCount == FLASH_CONTROLS),
                    "flash page built with 6 controls", "page %lu", Page)) {
    return;
  }

  FlashPage->SetProgress (50);
  ReportCheck (ControlTextIs (Page, StandInControlAt (Page, FLASH_PERCENT_CONTROL_INDEX), mExpectedPercent.Text),
               "flash percentage shows 50%", "text differs");
  HoldScreen ("flash-50");

  FlashPage->ShowResult (FlashResultSuccessReboot);
  Message = StandInControlAt (Page, FLASH_MESSAGE_CONTROL_INDEX);
  ReportCheck (ControlTextIs (Page, Message, mExpectedResult.Text) &&
                 StandInGetAttribute (Page, Message, UI_STYLE_TEXT_COLOR, Values) && (Values[0] == SUCCESS_COLOUR),
               "flash result 0 shows string 12 in green", "colour %lx", Values[0]);
  HoldScreen ("flash-success");

  ZeroMem (&mScript, sizeof (mScript));
  AddScriptEvent (StandInControlAt (Page, 1), UI_EVENT_KEY, UI_KEY_ENTER);
  StandInSetEventSource (NextScriptEvent, &mScript);
  Framework->Pages->RunEventLoop ();
  StandInSetEventSource (nullptr, nullptr);
  ReportCheck (StandInFindPage (Page, &Info) && Info.Destroyed, "Enter closes the flash page", "page %lu alive", Page);
}

///
/// A stand-in that this flow installs and removes.
///
typedef struct {
  CONST CHAR8 *Name;
  EFI_STATUS (EFIAPI *Install) (IN OUT EFI_HANDLE *Handle);
  EFI_STATUS (EFIAPI *Uninstall) (IN EFI_HANDLE Handle);
} FLOW_STAND_IN;

STATIC CONST FLOW_STAND_IN mStandIns[] = {
  {"UI framework", InstallUiFrameworkStandIn, UninstallUiFrameworkStandIn},
  {"personality module", InstallPersonalityModuleStandIn, UninstallPersonalityModuleStandIn},
  {"settings", InstallSettingsStandIn, UninstallSettingsStandIn},
  {"service request", InstallServiceRequestStandIn, UninstallServiceRequestStandIn},
  {"boot menu", InstallBootMenuStandIn, UninstallBootMenuStandIn},
  {"Setup state", InstallSetupStateStandIn, UninstallSetupStateStandIn},
  {"diagnostics", InstallDiagnosticsStandIn, UninstallDiagnosticsStandIn},
  {"boot logo", InstallBootLogoStandIn, UninstallBootLogoStandIn},
};

/**
  Configures the services and installs every stand-in of mStandIns.

  @return TRUE when all were installed; the handles of those that were are set.
**/
STATIC
BOOLEAN
InstallStandIns (OUT EFI_HANDLE *Handles)
{
  STATIC CONST UINT8 Countdown = COUNTDOWN_SETTING;
  STAND_IN_PASSWORD Admin;
  CONST VOID *Logo;
  UINTN LogoSize;
  EFI_STATUS Status;

  StandInResetServices ();
  ZeroMem (&Admin, sizeof (Admin));
  Admin.Kind = PASSWORD_KIND_ADMIN;
  Admin.MaxAttempts = 3;
  Admin.MaxLength = 32;
  Admin.State = 1;
  Admin.Password = mRightPassword.Text;
  StandInSetPasswords (&Admin, 1);

  //
  // The welcome page's logo comes from the personality module.
  //
  Logo = DemoLogoBmp (&LogoSize);
  Status = StandInSetPersonalityLogo (Logo, LogoSize, (UINT32)LogoSize);

  //
  // No item 9752: the prompt's caption has to come from SMBIOS.
  //
  if (!EFI_ERROR (Status)) {
    Status = StandInSetSetting (ITEM_COUNTDOWN, &Countdown, sizeof (Countdown));
  }

  if (!EFI_ERROR (Status)) {
    Status = StandInSetSetting (ITEM_WELCOME_TEXT, mWelcomeText, sizeof (mWelcomeText));
  }

  for (UINTN Index = 0; (Index < ARRAY_SIZE (mStandIns)) && !EFI_ERROR (Status); Index++) {
    Status = mStandIns[Index].Install (&Handles[Index]);
    if (EFI_ERROR (Status)) {
      Handles[Index] = nullptr;
      ReportCheck (FALSE, "flow stand-ins installed", "%a: %r", mStandIns[Index].Name, Status);
      return FALSE;
    }
  }

  return CheckStatus ("flow stand-ins installed", Status, EFI_SUCCESS);
}

/**
  Uninstalls the stand-ins whose handle is set.
**/
STATIC
VOID
UninstallStandIns (IN EFI_HANDLE *Handles)
{
  EFI_STATUS Status = EFI_SUCCESS;
  EFI_STATUS Failed;

  for (UINTN Index = 0; Index < ARRAY_SIZE (mStandIns); Index++) {
    if (Handles[Index] != nullptr) {
      Failed = mStandIns[Index].Uninstall (Handles[Index]);
      if (EFI_ERROR (Failed)) {
        Status = Failed;
      }
    }
  }

  StandInResetServices ();
  CheckStatus ("flow stand-ins uninstalled", Status, EFI_SUCCESS);
}

/**
  Plays the flows on a running driver.
**/
STATIC
VOID
PlayFlows (IN EFI_HANDLE Driver)
{
  UI_DRIVER_PROTOCOL *UiDriver = nullptr;
  FLASH_UPDATE_PAGE_PROTOCOL *FlashPage = nullptr;
  UI_FRAMEWORK_PROTOCOL *Framework = nullptr;
  EFI_STATUS Status;
  UINTN Page;

  Status = gBS->HandleProtocol (Driver, &gUiDriverProtocolGuid, (VOID **)&UiDriver);
  if (!EFI_ERROR (Status)) {
    Status = gBS->HandleProtocol (Driver, &gFlashUpdatePageProtocolGuid, (VOID **)&FlashPage);
  }

  if (!EFI_ERROR (Status)) {
    Status = gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&Framework);
  }

  if (!CheckStatus ("flow protocols found", Status, EFI_SUCCESS)) {
    return;
  }

  UiDriver->ShowWelcomePage ();
  Page = CheckWelcomePageBuilt ();
  if (Page != 0) {
    HoldScreen ("welcome");
    CheckProgressWithoutKey (UiDriver, Page);
    HoldScreen ("welcome-progress");
    CheckWelcomeCountdown (Framework, Page);
  }

  CheckAbortFlagUnwritten ();
  CheckAdminPrompt (UiDriver);
  CheckFinishWelcome (UiDriver);
  CheckFlashPage (FlashPage, Framework);
}

VOID
RunFlowChecks (VOID)
{
  EFI_HANDLE Handles[ARRAY_SIZE (mStandIns)];
  EFI_HANDLE PageEngine = nullptr;
  EFI_HANDLE Driver = nullptr;
  EFI_STATUS Status;

  ZeroMem (Handles, sizeof (Handles));

  //
  // The page engine usually stays from the life-cycle checks; install it
  // only when it is missing, and then remove it again at the end.
  //
  Status = InstallPageEngineStandIn (&PageEngine);
  if (Status != EFI_SUCCESS) {
    PageEngine = nullptr;
  }

  //
  // The services come before the driver: it finds the password service only
  // at its start, as long as SMBIOS is present.
  //
  if ((Status != EFI_SUCCESS) && (Status != EFI_ALREADY_STARTED)) {
    ReportCheck (FALSE, "flow page engine present", "%r", Status);
  } else if (InstallStandIns (Handles)) {
    //
    // Pages are drawn on the screen while the flows play; the console gets
    // a clean screen back for the rest of the report.
    //
    ReportCheck (!EFI_ERROR (StandInStartRendering ()), "pages drawn on the Graphics Output Protocol", "no GOP");
    Driver = LoadAndStartDriver ();
    if (Driver != nullptr) {
      PlayFlows (Driver);
    }

    StandInStopRendering ();
    gST->ConOut->ClearScreen (gST->ConOut);
  }

  UninstallStandIns (Handles);
  if (Driver != nullptr) {
    CheckStatus ("flow driver unloaded", gBS->UnloadImage (Driver), EFI_SUCCESS);
  }

  if (PageEngine != nullptr) {
    CheckStatus ("flow page engine uninstalled", UninstallPageEngineStandIn (PageEngine), EFI_SUCCESS);
  }
}
