/** @file
  Installation and removal of one service stand-in on a handle.
**/
#include <Library/UefiBootServicesTableLib.h>

#include "ServiceStandInInternal.h"

EFI_STATUS
StandInInstallService (IN OUT STAND_IN_SERVICE_SLOT *Slot,
                       IN EFI_GUID *Guid,
                       IN VOID *Interface,
                       IN OUT EFI_HANDLE *Handle)
{
  EFI_STATUS Status;

  if (Handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (gBS == nullptr) {
    return EFI_NOT_READY;
  }

  if (Slot->Installed) {
    return EFI_ALREADY_STARTED;
  }

  Status = gBS->InstallProtocolInterface (Handle, Guid, EFI_NATIVE_INTERFACE, Interface);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Slot->Installed = TRUE;
  Slot->Handle = *Handle;
  return EFI_SUCCESS;
}

EFI_STATUS
StandInUninstallService (IN OUT STAND_IN_SERVICE_SLOT *Slot,
                         IN EFI_GUID *Guid,
                         IN VOID *Interface,
                         IN EFI_HANDLE Handle)
{
  EFI_STATUS Status;

  if (!Slot->Installed || (gBS == nullptr)) {
    return EFI_NOT_STARTED;
  }

  if (Handle != Slot->Handle) {
    return EFI_INVALID_PARAMETER;
  }

  Status = gBS->UninstallProtocolInterface (Handle, Guid, Interface);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Slot->Installed = FALSE;
  Slot->Handle = nullptr;
  return EFI_SUCCESS;
}
