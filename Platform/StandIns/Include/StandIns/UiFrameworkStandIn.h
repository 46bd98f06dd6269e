/** @file
  Stand-in for the platform's UI framework: UI_FRAMEWORK_PROTOCOL over the
  page model of the page engine stand-in, with an event loop fed by the
  embedder.

  Behaviour that callers may rely on:
  - GetString looks the string up through EFI_HII_STRING_PROTOCOL in "en-US"
    and hands out a pool copy, kept per (HII handle, string id) until the
    framework is uninstalled; the caller does not free it.
  - AddImageData copies the data under its name (a later call with the same
    name replaces it); the image cell is not written. GetImage writes a
    non-zero image value into the cell, or fails with EFI_NOT_FOUND.
  - GetControlStyle 0x73740025 on an image control writes the address of its
    UI_IMAGE_RECORD {0, 0, width, height, pixels} once an image whose data is
    a BMP file is set (pixels in EFI_GRAPHICS_OUTPUT_BLT_PIXEL form, valid until
    that image is replaced or the framework uninstalled). Before an image is
    set, or for data that is not a BMP file, it writes 0 and returns
    EFI_NOT_READY or EFI_UNSUPPORTED.
  - GetControlData 0x64611A00 writes the address of the control's text (the
    password field: what was typed), an empty string when it has none.
  - An attribute call is refused (EFI_INVALID_PARAMETER, no effect) for an
    unknown or destroyed page, a control not on that page or not in that
    container, a tag of another family than the operation's (0x7072 property,
    0x7374 style, 0x6461 data), or a tag that the control's kind does not have.
  - DisplayPage makes the page the active page; destroying the active page
    leaves no page active.
  - RunEventLoop takes events from the event source. Each event goes to the
    handler given when its control was made; else to the handler set with
    SetEventHandler; else, when the active page is a prompt page, to the
    handler of its last ShowPrompt. The loop ends after the handler returns
    when ExitEventLoop was called during the loop (ExitEventLoop ends the
    innermost running loop), or when the handler wrote the close code into the
    event or returned UI_EVENT_HANDLED_PAGE_CLOSED. When the source has no
    event, the loop ends with EFI_ABORTED and counts a dry run. Loops nest up
    to STAND_IN_MAX_LOOP_DEPTH deep.
**/
#ifndef UI_FRAMEWORK_STAND_IN_H_
#define UI_FRAMEWORK_STAND_IN_H_

#include <Protocol/UiFramework.h>
#include <Uefi.h>

#define STAND_IN_MAX_LOOP_DEPTH 32

/**
  Installs UI_FRAMEWORK_PROTOCOL on *Handle (a new handle when it is null).

  @retval EFI_SUCCESS            Installed.
  @retval EFI_INVALID_PARAMETER  Handle is null.
  @retval EFI_NOT_READY          gBS is not set.
  @retval EFI_ALREADY_STARTED    Installed already.
  @return the status of a failed InstallProtocolInterface.
**/
EFI_STATUS
EFIAPI
InstallUiFrameworkStandIn (IN OUT EFI_HANDLE *Handle);

/**
  Uninstalls the protocol from Handle and releases every string copy, image,
  and record of the framework: no pool buffer of the framework is left. The
  event source, the session status and the call log stay as they are.

  @retval EFI_SUCCESS            Uninstalled.
  @retval EFI_NOT_STARTED        Not installed.
  @retval EFI_INVALID_PARAMETER  Handle is not the handle it was installed on.
  @retval EFI_ACCESS_DENIED      An event loop is running.
  @return the status of a failed UninstallProtocolInterface (nothing released).
**/
EFI_STATUS
EFIAPI
UninstallUiFrameworkStandIn (IN EFI_HANDLE Handle);

/**
  Gives the next event for a running event loop.

  @param[in]  Context  What was given to StandInSetEventSource.
  @param[out] Event    The event (a timer tick carries Data = EFI_TIME *).

  @return TRUE with an event; FALSE when there is none (the loop then ends).
**/
typedef BOOLEAN (EFIAPI *STAND_IN_EVENT_SOURCE) (IN VOID *Context, OUT UI_EVENT *Event);

/** Sets where event loops take their events; null leaves every loop without events. **/
VOID StandInSetEventSource (IN STAND_IN_EVENT_SOURCE Source OPTIONAL, IN VOID *Context OPTIONAL);

/**
  Hands one event to its handler as a loop would, without a loop (the call
  observer sees StandInOpDeliverEvent). An ExitEventLoop from the handler then
  ends the innermost running loop, if any.

  @return the handler's result; UI_EVENT_NOT_HANDLED when Event is null or no handler is found.
**/
UINTN
StandInDeliverEvent (IN OUT UI_EVENT *Event);

/** Sets what SessionRequest returns from now on (EFI_SUCCESS at start). **/
VOID StandInSetSessionRequestStatus (IN EFI_STATUS Status);

typedef struct {
  UINTN ActivePage;
  UI_EVENT_HANDLER EventHandler;
  UINTN SessionRequests;     ///< accepted SessionRequest calls
  UINTN SessionArguments[5]; ///< those of the last one: Services, Argument1 to Argument4
  UINTN EndUiSessions;
  BOOLEAN SessionEnded; ///< EndUiSession came after the last SetUiMode (1): the UI has handed over
  UINTN ResetUiStates;
  UINTN UiModeCount;       ///< SetUiMode calls (see StandInGetUiMode)
  UINTN ImagePackageCount; ///< AddImagePackage calls (see StandInGetImagePackage)
  UINTN ImageCount;        ///< distinct image names held
  UINTN LoopDepth;         ///< loops running now
  UINTN LoopsRun;          ///< loops started
  UINTN LoopsEndedByExit;
  UINTN LoopsEndedByClose;
  UINTN LoopsRanDry;      ///< loops that found no event: the script ran dry
  UINTN LoopsRefused;     ///< RunEventLoop calls beyond STAND_IN_MAX_LOOP_DEPTH
  UINTN ExitsOutsideLoop; ///< ExitEventLoop calls while no loop ran
  UINTN EventsDelivered;  ///< events handed to a handler
  UINTN EventsUnrouted;   ///< events for which no handler was found
} STAND_IN_FRAMEWORK_STATE;

/** Reads the framework's state and counters. **/
VOID StandInGetFrameworkState (OUT STAND_IN_FRAMEWORK_STATE *State);

/** @return TRUE and the mode of the Index-th SetUiMode call (0 the first). **/
BOOLEAN
StandInGetUiMode (IN UINTN Index, OUT UINTN *Mode);

typedef struct {
  VOID *Package;
  UINTN Size;
  EFI_GUID Guid; ///< a copy; zero when the call passed no GUID
  UINTN Reserved;
} STAND_IN_IMAGE_PACKAGE;

/** @return TRUE and the arguments of the Index-th AddImagePackage call. **/
BOOLEAN
StandInGetImagePackage (IN UINTN Index, OUT STAND_IN_IMAGE_PACKAGE *Package);

/** @return TRUE and the framework's copy of the data last added under Name. **/
BOOLEAN
StandInGetImageData (IN CONST CHAR16 *Name, OUT CONST VOID **Data, OUT UINTN *Size);

///
/// One event handed to a handler (a loop or StandInDeliverEvent).
///
typedef struct {
  UI_EVENT Event;           ///< as the source gave it
  UINTN EventCodeAfter;     ///< the event's code when the handler returned
  UI_EVENT_HANDLER Handler; ///< null when none was found
  UINTN Result;             ///< the handler's result
  UINTN LoopDepth;          ///< loops running when it was delivered
} STAND_IN_DELIVERY;

/**
  @return TRUE and the Index-th delivered event (0 the first). The first
  STAND_IN_HISTORY_LIMIT deliveries are kept; later ones are only counted.
**/
BOOLEAN
StandInGetDelivery (IN UINTN Index, OUT STAND_IN_DELIVERY *Delivery);

#define STAND_IN_HISTORY_LIMIT 65536

#endif
