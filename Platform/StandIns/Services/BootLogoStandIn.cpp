/** @file
  EFI_BOOT_LOGO_PROTOCOL of the stand-in: records where the logo is.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/BootLogo.h>

#include "ServiceStandInInternal.h"

STATIC STAND_IN_SERVICE_SLOT mBootLogoSlot;
STATIC STAND_IN_BOOT_LOGO mLogo;

STATIC
EFI_STATUS
EFIAPI
BootLogoSet (IN EFI_BOOT_LOGO_PROTOCOL *This,
             IN EFI_GRAPHICS_OUTPUT_BLT_PIXEL *BltBuffer OPTIONAL,
             IN UINTN DestinationX,
             IN UINTN DestinationY,
             IN UINTN Width,
             IN UINTN Height);

STATIC EFI_BOOT_LOGO_PROTOCOL mBootLogo = {BootLogoSet};

STATIC
EFI_STATUS
EFIAPI
BootLogoSet (IN EFI_BOOT_LOGO_PROTOCOL *This,
             IN EFI_GRAPHICS_OUTPUT_BLT_PIXEL *BltBuffer OPTIONAL,
             IN UINTN DestinationX,
             IN UINTN DestinationY,
             IN UINTN Width,
             IN UINTN Height)
{
  UINTN Arguments[] = {(UINTN)This, (UINTN)BltBuffer, DestinationX, DestinationY, Width, Height};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpSetBootLogo, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mBootLogoSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  //
  // A null BltBuffer says that no logo is on the screen; a logo has an area.
  //
  if ((This != &mBootLogo) || ((BltBuffer != nullptr) && ((Width == 0) || (Height == 0)))) {
    return StandInReject (StandInOpSetBootLogo, EFI_INVALID_PARAMETER);
  }

  mLogo.Calls++;
  mLogo.BltBuffer = BltBuffer;
  mLogo.X = DestinationX;
  mLogo.Y = DestinationY;
  mLogo.Width = Width;
  mLogo.Height = Height;
  return EFI_SUCCESS;
}

EFI_STATUS
EFIAPI
InstallBootLogoStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mBootLogoSlot, &gEfiBootLogoProtocolGuid, &mBootLogo, Handle);
}

EFI_STATUS
EFIAPI
UninstallBootLogoStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mBootLogoSlot, &gEfiBootLogoProtocolGuid, &mBootLogo, Handle);
}

VOID
StandInGetBootLogo (OUT STAND_IN_BOOT_LOGO *Logo)
{
  if (Logo != nullptr) {
    CopyMem (Logo, &mLogo, sizeof (*Logo));
  }
}

VOID
StandInResetBootLogo (VOID)
{
  ZeroMem (&mLogo, sizeof (mLogo));
}
