/** @file
  The records of the hand-over services, and the reset of every service
  stand-in's configuration.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#include "ServiceStandInInternal.h"

STAND_IN_SERVICE_STATE gStandInServiceState;

VOID
StandInResetServices (VOID)
{
  StandInResetSettings ();
  StandInResetServiceRequests ();
  StandInResetPasswordService ();
  StandInResetDiagnostics ();
  StandInResetPcd ();
  StandInResetBootLogo ();
  StandInResetSmbios ();
  StandInResetPersonalityModule ();
  ZeroMem (&gStandInServiceState, sizeof (gStandInServiceState));
}

VOID
StandInGetServiceState (OUT STAND_IN_SERVICE_STATE *State)
{
  if (State != nullptr) {
    CopyMem (State, &gStandInServiceState, sizeof (*State));
  }
}
