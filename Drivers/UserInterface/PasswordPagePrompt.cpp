/** @file
  The administrator-unlock prompt: its two protocol operations, the filling
  of the prompt page, its event handler, and the shutdown countdown after the
  last allowed failure.

  A wrong password shows the prompt again from inside the handler, so the
  prompt's event loops nest, one level per failure. Each level keeps what it
  must restore in its own frame; the texts it hands over live in module
  buffers, so a deep nesting costs little stack.
**/
#include "PasswordPage.h"
#include "UiFrameworkCalls.h"
#include "UiResources.h"
#include "UserInterface.h"

#include <Library/CompileTimeLib.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/PrintLib.h>
}
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/UiFramework.h>

#define PROMPT_MESSAGE_LENGTH 1024
#define PROMPT_TITLE_LENGTH 25
#define PROMPT_CAPTION_LENGTH 25

#define PROMPT_PAGE_STYLE_SHOWN 1
#define PROMPT_PAGE_STYLE_FIRST 0x5F

///
/// Ticks between the last allowed failure and the shutdown.
///
#define SHUTDOWN_TICKS 3

///
/// The key event of Enter on the prompt page: character 13 with 0x82 in the top byte.
///
#define PROMPT_KEY_ENTER 0x8200000DU

STATIC PASSWORD_CALLBACK mPasswordCallback = nullptr;
STATIC UINTN mShutdownCountdown = 0;
STATIC BOOLEAN mPromptShown = FALSE;
STATIC UINTN mSavedActivePage = 0;
STATIC UI_EVENT_HANDLER mSavedEventHandler = nullptr;

STATIC CHAR16 mMessage[PROMPT_MESSAGE_LENGTH];
STATIC CHAR16 mTitle[PROMPT_TITLE_LENGTH];
STATIC CHAR16 mCaption[PROMPT_CAPTION_LENGTH];

STATIC constexpr auto mStringFormat = CompileTime::MakeWideString (u"%s");
STATIC constexpr auto mCaptionFormat = CompileTime::MakeWideString (u"%s-%a");
STATIC CONST CHAR8 mCaptionTag[] = "3B7C";

VOID
ForgetPasswordPrompt (VOID)
{
  mSavedActivePage = 0;
  mPasswordCallback = nullptr;
  mSavedEventHandler = nullptr;
}

VOID
ResetPasswordPromptState (VOID)
{
  ForgetPasswordPrompt ();
  mShutdownCountdown = 0;
  mPromptShown = FALSE;
  ZeroMem (mMessage, sizeof (mMessage));
  ZeroMem (mTitle, sizeof (mTitle));
  ZeroMem (mCaption, sizeof (mCaption));
}

/** Copies the driver's string Id into Buffer ("%s"), or leaves it empty when the framework has none. **/
STATIC
VOID
CopyPromptString (OUT CHAR16 *Buffer, IN UINTN BufferSize, IN EFI_STRING_ID Id)
{
  CHAR16 *String;

  Buffer[0] = 0;
  String = UiGetString (Id);
  if (String != nullptr) {
    UnicodeSPrint (Buffer, BufferSize, mStringFormat.Text, String);
  }
}

STATIC
VOID
HidePromptControl (IN UINTN Control)
{
  UiSetProperty (mPromptPage, PROMPT_CONTAINER, Control, UI_PROPERTY_VISIBLE, 0);
}

/**
  The maximum length handed to the prompt: the administrator record's, but
  never more than a narrow service can be sent.
**/
STATIC
UINTN
PromptMaxLength (VOID)
{
  CONST PASSWORD_RECORD *Record = (mAdminPassword != nullptr) ? mAdminPassword : mCurrentPassword;
  UINT64 Length = Record->MaxLength;

  if ((mCurrentPassword->NarrowChars == 1) && (Length > PASSWORD_NARROW_MAX_LENGTH)) {
    Length = PASSWORD_NARROW_MAX_LENGTH;
  }

  return (UINTN)Length;
}

EFI_STATUS
ShowPasswordPage (IN UINTN FailureCount, IN BOOLEAN Fatal)
{
  EFI_STRING_ID MessageId;
  UINTN SavedPage;
  UI_EVENT_HANDLER SavedHandler;

  if (FailureCount == 0) {
    MessageId = STR_ADMIN_UNLOCK_MESSAGE;
  } else if (Fatal) {
    MessageId = STR_PASSWORD_SHUTDOWN;
    HidePromptControl (PROMPT_CONTROL_SUBMIT);
    HidePromptControl (PROMPT_CONTROL_CANCEL);
    if (mShutdownCountdown == 0) {
      mShutdownCountdown = SHUTDOWN_TICKS;
    }
  } else {
    MessageId = STR_PASSWORD_INCORRECT;
  }

  CopyPromptString (mMessage, sizeof (mMessage), MessageId);
  UiSetStyle (mPromptPage, 0, mPromptPage, UI_STYLE_PAGE,
              mPromptShown ? PROMPT_PAGE_STYLE_SHOWN : PROMPT_PAGE_STYLE_FIRST);
  CopyPromptString (mTitle, sizeof (mTitle), STR_ADMIN_UNLOCK_TITLE);
  UnicodeSPrint (mCaption, sizeof (mCaption), mCaptionFormat.Text, MakeSerialText (), mCaptionTag);

  mPromptInterface->ShowPrompt (mTitle, mMessage, mCaption, 0, PromptMaxLength (), PasswordPageEventHandler);

  SavedPage = UiGetActivePage ();
  SavedHandler = UiGetEventHandler ();
  mSavedActivePage = SavedPage;
  mSavedEventHandler = SavedHandler;
  UiExitEventLoop ();
  UiSetActivePage (mPromptPage);
  UiSetEventHandler (PasswordPageEventHandler);
  UiRunEventLoop ();
  UiSetEventHandler (SavedHandler);
  UiSetActivePage (SavedPage);

  mPromptShown = TRUE;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
PromptPassword (IN UINTN Kind, IN PASSWORD_CALLBACK Callback)
{
  PASSWORD_RECORD *Record;

  if (Kind == PASSWORD_KIND_ADMIN) {
    Record = mAdminPassword;
  } else if (Kind == PASSWORD_KIND_OTHER) {
    Record = mOtherPassword;
  } else {
    Record = mCurrentPassword;
  }

  //
  // Without a record there is nothing to check against, and without the
  // prompt page nothing to show.
  //
  if (Record == nullptr) {
    return EFI_NOT_FOUND;
  }

  if ((mPromptInterface == nullptr) || (mPromptInterface->ShowPrompt == nullptr)) {
    return EFI_NOT_READY;
  }

  mShutdownCountdown = 0;
  mCurrentPassword = Record;
  mPasswordCallback = Callback;
  return ShowPasswordPage ((UINTN)Record->Failures, FALSE);
}

BOOLEAN EFIAPI
IsPasswordInstalled (IN UINTN Kind)
{
  PASSWORD_RECORD *Record;

  if (EFI_ERROR (UpdatePasswordState ())) {
    return FALSE;
  }

  if (Kind == PASSWORD_KIND_ADMIN) {
    Record = mAdminPassword;
  } else if (Kind == PASSWORD_KIND_OTHER) {
    Record = mOtherPassword;
  } else {
    return FALSE;
  }

  return ((Record != nullptr) && ((Record->State & PASSWORD_STATE_INSTALLED) != 0)) ? TRUE : FALSE;
}

/**
  Checks a submitted text and reports an own outcome to the caller's callback.

  The callback hears only the outcome of a check made at this level: when the
  password was wrong, the prompt shown again has reported its own outcome
  (or ended in cancel or shutdown), so this level only closes its page.

  @param[in,out] Event     The event being handled; its code becomes the close code when the prompt ends.
  @param[in]     Text      The submitted text.
  @param[in]     Alternate Use the alternate check.
  @param[in]     ExitLoop  Also leave the event loop when the prompt ends.
**/
STATIC
VOID
CheckSubmittedPassword (IN OUT UI_EVENT *Event, IN CHAR16 *Text, IN BOOLEAN Alternate, IN BOOLEAN ExitLoop)
{
  EFI_STATUS Status;

  Status = CheckPassword (Text, Alternate);
  if (Status != EFI_ABORTED) {
    if ((mPasswordCallback != nullptr) && (mCurrentPassword != nullptr)) {
      mPasswordCallback ((UINTN)mCurrentPassword->Kind, Status);
    }

    if (EFI_ERROR (Status)) {
      return;
    }
  }

  Event->EventCode = UI_EVENT_CLOSE;
  if (ExitLoop) {
    UiExitEventLoop ();
  }
}

UINTN
EFIAPI
PasswordPageEventHandler (IN OUT UI_EVENT *Event)
{
  if (Event == nullptr) {
    return UI_EVENT_NOT_HANDLED;
  }

  switch (Event->EventCode) {
    case UI_EVENT_TIMER_TICK:
      if (mShutdownCountdown == 0) {
        return UI_EVENT_NOT_HANDLED;
      }

      if (mShutdownCountdown == 1) {
        gRT->ResetSystem (EfiResetShutdown, EFI_SUCCESS, 0, nullptr);
      } else {
        mShutdownCountdown--;
      }

      return UI_EVENT_HANDLED;

    case UI_EVENT_KEY:
      if (Event->Data != PROMPT_KEY_ENTER) {
        return UI_EVENT_NOT_HANDLED;
      }

      UiGetData (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, &Event->Data);
      if (mShutdownCountdown == 0) {
        CheckSubmittedPassword (Event, UiPointer<CHAR16> (Event->Data), TRUE, TRUE);
      }

      return UI_EVENT_HANDLED;

    case UI_EVENT_CONTROL_ACTIVATED:
      if ((Event->Control == PROMPT_CONTROL_SUBMIT) && (mShutdownCountdown == 0)) {
        CheckSubmittedPassword (Event, UiPointer<CHAR16> (Event->Data), FALSE, FALSE);
        return UI_EVENT_HANDLED;
      }

      if (Event->Control == PROMPT_CONTROL_CANCEL) {
        UiSetData (mPromptPage, PROMPT_CONTAINER, PROMPT_CONTROL_PASSWORD, UI_DATA_TEXT, 0);
        mPromptShown = FALSE;
        Event->EventCode = UI_EVENT_CLOSE;
        return UI_EVENT_HANDLED;
      }

      return UI_EVENT_NOT_HANDLED;

    case UI_EVENT_TEXT_SUBMITTED:
      if (mShutdownCountdown == 0) {
        CheckSubmittedPassword (Event, UiPointer<CHAR16> (Event->Data), FALSE, TRUE);
      }

      return UI_EVENT_HANDLED;

    default:
      return UI_EVENT_NOT_HANDLED;
  }
}
