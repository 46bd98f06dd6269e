/** @file
  The password records: read from the platform's password service through
  the service-request protocol, the selection of the administrator record and
  of the other record, the two state bytes handed on to other services, and
  the prompt page's creation and clean-up.

  The service is another driver: its count and its answers are taken as
  given, but a count whose records do not fit in pool is a failed allocation,
  not an overrun.
**/
#include "PasswordPage.h"
#include "UserInterface.h"

#include <Library/TrackedAllocationLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/UiFramework.h>

#include "UiFrameworkCalls.h"

#define TRACKED_POOL_FILE "Drivers/UserInterface/PasswordPage"

BOOLEAN gAdminPasswordInstalled = FALSE;
BOOLEAN gOtherPasswordFlag = FALSE;

PASSWORD_RECORD *mAdminPassword = nullptr;
PASSWORD_RECORD *mOtherPassword = nullptr;
PASSWORD_RECORD *mCurrentPassword = nullptr;
EFI_SMBIOS_PROTOCOL *mSmbios = nullptr;
SERVICE_REQUEST_PROTOCOL *mServiceRequest = nullptr;
UINTN mPromptPage = 0;
PROMPT_INTERFACE *mPromptInterface = nullptr;

STATIC PASSWORD_RECORD *mPasswordList = nullptr;
STATIC UINTN mPasswordCount = 0;

#define PROMPT_FIELD_COLOR 0xAAAAAA

STATIC
VOID
ForgetSelections (VOID)
{
  mAdminPassword = nullptr;
  mOtherPassword = nullptr;
  mCurrentPassword = nullptr;
}

/**
  Submits one password request about record Index; the request's Status is
  preset to the failure assumed until the service says otherwise.
**/
STATIC
EFI_STATUS
SubmitPasswordRequest (IN OUT PASSWORD_REQUEST *Request, IN UINT64 Index, IN UINT32 Code, IN VOID *Data)
{
  Request->Index = Index;
  Request->Request = Code;
  Request->Padding = 0;
  Request->Status = EFI_NOT_FOUND;
  Request->Data = (UINT64)(UINTN)Data;
  return mServiceRequest->SubmitRequest (&gPasswordRequestGuid, Request);
}

/**
  Reads the attributes and the state of one record.

  @return what the service returned for the attribute request, or EFI_SUCCESS
          once the attributes were given.
**/
STATIC
EFI_STATUS
ReadPasswordRecord (IN OUT PASSWORD_RECORD *Record)
{
  PASSWORD_INFO_REQUEST Info;
  PASSWORD_REQUEST StateRequest;
  UINT8 Discarded[PASSWORD_INFO_DISCARDED_SIZE];
  EFI_STATUS Status;

  Info.Discarded = (UINT64)(UINTN)Discarded;
  Info.Kind = (UINT64)(UINTN)&Record->Kind;
  Info.NarrowChars = (UINT64)(UINTN)&Record->NarrowChars;
  Info.InfoValue3 = (UINT64)(UINTN)&Record->InfoValue3;
  Info.MaxAttempts = (UINT64)(UINTN)&Record->MaxAttempts;
  Info.InfoValue5 = (UINT64)(UINTN)&Record->InfoValue5;
  Info.MaxLength = (UINT64)(UINTN)&Record->MaxLength;
  Info.InfoBlock7 = (UINT64)(UINTN)Record->InfoBlock7;
  Info.InfoValue8 = (UINT64)(UINTN)&Record->InfoValue8;
  Status = SubmitPasswordRequest (&Info.Header, Record->Index, PasswordRequestGetInfo, &Info.Discarded);
  if (EFI_ERROR (Info.Header.Status)) {
    return Status;
  }

  SubmitPasswordRequest (&StateRequest, Record->Index, PasswordRequestGetState, &Record->State);
  return EFI_SUCCESS;
}

/**
  Makes the records from the service's list: a count, then each record's
  attributes and state. A later record of a kind replaces an earlier one.

  @return the status of the last request or of the allocation.
**/
STATIC
EFI_STATUS
ReadPasswordList (IN UINT64 Count)
{
  EFI_STATUS Status;

  FREE_TRACKED_POOL (mPasswordList);
  mPasswordCount = 0;
  ForgetSelections ();

  //
  // A count from outside whose array size does not fit in a UINTN cannot be
  // allocated either.
  //
  if (Count > MAX_UINTN / sizeof (PASSWORD_RECORD)) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = ALLOCATE_TRACKED_POOL (mPasswordList, (UINTN)Count * sizeof (PASSWORD_RECORD));
  if (EFI_ERROR (Status)) {
    return Status;
  }

  mPasswordCount = (UINTN)Count;
  for (UINTN Index = 0; Index < mPasswordCount; Index++) {
    PASSWORD_RECORD *Record = &mPasswordList[Index];

    Record->Index = Index;
    Status = ReadPasswordRecord (Record);
    if (Record->Kind == PASSWORD_KIND_ADMIN) {
      mAdminPassword = Record;
    } else if (Record->Kind == PASSWORD_KIND_OTHER) {
      mOtherPassword = Record;
    }
  }

  return Status;
}

/**
  Makes the two records that stand in when the service gives none: an
  administrator and an other password, neither installed.
**/
STATIC
EFI_STATUS
MakeDefaultPasswordPair (VOID)
{
  EFI_STATUS Status;

  Status = ALLOCATE_TRACKED_POOL (mPasswordList, 2 * sizeof (PASSWORD_RECORD));
  if (EFI_ERROR (Status)) {
    mPasswordCount = 0;
    return Status;
  }

  mPasswordCount = 2;
  mPasswordList[0].Kind = PASSWORD_KIND_ADMIN;
  mPasswordList[1].Kind = PASSWORD_KIND_OTHER;
  for (UINTN Index = 0; Index < 2; Index++) {
    mPasswordList[Index].MaxAttempts = PASSWORD_DEFAULT_MAX_ATTEMPTS;
    mPasswordList[Index].MaxLength = PASSWORD_DEFAULT_MAX_LENGTH;
  }

  mAdminPassword = &mPasswordList[0];
  mOtherPassword = &mPasswordList[1];
  return EFI_SUCCESS;
}

/**
  Reads the password list from the service, or makes the default pair when
  there is no list at all.

  @retval EFI_NOT_FOUND  There is no service (a list made before stays).
  @return the status of the service's requests or of the allocation.
**/
STATIC
EFI_STATUS
FindPasswordProtocol (VOID)
{
  PASSWORD_REQUEST Request;
  EFI_STATUS Result = EFI_NOT_FOUND;
  UINT64 Count = 0;

  if ((mServiceRequest != nullptr) && (mServiceRequest->SubmitRequest != nullptr)) {
    Result = SubmitPasswordRequest (&Request, 0, PasswordRequestGetCount, &Count);
    if (!EFI_ERROR (Request.Status)) {
      Result = ReadPasswordList (Count);
    }
  }

  if (mPasswordList == nullptr) {
    Result = MakeDefaultPasswordPair ();
  }

  if (mPasswordList != nullptr) {
    if (mOtherPassword == nullptr) {
      mOtherPassword = &mPasswordList[0];
    }

    if ((mAdminPassword == nullptr) && (mPasswordCount > 1)) {
      mAdminPassword = &mPasswordList[1];
    }
  }

  return Result;
}

EFI_STATUS
UpdatePasswordState (VOID)
{
  EFI_STATUS Status;

  //
  // Both services are looked for until SMBIOS is found; from then on a
  // service-request protocol installed later is not looked for again.
  //
  if (mSmbios == nullptr) {
    if (EFI_ERROR (gBS->LocateProtocol (&gEfiSmbiosProtocolGuid, nullptr, (VOID **)&mSmbios))) {
      mSmbios = nullptr;
    }

    if (EFI_ERROR (gBS->LocateProtocol (&gServiceRequestProtocolGuid, nullptr, (VOID **)&mServiceRequest))) {
      mServiceRequest = nullptr;
    }
  }

  Status = FindPasswordProtocol ();
  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (mAdminPassword != nullptr) {
    gAdminPasswordInstalled = ((mAdminPassword->State & PASSWORD_STATE_INSTALLED) != 0) ? TRUE : FALSE;
  }

  if (mOtherPassword != nullptr) {
    gOtherPasswordFlag = ((mOtherPassword->State & PASSWORD_STATE_OTHER_FLAG) != 0) ? TRUE : FALSE;
  }

  return Status;
}

EFI_STATUS
InitPasswordPage (VOID)
{
  EFI_STATUS Status;

  Status = UpdatePasswordState ();
  if ((gPageEngine == nullptr) || (gPageEngine->CreatePromptPage == nullptr)) {
    return Status;
  }

  Status = gPageEngine->CreatePromptPage (0, &mPromptPage, &mPromptInterface);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  UiSetStyle (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_COLOR, PROMPT_FIELD_COLOR);
  UiSetStyle (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_FONT, 0, 0, 18);
  UiSetStyle (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_TEXT_1, UI_STYLE_FONT, 0, 0, 22);
  UiSetStyle (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_TEXT_2, UI_STYLE_FONT, 0, 0, 18);
  UiSetStyle (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_TEXT_3, UI_STYLE_FONT, 0, 0, 22);
  return Status;
}

VOID
CleanUpPasswordPage (VOID)
{
  mPromptPage = 0;
  FREE_TRACKED_POOL (mPasswordList);
  mPasswordCount = 0;
  ForgetSelections ();
  ForgetPasswordPrompt ();
}

VOID
ResetPasswordPageState (VOID)
{
  CleanUpPasswordPage ();
  gAdminPasswordInstalled = FALSE;
  gOtherPasswordFlag = FALSE;
  mSmbios = nullptr;
  mServiceRequest = nullptr;
  mPromptInterface = nullptr;
  ResetPasswordPromptState ();
  ResetSerialText ();
}
