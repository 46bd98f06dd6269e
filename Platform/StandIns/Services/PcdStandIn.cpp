/** @file
  EFI_PCD_PROTOCOL of the stand-in: GetBool answers the UI driver's boot UI
  mode token; every other member is null.
**/
#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/PiPcd.h>

#include "ServiceStandInInternal.h"

STATIC STAND_IN_SERVICE_SLOT mPcdSlot;
STATIC BOOLEAN mBootUiMode;
STATIC UINTN mUnknownQueries;

STATIC
BOOLEAN
EFIAPI
PcdGetBool (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber)
{
  UINTN Arguments[] = {(UINTN)Guid, TokenNumber};
  EFI_STATUS Status;

  //
  // A BOOLEAN carries no status: a failed or refused call answers FALSE.
  //
  if (!StandInEnter (StandInOpPcdGetBool, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return FALSE;
  }

  if (!mPcdSlot.Installed) {
    return FALSE;
  }

  if ((Guid == nullptr) || !CompareGuid (Guid, &gUiPcdTokenSpaceGuid) || (TokenNumber != UI_PCD_TOKEN_BOOT_UI_MODE)) {
    mUnknownQueries++;
    if (Guid == nullptr) {
      StandInReject (StandInOpPcdGetBool, EFI_INVALID_PARAMETER);
    }

    return FALSE;
  }

  return mBootUiMode;
}

STATIC EFI_PCD_PROTOCOL mPcd = {
  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, PcdGetBool, nullptr, nullptr,
  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,    nullptr, nullptr,
};

EFI_STATUS
EFIAPI
InstallPcdStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mPcdSlot, &gEfiPcdProtocolGuid, &mPcd, Handle);
}

EFI_STATUS
EFIAPI
UninstallPcdStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mPcdSlot, &gEfiPcdProtocolGuid, &mPcd, Handle);
}

VOID
StandInSetBootUiModePcd (IN BOOLEAN Value)
{
  mBootUiMode = (Value != FALSE) ? TRUE : FALSE;
}

UINTN
StandInUnknownPcdQueries (VOID)
{
  return mUnknownQueries;
}

VOID
StandInResetPcd (VOID)
{
  mBootUiMode = FALSE;
  mUnknownQueries = 0;
}
