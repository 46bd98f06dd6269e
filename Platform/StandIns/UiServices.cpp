/** @file
  Services of the UI framework stand-in: the session table, the UI state
  table and the UI mode. The string and image tables are in UiStrings.cpp and
  UiImages.cpp.
**/
#include "StandInInternal.h"

STATIC
EFI_STATUS
EFIAPI
UiSessionRequest (
  IN UI_SERVICES *Services, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4)
{
  UINTN Arguments[] = {(UINTN)Services, Argument1, Argument2, Argument3, Argument4};
  STAND_IN_FRAMEWORK_STATE *State = &gStandInFramework.State;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSessionRequest, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  STATIC_ASSERT (sizeof (Arguments) == sizeof (State->SessionArguments), "session arguments kept whole");
  for (UINTN Index = 0; Index < ARRAY_SIZE (Arguments); Index++) {
    State->SessionArguments[Index] = Arguments[Index];
  }

  State->SessionRequests++;
  return gStandInFramework.SessionStatus;
}

STATIC
EFI_STATUS
EFIAPI
UiEndSession (VOID)
{
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpEndUiSession, nullptr, 0, &Status)) {
    return Status;
  }

  gStandInFramework.State.EndUiSessions++;
  gStandInFramework.State.SessionEnded = TRUE;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiResetState (IN UINTN Reserved)
{
  UINTN Arguments[] = {Reserved};
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpResetUiState, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  gStandInFramework.State.ResetUiStates++;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiSetMode (IN UINTN Mode)
{
  UINTN Arguments[] = {Mode};
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  UINTN Count = Framework->State.UiModeCount;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSetUiMode, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (Count < STAND_IN_HISTORY_LIMIT) {
    if (EFI_ERROR (StandInGrow (Framework->Modes, Framework->ModeCapacity, Count))) {
      return EFI_OUT_OF_RESOURCES;
    }

    Framework->Modes[Count] = Mode;
  }

  Framework->State.UiModeCount++;

  //
  // Mode 1 comes before a page is built: a new session.
  //
  if (Mode == 1) {
    Framework->State.SessionEnded = FALSE;
  }

  return EFI_SUCCESS;
}

STATIC UI_SESSION_TABLE mSessionTable = {nullptr, nullptr, nullptr, UiSessionRequest, UiEndSession};

STATIC UI_STATE_TABLE mStateTable = {
  {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr},
  UiResetState,
};

UI_SERVICES gStandInServices = {
  nullptr, &mSessionTable, &mStateTable, &gStandInStringTable, &gStandInImageTable, nullptr, nullptr, UiSetMode,
};

VOID
StandInSetSessionRequestStatus (IN EFI_STATUS Status)
{
  gStandInFramework.SessionStatus = Status;
}
