/** @file
  The check of a typed password: through the platform's password service,
  or, when there is none, against the fallback password; the count of
  failures and the prompt shown again after a wrong password.
**/
#include "PasswordPage.h"
#include "UiFrameworkCalls.h"

extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Protocol/UiFramework.h>

#define PROMPT_FIELD_FAILED_COLOR 0xB7295A

///
/// Decides alone only when the platform has no password service.
///
STATIC constexpr auto mFallbackPassword = CompileTime::MakeWideString (u"tamo");

/**
  Makes the 8-bit copy that a narrow service takes: the low byte of each
  character, zero-filled to the end of the buffer.

  @retval FALSE  The password does not fit; nothing is sent for it.
**/
STATIC
BOOLEAN
NarrowPassword (IN CONST CHAR16 *Password, OUT CHAR8 (&Narrow)[PASSWORD_NARROW_MAX_LENGTH + 1])
{
  UINTN Length;

  ZeroMem (Narrow, sizeof (Narrow));
  Length = StrnLenS (Password, PASSWORD_NARROW_MAX_LENGTH + 1);
  if (Length > PASSWORD_NARROW_MAX_LENGTH) {
    return FALSE;
  }

  for (UINTN Index = 0; Index < Length; Index++) {
    Narrow[Index] = (CHAR8)(Password[Index] & 0xFF);
  }

  return TRUE;
}

/**
  Asks the service, or compares with the fallback password.

  @return not negative when the password is right.
**/
STATIC
EFI_STATUS
JudgePassword (IN CHAR16 *Password, IN BOOLEAN Alternate)
{
  PASSWORD_REQUEST Request;
  CHAR8 Narrow[PASSWORD_NARROW_MAX_LENGTH + 1];
  VOID *Data = Password;

  if ((mServiceRequest == nullptr) || (mServiceRequest->SubmitRequest == nullptr)) {
    return (StrCmp (Password, mFallbackPassword.Text) == 0) ? EFI_SUCCESS : EFI_SECURITY_VIOLATION;
  }

  if (mCurrentPassword->NarrowChars == 1) {
    //
    // A longer password than the copy can hold is refused rather than cut:
    // a cut copy could match a shorter password.
    //
    if (!NarrowPassword (Password, Narrow)) {
      return EFI_SECURITY_VIOLATION;
    }

    Data = Narrow;
  }

  Request.Index = mCurrentPassword->Index;
  Request.Request = Alternate ? PasswordRequestCheckAlternate : PasswordRequestCheck;
  Request.Padding = 0;
  Request.Status = EFI_SECURITY_VIOLATION;
  Request.Data = (UINT64)(UINTN)Data;
  mServiceRequest->SubmitRequest (&gPasswordRequestGuid, &Request);
  ZeroMem (Narrow, sizeof (Narrow));
  return Request.Status;
}

EFI_STATUS
CheckPassword (IN CHAR16 *Password, IN BOOLEAN Alternate)
{
  STATIC CHAR16 mEmpty[] = {0};
  EFI_STATUS Outcome;
  BOOLEAN Fatal;

  if (mCurrentPassword == nullptr) {
    return EFI_SECURITY_VIOLATION;
  }

  Outcome = JudgePassword ((Password != nullptr) ? Password : mEmpty, Alternate);

  UiSetData (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, 0);
  if (!EFI_ERROR (Outcome)) {
    return Outcome;
  }

  mCurrentPassword->Failures++;
  UiSetStyle (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_STYLE_FIELD_COLOR, PROMPT_FIELD_FAILED_COLOR);
  Fatal = (mCurrentPassword->Failures >= mCurrentPassword->MaxAttempts) ? TRUE : FALSE;
  ShowPasswordPage ((UINTN)mCurrentPassword->Failures, Fatal);
  return EFI_ABORTED;
}
