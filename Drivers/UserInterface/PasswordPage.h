/** @file
  The administrator-unlock prompt and the password records it is built on:
  slots 6 and 8 of the UI driver protocol, the records read from the
  platform's password service, and the prompt page.
**/
#ifndef PASSWORD_PAGE_H_
#define PASSWORD_PAGE_H_

#include <Protocol/PageEngine.h>
#include <Protocol/ServiceRequest.h>
#include <Protocol/Smbios.h>
#include <Protocol/UiDriver.h>

///
/// The driver's record of one password of the service, in the service's order.
///
typedef struct {
  UINT64 Index;       ///< position in the service's list; sent back with every request about it
  UINT64 NarrowChars; ///< 1: the service takes the password as 8-bit characters
  UINT64 InfoValue3;
  UINT64 MaxAttempts; ///< failed checks after which the prompt turns fatal
  UINT64 InfoValue5;
  UINT64 MaxLength; ///< longest password, in characters
  UINT8 InfoBlock7[PASSWORD_INFO_BLOCK_SIZE];
  UINT64 InfoValue8;
  UINT64 Failures; ///< failed checks since the record was made
  UINT64 State;    ///< bit 0: installed; bit 1 (other record): handed on as gOtherPasswordFlag
  UINT64 Kind;     ///< PASSWORD_KIND_ADMIN, PASSWORD_KIND_OTHER, or a kind never selected
} PASSWORD_RECORD;

#define PASSWORD_STATE_INSTALLED 0x1
#define PASSWORD_STATE_OTHER_FLAG 0x2
#define PASSWORD_DEFAULT_MAX_ATTEMPTS 3
#define PASSWORD_DEFAULT_MAX_LENGTH 32

///
/// Longest password that fits the 8-bit copy sent to a service that takes
/// narrow characters (48 bytes with the terminator).
///
#define PASSWORD_NARROW_MAX_LENGTH 47

//
// Handed to other services by address.
//
extern BOOLEAN gAdminPasswordInstalled; ///< bit 0 of the administrator record's State
extern BOOLEAN gOtherPasswordFlag;      ///< bit 1 of the other record's State

//
// Shared by the password page's files.
//
extern PASSWORD_RECORD *mAdminPassword;
extern PASSWORD_RECORD *mOtherPassword;
extern PASSWORD_RECORD *mCurrentPassword;
extern EFI_SMBIOS_PROTOCOL *mSmbios;
extern SERVICE_REQUEST_PROTOCOL *mServiceRequest;
extern UINTN mPromptPage;
extern PROMPT_INTERFACE *mPromptInterface;

/**
  Reads the password records afresh and sets the two state bytes.

  @return the status of the records' read; on an error the bytes keep their values.
**/
EFI_STATUS
UpdatePasswordState (VOID);

/**
  Reads the records and makes the prompt page: the last step of the driver's
  page set-up.

  @return the status of the page's creation, or of the records' read when
          there is no page engine.
**/
EFI_STATUS
InitPasswordPage (VOID);

/**
  Releases the password records and forgets the prompt page (without
  destroying it): the pages are left for the operating system.
**/
VOID CleanUpPasswordPage (VOID);

/**
  Forgets the prompt's saved page, handler and callback (part of the clean-up).
**/
VOID ForgetPasswordPrompt (VOID);

/**
  Returns the records, the located services, the prompt and the caption to
  what they are when the driver is loaded: part of the unload.
**/
VOID ResetPasswordPageState (VOID);

/** Returns the prompt's state (countdown, shown flag, texts) to its load-time value. **/
VOID ResetPasswordPromptState (VOID);

/** Empties the caption's serial-number text. **/
VOID ResetSerialText (VOID);

/**
  Makes the serial-number text of the prompt's caption afresh: from the
  settings service, else from SMBIOS type 1 followed by a blank; what it held
  before when neither answers (empty at first).

  @return the text, at most 19 characters; valid until the next call.
**/
CONST CHAR16 *MakeSerialText (VOID);

//
// UI driver protocol slots 6 and 8.
//
EFI_STATUS EFIAPI PromptPassword (IN UINTN Kind, IN PASSWORD_CALLBACK Callback);
BOOLEAN EFIAPI IsPasswordInstalled (IN UINTN Kind);

/**
  Checks a typed password for the current record, through the service or,
  without one, against the fallback password. The field is emptied after
  every check. A wrong password counts as a failure, colours the field and
  shows the prompt again (a nested event loop), which reports its own outcome.

  @retval EFI_SECURITY_VIOLATION  No prompt is current.
  @retval EFI_ABORTED             The password was wrong; the prompt shown
                                  again has ended and has reported its own
                                  outcome.
  @return the service's status for an accepted password (not negative).
**/
EFI_STATUS
CheckPassword (IN CHAR16 *Password, IN BOOLEAN Alternate);

/**
  Event handler of the prompt page: submissions are checked, the cancel
  control closes the prompt, and after the last allowed failure timer ticks
  count down to the shutdown.

  @return UI_EVENT_NOT_HANDLED or UI_EVENT_HANDLED.
**/
UINTN
EFIAPI
PasswordPageEventHandler (IN OUT UI_EVENT *Event);

/**
  Fills the prompt page with its messages and caption and runs its event loop
  until the prompt ends.

  @param[in] FailureCount  Failed checks so far; 0 shows the first message.
  @param[in] Fatal         The last allowed check has failed: shutdown follows.

  @retval EFI_SUCCESS  The prompt's loop has ended.
**/
EFI_STATUS
ShowPasswordPage (IN UINTN FailureCount, IN BOOLEAN Fatal);

#endif
