/** @file
  GetBool for the UI driver's token, the rest from the firmware's PCD driver.
**/
#include "PcdTokenAnswer.h"

#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/PiPcd.h>
#include <StandIns/ServiceStandIns.h>

STATIC EFI_PCD_PROTOCOL mWrapped;
STATIC EFI_PCD_PROTOCOL_GET_BOOLEAN mFirmwareGetBool = nullptr;
STATIC BOOLEAN mUiModeZero = FALSE;

STATIC
BOOLEAN
EFIAPI
WrappedGetBool (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber)
{
  if ((Guid != nullptr) && CompareGuid (Guid, &gUiPcdTokenSpaceGuid)) {
    //
    // Only our token is known in our token space; the firmware is never asked about it.
    //
    return (TokenNumber == UI_PCD_TOKEN_BOOT_UI_MODE) ? mUiModeZero : FALSE;
  }

  return (mFirmwareGetBool != nullptr) ? mFirmwareGetBool (Guid, TokenNumber) : FALSE;
}

EFI_STATUS
AnswerUiModePcd (IN BOOLEAN Value)
{
  EFI_HANDLE *Handles = nullptr;
  UINTN HandleCount = 0;
  EFI_HANDLE Handle = nullptr;
  EFI_PCD_PROTOCOL *Firmware = nullptr;
  EFI_STATUS Status;

  mUiModeZero = Value;
  Status = gBS->LocateHandleBuffer (ByProtocol, &gEfiPcdProtocolGuid, nullptr, &HandleCount, &Handles);
  if (!EFI_ERROR (Status) && (HandleCount > 0)) {
    //
    // A firmware has one PCD protocol; the first is the one LocateProtocol gives.
    //
    Handle = Handles[0];
    if (EFI_ERROR (gBS->HandleProtocol (Handle, &gEfiPcdProtocolGuid, (VOID **)&Firmware))) {
      Firmware = nullptr;
    }
  }

  if (Handles != nullptr) {
    gBS->FreePool (Handles);
  }

  if (Firmware == nullptr) {
    Handle = nullptr;
    StandInSetBootUiModePcd (Value);
    return InstallPcdStandIn (&Handle);
  }

  CopyMem (&mWrapped, Firmware, sizeof (mWrapped));
  mFirmwareGetBool = Firmware->GetBool;
  mWrapped.GetBool = WrappedGetBool;
  return gBS->ReinstallProtocolInterface (Handle, &gEfiPcdProtocolGuid, Firmware, &mWrapped);
}
