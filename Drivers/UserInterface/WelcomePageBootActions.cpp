/** @file
  The actions that the welcome page's hot keys choose: enter Setup (behind the
  administrator prompt when the platform asks for it), launch Diagnostics,
  open the one-time boot menu; an OS request to boot to the firmware UI; and
  the end of the welcome page before the OS boots.

  None of the destinations is drawn here: each is another driver's service.
**/
#include "FlashUpdatePage.h"
#include "PasswordPage.h"
#include "PlatformSettings.h"
#include "UiFrameworkCalls.h"
#include "UserInterface.h"
#include "WelcomePage.h"

#include <Guid/GlobalVariable.h>
#include <Guid/KestUiGuids.h>
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/BootMenu.h>
#include <Protocol/DiagnosticsLaunch.h>
#include <Protocol/PiPcd.h>
#include <Protocol/ServiceRequest.h>
#include <Protocol/SetupState.h>

#define UI_MODE_BOOT_PCD_TRUE 0
#define UI_MODE_BOOT_PCD_FALSE 2

//
// Values handed to the other services.
//
#define SERVICE_FLAG_ADMIN_PASSWORD 1
#define SERVICE_FLAG_OTHER_PASSWORD 2
#define DIAGNOSTICS_VALUE_1 1
#define DIAGNOSTICS_VALUE_2 3
#define DIAGNOSTICS_VALUE_3 2

STATIC SETUP_STATE_PROTOCOL *mSetupState = nullptr;
STATIC DIAGNOSTICS_LAUNCH_PROTOCOL *mDiagnosticsLaunch = nullptr;
STATIC EFI_PCD_PROTOCOL *mPcd = nullptr;

STATIC constexpr auto mOsIndicationsName = CompileTime::MakeWideString (u"OsIndications");
STATIC constexpr auto mRemovingProgressBar = CompileTime::MakeWideString (u"Removing the Progress Bar for Booting OS");

/** Members of an event group run when it is signalled; the event itself has nothing to do. **/
STATIC
VOID EFIAPI
EmptyNotify (IN EFI_EVENT Event, IN VOID *Context)
{}

STATIC
EFI_STATUS
CreateGroupEvent (IN EFI_TPL Tpl, IN EFI_GUID *Group, OUT EFI_EVENT *Event)
{
  return gBS->CreateEventEx (EVT_NOTIFY_SIGNAL, Tpl, EmptyNotify, nullptr, Group, Event);
}

/** Hands the administrator-password byte to the Setup-state service, when there is one. **/
STATIC
VOID
SetSetupState (VOID)
{
  if (EFI_ERROR (gBS->LocateProtocol (&gSetupStateProtocolGuid, nullptr, (VOID **)&mSetupState))) {
    mSetupState = nullptr;
  }

  if ((mSetupState != nullptr) && (mSetupState->SetSetupFlag != nullptr)) {
    mSetupState->SetSetupFlag (SERVICE_FLAG_ADMIN_PASSWORD, &gAdminPasswordInstalled);
  }
}

/**
  Sets the UI mode for the hand-over from the platform's PCD token: mode 0
  when it is TRUE, 2 when it is FALSE or cannot be read.
**/
STATIC
VOID
SetUiModeForBoot (VOID)
{
  BOOLEAN UseModeZero = FALSE;

  if (mPcd == nullptr) {
    if (EFI_ERROR (gBS->LocateProtocol (&gEfiPcdProtocolGuid, nullptr, (VOID **)&mPcd))) {
      mPcd = nullptr;
    }
  }

  if ((mPcd != nullptr) && (mPcd->GetBool != nullptr)) {
    UseModeZero = mPcd->GetBool (&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE);
  }

  UiSetUiMode (UseModeZero ? UI_MODE_BOOT_PCD_TRUE : UI_MODE_BOOT_PCD_FALSE);
}

/**
  Completion of the administrator prompt: a refused password brings the
  prompt back; an accepted one enters Setup.
**/
STATIC
VOID EFIAPI
AdminUnlockDone (IN UINTN Kind, IN EFI_STATUS Status)
{
  EFI_EVENT SetupEntry;

  if (EFI_ERROR (Status)) {
    PromptPassword (PASSWORD_KIND_ADMIN, AdminUnlockDone);
    return;
  }

  if (EFI_ERROR (CreateGroupEvent (TPL_CALLBACK, &gSetupEntryEventGroupGuid, &SetupEntry))) {
    return;
  }

  ExitWelcomePage ();
  SetSetupState ();
  UiSetUiMode (2);
  gBS->SignalEvent (SetupEntry);
  gBS->CloseEvent (SetupEntry);
  UiEndUiSession ();
}

EFI_STATUS EFIAPI
LaunchSetup (VOID)
{
  SERVICE_REQUEST_PROTOCOL *ServiceRequest = nullptr;
  SETTINGS_PROTOCOL *Settings;
  EFI_EVENT SetupEntry;
  EFI_EVENT PreSetup;
  EFI_STATUS Status;
  UINT8 Gate = 0;

  Status = LocateSettings (&Settings);
  if (Status == EFI_SUCCESS) {
    Status = ReadSetting (Settings, SETTING_SETUP_ASKS_PASSWORD, sizeof (Gate), &Gate);
    if (Status == EFI_NOT_FOUND) {
      Gate = 0;
      Status = EFI_SUCCESS;
    }
  }

  if (!EFI_ERROR (Status) && (Gate != 0) && IsPasswordInstalled (PASSWORD_KIND_ADMIN)) {
    ExitWelcomePage ();
    PromptPassword (PASSWORD_KIND_ADMIN, AdminUnlockDone);
    UiRunEventLoop ();
    return Status;
  }

  Status = CreateGroupEvent (TPL_CALLBACK, &gSetupEntryEventGroupGuid, &SetupEntry);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  ExitWelcomePage ();
  if (!EFI_ERROR (gBS->LocateProtocol (&gServiceRequestProtocolGuid, nullptr, (VOID **)&ServiceRequest)) &&
      (ServiceRequest != nullptr) && (ServiceRequest->SubmitRequest != nullptr)) {
    ServiceRequest->SubmitRequest (&gPreSetupRequestGuid, &Gate);
  }

  if (!EFI_ERROR (CreateGroupEvent (TPL_NOTIFY, &gPreSetupEventGroupGuid, &PreSetup))) {
    gBS->SignalEvent (PreSetup);
    gBS->CloseEvent (PreSetup);
  }

  SetSetupState ();
  SetUiModeForBoot ();
  Status = gBS->SignalEvent (SetupEntry);
  gBS->CloseEvent (SetupEntry);
  UiEndUiSession ();
  return Status;
}

EFI_STATUS EFIAPI
LaunchBootMenu (VOID)
{
  BOOT_MENU_PROTOCOL *BootMenu = nullptr;
  EFI_HANDLE *Handles = nullptr;
  UINTN HandleCount = 0;
  EFI_STATUS Status;

  UpdatePasswordState ();

  Status = gBS->LocateHandleBuffer (ByProtocol, &gBootMenuProtocolGuid, nullptr, &HandleCount, &Handles);
  if ((HandleCount == 0) || (Handles == nullptr)) {
    if (Handles != nullptr) {
      gBS->FreePool (Handles);
    }

    return EFI_ERROR (Status) ? Status : EFI_NOT_FOUND;
  }

  for (UINTN Index = 0; Index < HandleCount; Index++) {
    BootMenu = nullptr;
    Status = gBS->HandleProtocol (Handles[Index], &gBootMenuProtocolGuid, (VOID **)&BootMenu);
    if (!EFI_ERROR (Status) && (BootMenu != nullptr)) {
      break;
    }

    BootMenu = nullptr;
  }

  gBS->FreePool (Handles);
  if (BootMenu == nullptr) {
    return EFI_ERROR (Status) ? Status : EFI_NOT_FOUND;
  }

  if (BootMenu->SetBootMenuFlag != nullptr) {
    BootMenu->SetBootMenuFlag (SERVICE_FLAG_ADMIN_PASSWORD, &gAdminPasswordInstalled);
    BootMenu->SetBootMenuFlag (SERVICE_FLAG_OTHER_PASSWORD, &gOtherPasswordFlag);
  }

  ExitWelcomePage ();
  SetUiModeForBoot ();
  return (BootMenu->RunBootMenu != nullptr) ? BootMenu->RunBootMenu () : EFI_UNSUPPORTED;
}

EFI_STATUS
LaunchDiagnostics (VOID)
{
  EFI_STATUS Status;
  UINT16 Target = DIAGNOSTICS_TARGET_ALL;
  UINTN Out1 = 0;
  UINTN Out2 = 0;

  Status = gBS->LocateProtocol (&gDiagnosticsLaunchProtocolGuid, nullptr, (VOID **)&mDiagnosticsLaunch);
  if (EFI_ERROR (Status)) {
    mDiagnosticsLaunch = nullptr;
  }

  if (mDiagnosticsLaunch == nullptr) {
    return EFI_ERROR (Status) ? Status : EFI_NOT_FOUND;
  }

  if ((mDiagnosticsLaunch->PrepareDiagnostics == nullptr) || (mDiagnosticsLaunch->StartDiagnostics == nullptr)) {
    return EFI_UNSUPPORTED;
  }

  Status = mDiagnosticsLaunch->PrepareDiagnostics (mDiagnosticsLaunch, DIAGNOSTICS_VALUE_1, DIAGNOSTICS_VALUE_2,
                                                   DIAGNOSTICS_VALUE_3, &Target);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  UiResetUiState ();
  return mDiagnosticsLaunch->StartDiagnostics (mDiagnosticsLaunch, DIAGNOSTICS_VALUE_1, DIAGNOSTICS_VALUE_2, &Out1,
                                               &Out2);
}

VOID
ResetBootActionState (VOID)
{
  mSetupState = nullptr;
  mDiagnosticsLaunch = nullptr;
  mPcd = nullptr;
}

VOID
RunHotKeyAction (VOID)
{
  UINT64 OsIndications = 0;
  UINTN Size = sizeof (OsIndications);

  //
  // An OS that asked to boot to the firmware UI gets the boot menu first; the
  // request is consumed, every other bit is written back as it was.
  //
  if (!EFI_ERROR (gRT->GetVariable (const_cast<CHAR16 *> (mOsIndicationsName.Text), &gEfiGlobalVariableGuid, nullptr,
                                    &Size, &OsIndications)) &&
      ((OsIndications & EFI_OS_INDICATIONS_BOOT_TO_FW_UI) != 0)) {
    OsIndications &= ~EFI_OS_INDICATIONS_BOOT_TO_FW_UI;
    gRT->SetVariable (const_cast<CHAR16 *> (mOsIndicationsName.Text), &gEfiGlobalVariableGuid,
                      EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS,
                      sizeof (OsIndications), &OsIndications);
    LaunchBootMenu ();
  }

  switch (mHotKeyAction) {
    case HOT_KEY_ACTION_SETUP:
      LaunchSetup ();
      break;
    case HOT_KEY_ACTION_DIAGNOSTICS:
      SetUiModeForBoot ();
      LaunchDiagnostics ();
      break;
    case HOT_KEY_ACTION_BOOT_MENU:
      LaunchBootMenu ();
      break;
    default:
      break;
  }

  mActionPending = FALSE;
}

EFI_STATUS EFIAPI
FinishWelcomePage (VOID)
{
  SETTINGS_PROTOCOL *Settings;
  EFI_STATUS Status;

  UpdateWelcomeProgress (const_cast<CHAR16 *> (mRemovingProgressBar.Text), 100);
  ExitWelcomePage ();
  if (mActionPending) {
    RunHotKeyAction ();
  }

  Status = LocateSettings (&Settings);
  if (Settings != nullptr) {
    Status = ReadSetting (Settings, SETTING_DIAGNOSTICS_AT_BOOT, sizeof (mDiagnosticsAtBoot), &mDiagnosticsAtBoot);
    if (mDiagnosticsAtBoot) {
      SetWelcomeProgress (100);
    }
  }

  ForgetFlashUpdatePage ();
  CleanUpPasswordPage ();

  mWelcomePage = 0;
  mWelcomeLogoImage = 0;
  gLogoControl = 0;
  gProgressControl = 0;
  gStatusControl = 0;
  mTextControl = 0;
  mMessageControl = 0;
  mLastTickValue = 0;
  return Status;
}
