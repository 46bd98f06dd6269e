/** @file
  BOOT_MENU_PROTOCOL of the stand-in: records the two password flags and each
  run of the one-time boot menu.
**/
#include <Protocol/BootMenu.h>

#include "ServiceStandInInternal.h"

STATIC STAND_IN_SERVICE_SLOT mBootMenuSlot;

STATIC
EFI_STATUS
EFIAPI
BootMenuRun (VOID)
{
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpRunBootMenu, nullptr, 0, &Status)) {
    return Status;
  }

  if (!mBootMenuSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  gStandInServiceState.BootMenuRuns++;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
BootMenuSetFlag (IN UINTN Index, IN UINT8 *Flag)
{
  UINTN Arguments[] = {Index, (UINTN)Flag};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpSetBootMenuFlag, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mBootMenuSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  //
  // The menu knows two flags: 1 the administrator password, 2 the other one.
  //
  if ((Flag == nullptr) || (Index == 0) || (Index >= ARRAY_SIZE (gStandInServiceState.BootMenuFlags))) {
    return StandInReject (StandInOpSetBootMenuFlag, EFI_INVALID_PARAMETER);
  }

  gStandInServiceState.BootMenuFlagCalls++;
  gStandInServiceState.BootMenuFlags[Index] = *Flag;
  return EFI_SUCCESS;
}

STATIC BOOT_MENU_PROTOCOL mBootMenu = {BootMenuRun, nullptr, BootMenuSetFlag};

EFI_STATUS
EFIAPI
InstallBootMenuStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mBootMenuSlot, &gBootMenuProtocolGuid, &mBootMenu, Handle);
}

EFI_STATUS
EFIAPI
UninstallBootMenuStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mBootMenuSlot, &gBootMenuProtocolGuid, &mBootMenu, Handle);
}
