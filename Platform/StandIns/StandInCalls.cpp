/** @file
  The call log of all stand-ins: counts, observer, refused calls and the
  failures that tests ask for.
**/
#include "StandInInternal.h"

typedef struct {
  UINTN Countdown; ///< calls left until the failing one; 0 when none is pending
  EFI_STATUS Status;
} STAND_IN_PENDING_FAILURE;

STATIC STAND_IN_CALL_OBSERVER mObserver;
STATIC VOID *mObserverContext;
STATIC UINTN mCallCounts[StandInOpCount];
STATIC UINTN mRejectedCounts[StandInOpCount];
STATIC STAND_IN_PENDING_FAILURE mFailures[StandInOpCount];

STATIC CONST CHAR8 *CONST mOperationNames[] = {
  "CreatePromptPage",
  "ShowPrompt",
  "CreatePage",
  "DestroyPage",
  "CreateImageControl",
  "CreateTextControl",
  "CreateProgressControl",
  "SessionRequest",
  "EndUiSession",
  "ResetUiState",
  "GetString",
  "AddImageData",
  "GetImage",
  "SetUiMode",
  "SetControlProperty",
  "GetControlStyle",
  "SetControlStyle",
  "GetControlData",
  "SetControlData",
  "RefreshPage",
  "GetActivePage",
  "SetActivePage",
  "SetEventHandler",
  "GetEventHandler",
  "RunEventLoop",
  "ExitEventLoop",
  "AddImagePackage",
  "DisplayPage",
  "DeliverEvent",
  "GetSetting",
  "SubmitRequest",
  "RunBootMenu",
  "SetBootMenuFlag",
  "SetSetupFlag",
  "PrepareDiagnostics",
  "StartDiagnostics",
  "GetBool",
  "SetBootLogo",
  "GetNext",
  "Show",
  "SetProgress",
  "SetStatusText",
  "ShowResult",
};

STATIC_ASSERT (ARRAY_SIZE (mOperationNames) == StandInOpCount, "one name per operation");

STATIC
BOOLEAN
IsOperation (IN STAND_IN_OPERATION Operation)
{
  return ((UINTN)Operation < (UINTN)StandInOpCount) ? TRUE : FALSE;
}

/**
  @return TRUE for the calls that only report what a caller does: an event
  handed over, or a call of the flash client.
**/
STATIC
BOOLEAN
IsReportOnly (IN STAND_IN_OPERATION Operation)
{
  return ((Operation == StandInOpDeliverEvent) ||
          ((Operation >= StandInOpFlashShow) && (Operation <= StandInOpFlashShowResult)))
           ? TRUE
           : FALSE;
}

VOID
StandInSetCallObserver (IN STAND_IN_CALL_OBSERVER Observer OPTIONAL, IN VOID *Context OPTIONAL)
{
  mObserver = Observer;
  mObserverContext = Context;
}

CONST CHAR8 *
StandInOperationName (IN STAND_IN_OPERATION Operation)
{
  return IsOperation (Operation) ? mOperationNames[Operation] : "?";
}

UINTN
StandInCallCount (IN STAND_IN_OPERATION Operation)
{
  return IsOperation (Operation) ? mCallCounts[Operation] : 0;
}

UINTN
StandInRejectedCount (IN STAND_IN_OPERATION Operation)
{
  return IsOperation (Operation) ? mRejectedCounts[Operation] : 0;
}

VOID
StandInFailOperation (IN STAND_IN_OPERATION Operation, IN UINTN Nth, IN EFI_STATUS Status)
{
  if (!IsOperation (Operation) || IsReportOnly (Operation)) {
    return;
  }

  mFailures[Operation].Countdown = Nth;
  mFailures[Operation].Status = Status;
}

VOID
StandInObserve (IN STAND_IN_OPERATION Operation, IN CONST UINTN *Arguments, IN UINTN ArgumentCount)
{
  if (mObserver != nullptr) {
    mObserver (mObserverContext, Operation, (ArgumentCount == 0) ? nullptr : Arguments, ArgumentCount);
  }
}

BOOLEAN
StandInEnter (IN STAND_IN_OPERATION Operation,
              IN CONST UINTN *Arguments,
              IN UINTN ArgumentCount,
              OUT EFI_STATUS *Status)
{
  STAND_IN_PENDING_FAILURE *Failure;

  *Status = EFI_SUCCESS;
  if (!IsOperation (Operation)) {
    return TRUE;
  }

  mCallCounts[Operation]++;
  StandInObserve (Operation, Arguments, ArgumentCount);

  Failure = &mFailures[Operation];
  if (Failure->Countdown == 0) {
    return TRUE;
  }

  Failure->Countdown--;
  if (Failure->Countdown != 0) {
    return TRUE;
  }

  *Status = Failure->Status;
  return FALSE;
}

EFI_STATUS
StandInReject (IN STAND_IN_OPERATION Operation, IN EFI_STATUS Status)
{
  if (IsOperation (Operation)) {
    mRejectedCounts[Operation]++;
  }

  return Status;
}
