/** @file
  Reads of the platform settings service.
**/
#include "PlatformSettings.h"

#include <Library/UefiBootServicesTableLib.h>

EFI_STATUS
LocateSettings (OUT SETTINGS_PROTOCOL **Settings)
{
  EFI_STATUS Status;

  *Settings = nullptr;
  Status = gBS->LocateProtocol (&gSettingsProtocolGuid, nullptr, (VOID **)Settings);
  if (EFI_ERROR (Status)) {
    *Settings = nullptr;
    return Status;
  }

  return (*Settings == nullptr) ? EFI_NOT_FOUND : EFI_SUCCESS;
}

EFI_STATUS
ReadSetting (IN SETTINGS_PROTOCOL *Settings, IN UINTN ItemId, IN UINTN Size, OUT VOID *Buffer)
{
  if (Settings->GetSetting == nullptr) {
    return EFI_UNSUPPORTED;
  }

  return Settings->GetSetting (Settings, ItemId, &gSettingsNamespaceGuid, &Size, Buffer);
}
