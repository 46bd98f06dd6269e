/** @file
  SETUP_STATE_PROTOCOL of the stand-in: records the flag handed over on the
  way into Setup.
**/
#include <Protocol/SetupState.h>

#include "ServiceStandInInternal.h"

STATIC STAND_IN_SERVICE_SLOT mSetupStateSlot;

STATIC
EFI_STATUS
EFIAPI
SetupStateSetFlag (IN UINTN Index, IN UINT8 *Flag)
{
  UINTN Arguments[] = {Index, (UINTN)Flag};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpSetSetupFlag, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mSetupStateSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  if (Flag == nullptr) {
    return StandInReject (StandInOpSetSetupFlag, EFI_INVALID_PARAMETER);
  }

  gStandInServiceState.SetupFlagCalls++;
  gStandInServiceState.SetupFlagIndex = Index;
  gStandInServiceState.SetupFlag = *Flag;
  return EFI_SUCCESS;
}

STATIC SETUP_STATE_PROTOCOL mSetupState = {nullptr, nullptr, nullptr, SetupStateSetFlag};

EFI_STATUS
EFIAPI
InstallSetupStateStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mSetupStateSlot, &gSetupStateProtocolGuid, &mSetupState, Handle);
}

EFI_STATUS
EFIAPI
UninstallSetupStateStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mSetupStateSlot, &gSetupStateProtocolGuid, &mSetupState, Handle);
}
