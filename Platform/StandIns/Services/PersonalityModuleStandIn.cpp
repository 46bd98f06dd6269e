/** @file
  PERSONALITY_MODULE_PROTOCOL of the stand-in: a record whose logo pointer is
  null or points to a logo image that a test made.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/PersonalityModule.h>

#include "ServiceStandInInternal.h"

#define LOGO_HEADER_SIZE OFFSET_OF (PERSONALITY_LOGO_IMAGE, Data)

///
/// What a reader may find in the bytes it should not read.
///
#define LOGO_RESERVED_FILL 0xA5

STATIC STAND_IN_SERVICE_SLOT mPersonalitySlot;
STATIC PERSONALITY_MODULE_PROTOCOL mPersonalityModule = {{1, 2, 3}, nullptr};

//
// The image: header, then data. The image is packed, so bytes serve as its
// storage.
//
STATIC UINT8 mLogoStorage[LOGO_HEADER_SIZE + STAND_IN_MAX_PERSONALITY_LOGO];
STATIC UINTN mLogoBytesUsed;

EFI_STATUS
EFIAPI
InstallPersonalityModuleStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mPersonalitySlot, &gPersonalityModuleProtocolGuid, &mPersonalityModule, Handle);
}

EFI_STATUS
EFIAPI
UninstallPersonalityModuleStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mPersonalitySlot, &gPersonalityModuleProtocolGuid, &mPersonalityModule, Handle);
}

EFI_STATUS
StandInSetPersonalityLogo (IN CONST VOID *Data OPTIONAL, IN UINTN Size, IN UINT32 DataSize)
{
  if ((Size > STAND_IN_MAX_PERSONALITY_LOGO) || ((Data == nullptr) && (Size != 0))) {
    return EFI_INVALID_PARAMETER;
  }

  SetMem (mLogoStorage, OFFSET_OF (PERSONALITY_LOGO_IMAGE, DataSize), LOGO_RESERVED_FILL);
  CopyMem (&mLogoStorage[OFFSET_OF (PERSONALITY_LOGO_IMAGE, DataSize)], &DataSize, sizeof (DataSize));
  if (Size != 0) {
    CopyMem (&mLogoStorage[LOGO_HEADER_SIZE], Data, Size);
  }

  //
  // Only the bytes of an earlier, longer logo need clearing.
  //
  if (mLogoBytesUsed > Size) {
    ZeroMem (&mLogoStorage[LOGO_HEADER_SIZE + Size], mLogoBytesUsed - Size);
  }

  mLogoBytesUsed = Size;
  mPersonalityModule.Logo = (PERSONALITY_LOGO_IMAGE *)mLogoStorage;
  return EFI_SUCCESS;
}

VOID
StandInRemovePersonalityLogo (VOID)
{
  mPersonalityModule.Logo = nullptr;
}

VOID
StandInResetPersonalityModule (VOID)
{
  StandInRemovePersonalityLogo ();
  ZeroMem (mLogoStorage, LOGO_HEADER_SIZE + mLogoBytesUsed);
  mLogoBytesUsed = 0;
}
