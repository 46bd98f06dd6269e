/** @file
  Stand-in for the platform's page engine: PAGE_ENGINE_PROTOCOL over a page
  model that tests can read back.

  Pages and controls:
  - A page handle is a non-zero value that is never reused. A destroyed page
    refuses every later call (EFI_INVALID_PARAMETER) but stays readable through
    the queries below until the page engine is uninstalled.
  - A control handle is a non-zero value unique among all pages. The prompt
    page's controls are the fixed ids 1711 to 1716 in container 1710 (1711 to
    1713 text, 1714 the password field, 1715 cancel, 1716 submit). Page-wide
    attributes are addressed with container 0 and the page handle as control.
  - Attributes are kept per control as tag -> (V1, V2, V3), the last write
    winning; the order of writes is what the call observer (StandInCalls.h)
    sees.
  - The prompt interface has no pointer to itself, so ShowPrompt acts on the
    prompt page made last that is not destroyed.

  Both stand-ins share the page model: they live in one image.
**/
#ifndef PAGE_ENGINE_STAND_IN_H_
#define PAGE_ENGINE_STAND_IN_H_

#include <Protocol/PageEngine.h>
#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

/**
  Installs PAGE_ENGINE_PROTOCOL on *Handle (a new handle when it is null).

  @retval EFI_SUCCESS            Installed.
  @retval EFI_INVALID_PARAMETER  Handle is null.
  @retval EFI_NOT_READY          gBS is not set.
  @retval EFI_ALREADY_STARTED    Installed already.
  @return the status of a failed InstallProtocolInterface.
**/
EFI_STATUS
EFIAPI
InstallPageEngineStandIn (IN OUT EFI_HANDLE *Handle);

/**
  Uninstalls the protocol from Handle and releases every page, control and
  text copy: no pool buffer of the page engine is left.

  @retval EFI_SUCCESS            Uninstalled.
  @retval EFI_NOT_STARTED        Not installed.
  @retval EFI_INVALID_PARAMETER  Handle is not the handle it was installed on.
  @return the status of a failed UninstallProtocolInterface (nothing released).
**/
EFI_STATUS
EFIAPI
UninstallPageEngineStandIn (IN EFI_HANDLE Handle);

///
/// What made a control.
///
typedef enum {
  StandInControlNone,
  StandInControlImage,    ///< CreateImageControl
  StandInControlText,     ///< CreateTextControl, and prompt controls 1711 to 1713
  StandInControlProgress, ///< CreateProgressControl
  StandInControlField,    ///< the prompt's password field 1714
  StandInControlButton,   ///< the prompt's cancel 1715 and submit 1716
  StandInControlPage      ///< the page itself (page-wide attributes)
} STAND_IN_CONTROL_KIND;

typedef struct {
  UINTN Handle;
  UINTN PageId; ///< 0 for a prompt page
  EFI_HII_HANDLE HiiHandle;
  UINTN ThemeId;
  BOOLEAN Prompt; ///< made by CreatePromptPage
  BOOLEAN Destroyed;
  UINTN ControlCount; ///< controls made on it (the page itself not counted)
  UINTN RefreshCount; ///< accepted RefreshPage calls
  UINTN DisplayCount; ///< accepted DisplayPage calls
} STAND_IN_PAGE_INFO;

typedef struct {
  UINTN Handle;
  STAND_IN_CONTROL_KIND Kind;
  UINTN Container;
  EFI_HII_HANDLE HiiHandle;
  UINTN Argument;           ///< string id (text) or theme id (image, progress) given at creation
  UINTN Minimum;            ///< progress controls
  UINTN Maximum;            ///< progress controls
  UI_EVENT_HANDLER Handler; ///< given at creation, or null
  UINTN AttributeWrites;    ///< accepted Set calls on it
} STAND_IN_CONTROL_INFO;

///
/// A control's text: a copy of a string, or a reference into an HII package,
/// or neither (empty).
///
typedef struct {
  CONST CHAR16 *String;     ///< the copy, or null
  EFI_HII_HANDLE HiiHandle; ///< the reference, when String is null
  EFI_STRING_ID StringId;   ///< 0 when there is no reference
} STAND_IN_TEXT;

///
/// What the last ShowPrompt of a prompt page received; the texts are copies.
///
typedef struct {
  UINTN ShowCount; ///< accepted ShowPrompt calls on the page
  CONST CHAR16 *Title;
  CONST CHAR16 *Message;
  CONST CHAR16 *Caption;
  UINTN Reserved;
  UINTN MaxLength;
  UI_EVENT_HANDLER Handler;
} STAND_IN_PROMPT_INFO;

/** @return the handle of the Index-th page made (0 the oldest, destroyed ones included), or 0. **/
UINTN
StandInPageAt (IN UINTN Index);

/** @return how many pages exist and are not destroyed. **/
UINTN
StandInPageCount (VOID);

/** @return TRUE and the page's record when Page was made (destroyed or not). **/
BOOLEAN
StandInFindPage (IN UINTN Page, OUT STAND_IN_PAGE_INFO *Info);

/** @return the handle of the Index-th control made on Page (prompt page: 1711 first), or 0. **/
UINTN
StandInControlAt (IN UINTN Page, IN UINTN Index);

/** @return TRUE and the control's record; Control equal to Page gives the page itself. **/
BOOLEAN
StandInFindControl (IN UINTN Page, IN UINTN Control, OUT STAND_IN_CONTROL_INFO *Info);

/** @return TRUE and the values last set for Tag on the control, FALSE when none was set. **/
BOOLEAN
StandInGetAttribute (IN UINTN Page, IN UINTN Control, IN UINT32 Tag, OUT UINTN Values[3]);

/**
  @return TRUE and the control's text. A text control made with a string id
  starts with that reference; the password field holds what was typed.
**/
BOOLEAN
StandInGetControlText (IN UINTN Page, IN UINTN Control, OUT STAND_IN_TEXT *Text);

/** @return FALSE when the control is unknown or was last hidden (0x70720001 with V1 0); TRUE otherwise. **/
BOOLEAN
StandInIsVisible (IN UINTN Page, IN UINTN Control);

/** @return TRUE and the progress value last set (0x64611202); FALSE when none was set. **/
BOOLEAN
StandInGetProgress (IN UINTN Page, IN UINTN Control, OUT UINTN *Value);

/** @return TRUE and what the prompt page's last ShowPrompt received; FALSE when it was never shown. **/
BOOLEAN
StandInGetPrompt (IN UINTN Page, OUT STAND_IN_PROMPT_INFO *Info);

/**
  Types Text into the password field (1714) of the prompt page Page, or of the
  prompt page made last when Page is 0: the field's text becomes a copy of it
  (null empties it). Not seen by the call observer.

  @retval EFI_SUCCESS            Typed.
  @retval EFI_INVALID_PARAMETER  No such prompt page, or it is destroyed.
  @retval EFI_OUT_OF_RESOURCES   No pool for the copy; the field is unchanged.
**/
EFI_STATUS
StandInTypeText (IN UINTN Page, IN CONST CHAR16 *Text OPTIONAL);

#endif
