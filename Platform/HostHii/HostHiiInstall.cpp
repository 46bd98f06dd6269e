/** @file
  Installation of the host HII protocols through gBS.
**/
#include <Library/UefiBootServicesTableLib.h>

#include "HostHii.h"
#include "HostHiiStore.h"

namespace {

EFI_HANDLE mHiiHandle = nullptr;

} // namespace

EFI_STATUS
InstallHostHii (VOID)
{
  EFI_HANDLE Handle = nullptr;
  EFI_STATUS Status;

  if (gBS == nullptr) {
    return EFI_NOT_READY;
  }

  if (mHiiHandle != nullptr) {
    return EFI_ALREADY_STARTED;
  }

  Status =
    gBS->InstallProtocolInterface (&Handle, &gEfiHiiDatabaseProtocolGuid, EFI_NATIVE_INTERFACE, HostHiiDatabase ());
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Status = gBS->InstallProtocolInterface (&Handle, &gEfiHiiStringProtocolGuid, EFI_NATIVE_INTERFACE, HostHiiString ());
  if (EFI_ERROR (Status)) {
    gBS->UninstallProtocolInterface (Handle, &gEfiHiiDatabaseProtocolGuid, HostHiiDatabase ());
    return Status;
  }

  // Each installation starts with an empty database.
  HostHiiForgetPackageLists ();
  mHiiHandle = Handle;
  return EFI_SUCCESS;
}

EFI_STATUS
UninstallHostHii (VOID)
{
  EFI_STATUS StringStatus;
  EFI_STATUS DatabaseStatus;

  if (mHiiHandle == nullptr) {
    return EFI_NOT_STARTED;
  }

  StringStatus = gBS->UninstallProtocolInterface (mHiiHandle, &gEfiHiiStringProtocolGuid, HostHiiString ());
  DatabaseStatus = gBS->UninstallProtocolInterface (mHiiHandle, &gEfiHiiDatabaseProtocolGuid, HostHiiDatabase ());
  mHiiHandle = nullptr;
  HostHiiForgetPackageLists ();
  return EFI_ERROR (StringStatus) ? StringStatus : DatabaseStatus;
}
