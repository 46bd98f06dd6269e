/** @file
  The call log shared by all stand-ins (page engine, UI framework and the
  platform services): every operation is counted and shown to an observer
  before it acts, and a test can make a chosen call of an operation fail.

  Arguments reach the observer as UINTNs in the order of the operation's
  parameters; pointers are passed as their addresses. The observer sees the
  call before any check: also calls that are then refused or made to fail.
**/
#ifndef STAND_IN_CALLS_H_
#define STAND_IN_CALLS_H_

#include <Uefi.h>

///
/// Every operation of the stand-ins, named after its slot.
///
typedef enum {
  //
  // Page engine.
  //
  StandInOpCreatePromptPage,
  StandInOpShowPrompt, ///< slot 0 of the prompt interface
  StandInOpCreatePage,
  StandInOpDestroyPage,
  StandInOpCreateImageControl,
  StandInOpCreateTextControl,
  StandInOpCreateProgressControl,
  //
  // UI framework services.
  //
  StandInOpSessionRequest,
  StandInOpEndUiSession,
  StandInOpResetUiState,
  StandInOpGetString,
  StandInOpAddImageData,
  StandInOpGetImage,
  StandInOpSetUiMode,
  //
  // UI framework control attributes.
  //
  StandInOpSetControlProperty,
  StandInOpGetControlStyle,
  StandInOpSetControlStyle,
  StandInOpGetControlData,
  StandInOpSetControlData,
  //
  // UI framework pages and events.
  //
  StandInOpRefreshPage,
  StandInOpGetActivePage,
  StandInOpSetActivePage,
  StandInOpSetEventHandler,
  StandInOpGetEventHandler,
  StandInOpRunEventLoop,
  StandInOpExitEventLoop,
  StandInOpAddImagePackage,
  StandInOpDisplayPage,
  //
  // Not a slot: the framework hands an event to a handler. Arguments: Handler
  // (0 when none is found), Control, EventCode, Data, loop depth.
  //
  StandInOpDeliverEvent,
  //
  // Platform services (ServiceStandIns.h).
  //
  StandInOpGetSetting,
  StandInOpSubmitRequest,
  StandInOpRunBootMenu,
  StandInOpSetBootMenuFlag,
  StandInOpSetSetupFlag,
  StandInOpPrepareDiagnostics,
  StandInOpStartDiagnostics,
  StandInOpPcdGetBool,
  StandInOpSetBootLogo,
  StandInOpSmbiosGetNext,
  //
  // Not slots: what the flash client stand-in (StandInRunFlashClient) calls
  // on FLASH_UPDATE_PAGE_PROTOCOL, seen just before each call, with the
  // member's argument (the status text as its address). These cannot fail.
  //
  StandInOpFlashShow,
  StandInOpFlashSetProgress,
  StandInOpFlashSetStatusText,
  StandInOpFlashShowResult,
  StandInOpCount
} STAND_IN_OPERATION;

///
/// Most arguments of any operation (CreateProgressControl).
///
#define STAND_IN_MAX_ARGUMENTS 10

/**
  Sees one operation before it acts.

  @param[in] Context        What was given to StandInSetCallObserver.
  @param[in] Operation      The operation.
  @param[in] Arguments      Its arguments, in parameter order (null when it has none).
  @param[in] ArgumentCount  How many.
**/
typedef VOID (EFIAPI *STAND_IN_CALL_OBSERVER) (IN VOID *Context,
                                               IN STAND_IN_OPERATION Operation,
                                               IN CONST UINTN *Arguments,
                                               IN UINTN ArgumentCount);

/** Sets the observer of every operation of the stand-ins; null removes it. **/
VOID StandInSetCallObserver (IN STAND_IN_CALL_OBSERVER Observer OPTIONAL, IN VOID *Context OPTIONAL);

/** @return the operation's name as in its slot table ("CreatePage"), or "?" for a value outside the list. **/
CONST CHAR8 *StandInOperationName (IN STAND_IN_OPERATION Operation);

/** @return how often Operation was called since the program started. **/
UINTN
StandInCallCount (IN STAND_IN_OPERATION Operation);

/**
  @return how many calls of Operation were refused because a handle, a control,
  a tag or a pointer was not acceptable (they returned EFI_INVALID_PARAMETER or
  EFI_UNSUPPORTED and had no effect).
**/
UINTN
StandInRejectedCount (IN STAND_IN_OPERATION Operation);

/**
  Makes the Nth call of Operation from now (1: the next one) return Status
  without acting; the observer still sees it. Nth 0 cancels. One failure per
  operation can be pending; a new one replaces it. StandInOpDeliverEvent and
  the flash client's calls cannot fail. GetBool returns a BOOLEAN: a failed
  call answers FALSE.
**/
VOID StandInFailOperation (IN STAND_IN_OPERATION Operation, IN UINTN Nth, IN EFI_STATUS Status);

#endif
