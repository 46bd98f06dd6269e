/** @file
  The welcome page, its hot keys and the boot actions they choose: slots 0 to
  5 of the UI driver protocol, and the state that the flash update page
  shares with the welcome page.
**/
#ifndef WELCOME_PAGE_H_
#define WELCOME_PAGE_H_

#include <Protocol/PageEngine.h>
#include <Protocol/SimpleTextInEx.h>
#include <Uefi.h>

///
/// Actions that a hot key records.
///
#define HOT_KEY_ACTION_NONE 0
#define HOT_KEY_ACTION_SETUP 2
#define HOT_KEY_ACTION_DIAGNOSTICS 6
#define HOT_KEY_ACTION_BOOT_MENU 7

///
/// Width of the welcome text line, in characters.
///
#define WELCOME_TEXT_LENGTH 80

//
// Shared with the flash update page: whichever page was built last owns the
// image, progress and status controls and the countdown.
//
extern UINTN gLogoControl;
extern UINTN gProgressControl;
extern UINTN gStatusControl;
extern INT16 mPageCountdown; ///< seconds left before the page closes itself
extern UINTN mLastTickValue; ///< (Second * 100) / 60 of the last counted tick

//
// Welcome page state that the boot actions read and clear.
//
extern UINTN mWelcomePage;
extern UINTN mTextControl;
extern UINTN mMessageControl;
extern UINTN mWelcomeLogoImage;
extern UINTN mHotKeyAction;
extern BOOLEAN mActionPending;
extern BOOLEAN mDiagnosticsAtBoot;

//
// UI driver protocol slots 0 to 5.
//
VOID EFIAPI ShowWelcomePage (VOID);
VOID EFIAPI UpdateWelcomeProgress (IN CHAR16 *Message, IN UINTN Progress);
VOID EFIAPI RefreshWelcomePage (VOID);
EFI_STATUS EFIAPI LaunchSetup (VOID);
EFI_STATUS EFIAPI LaunchBootMenu (VOID);
EFI_STATUS EFIAPI FinishWelcomePage (VOID);

/**
  Ends the welcome page: stops watching the keys, publishes the boot logo,
  leaves the event loop and destroys the page. Control handles, countdown and
  the recorded action stay.
**/
VOID ExitWelcomePage (VOID);

/**
  Records a progress value; once a key has shown the bar, the value reaches
  it (100 or more hides it). Refreshes the page.
**/
VOID SetWelcomeProgress (IN UINTN Value);

/**
  Event handler of the welcome page's controls: counts clock seconds, closes
  the page when the countdown or the progress has run out, runs a recorded
  action at the next key, and closes on Enter or Escape.

  @return UI_EVENT_NOT_HANDLED, UI_EVENT_HANDLED or UI_EVENT_HANDLED_PAGE_CLOSED.
**/
UINTN
EFIAPI
WelcomePageEventHandler (IN OUT UI_EVENT *Event);

/**
  Counts a timer tick of a page that closes itself (welcome or flash page):
  each new clock second takes one second off mPageCountdown.

  @param[in] TimeData  The tick's data: an EFI_TIME pointer, or 0.

  @retval TRUE   A new clock second was counted.
  @retval FALSE  No time, a Second of 60 or more, or the second counted last.
**/
BOOLEAN
CountPageSecond (IN UINTN TimeData);

/** Makes the progress bar visible; from then on progress values reach it. **/
VOID ShowWelcomeProgressBar (VOID);

/**
  Returns the welcome page's state, and the state it shares with the flash
  page, to what it is when the driver is loaded: part of the unload.
**/
VOID ResetWelcomePageState (VOID);

//
// Hot keys.
//

/**
  Gets the console's extended text input once and keeps it.

  @return the protocol, or null when the console-input handle has none.
**/
EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL *GetTextInputEx (VOID);

/**
  Registers a key notification for each watched key.

  @retval EFI_UNSUPPORTED  The console has no extended text input.
  @return the status of the last registration.
**/
EFI_STATUS
RegisterHotKeys (VOID);

/** Unregisters every key notification that RegisterHotKeys made. **/
VOID UnregisterHotKeys (VOID);

/** Forgets the notification handles and the console's text input: part of the unload. **/
VOID ResetHotKeyState (VOID);

/**
  Key notification of the watched keys, also called for each key that a
  progress update reads: records the action of F2, F9 or F12, shows its
  message (or the boot options hint), shows the progress bar and writes the
  abort flag once an action is recorded.

  @return EFI_SUCCESS.
**/
EFI_STATUS
EFIAPI
HotKeyNotify (IN EFI_KEY_DATA *KeyData);

//
// Boot actions.
//

/** Runs the recorded action, after honouring an OS request for the firmware UI. **/
VOID RunHotKeyAction (VOID);

/** Starts the platform diagnostics. @return the status of the start, or why it did not start. **/
EFI_STATUS
LaunchDiagnostics (VOID);

/** Forgets the services that the boot actions located: part of the unload. **/
VOID ResetBootActionState (VOID);

#endif
