/** @file
  SETTINGS_PROTOCOL of the stand-in: GetSetting over items that tests store.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/Settings.h>

#include "ServiceStandInInternal.h"

typedef struct {
  BOOLEAN InUse;
  UINTN ItemId;
  UINTN Size;
  UINT8 Data[STAND_IN_MAX_SETTING_SIZE];
} STAND_IN_SETTING;

STATIC STAND_IN_SERVICE_SLOT mSettingsSlot;
STATIC STAND_IN_SETTING mSettings[STAND_IN_MAX_SETTINGS];

STATIC
STAND_IN_SETTING *
FindSetting (IN UINTN ItemId)
{
  for (STAND_IN_SETTING &Setting : mSettings) {
    if (Setting.InUse && (Setting.ItemId == ItemId)) {
      return &Setting;
    }
  }

  return nullptr;
}

STATIC
EFI_STATUS
EFIAPI
SettingsGetSetting (
  IN SETTINGS_PROTOCOL *This, IN UINTN ItemId, IN EFI_GUID *Namespace, IN OUT UINTN *Size, OUT VOID *Buffer);

STATIC SETTINGS_PROTOCOL mSettingsProtocol = {SettingsGetSetting};

STATIC
EFI_STATUS
EFIAPI
SettingsGetSetting (
  IN SETTINGS_PROTOCOL *This, IN UINTN ItemId, IN EFI_GUID *Namespace, IN OUT UINTN *Size, OUT VOID *Buffer)
{
  UINTN Arguments[] = {(UINTN)This, ItemId, (UINTN)Namespace, (UINTN)Size, (UINTN)Buffer};
  STAND_IN_SETTING *Setting;
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpGetSetting, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mSettingsSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  if ((This != &mSettingsProtocol) || (Namespace == nullptr) || (Size == nullptr)) {
    return StandInReject (StandInOpGetSetting, EFI_INVALID_PARAMETER);
  }

  Setting = CompareGuid (Namespace, &gSettingsNamespaceGuid) ? FindSetting (ItemId) : nullptr;
  if (Setting == nullptr) {
    return EFI_NOT_FOUND;
  }

  if (Setting->Size > *Size) {
    *Size = Setting->Size;
    return EFI_BUFFER_TOO_SMALL;
  }

  if ((Buffer == nullptr) && (Setting->Size != 0)) {
    return StandInReject (StandInOpGetSetting, EFI_INVALID_PARAMETER);
  }

  if (Setting->Size != 0) {
    CopyMem (Buffer, Setting->Data, Setting->Size);
  }

  *Size = Setting->Size;
  return EFI_SUCCESS;
}

EFI_STATUS
EFIAPI
InstallSettingsStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mSettingsSlot, &gSettingsProtocolGuid, &mSettingsProtocol, Handle);
}

EFI_STATUS
EFIAPI
UninstallSettingsStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mSettingsSlot, &gSettingsProtocolGuid, &mSettingsProtocol, Handle);
}

EFI_STATUS
StandInSetSetting (IN UINTN ItemId, IN CONST VOID *Data, IN UINTN Size)
{
  STAND_IN_SETTING *Setting;

  if ((Size > STAND_IN_MAX_SETTING_SIZE) || ((Data == nullptr) && (Size != 0))) {
    return EFI_INVALID_PARAMETER;
  }

  Setting = FindSetting (ItemId);
  for (UINTN Index = 0; (Setting == nullptr) && (Index < STAND_IN_MAX_SETTINGS); Index++) {
    if (!mSettings[Index].InUse) {
      Setting = &mSettings[Index];
    }
  }

  if (Setting == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Setting->InUse = TRUE;
  Setting->ItemId = ItemId;
  Setting->Size = Size;
  if (Size != 0) {
    CopyMem (Setting->Data, Data, Size);
  }

  return EFI_SUCCESS;
}

VOID
StandInRemoveSetting (IN UINTN ItemId)
{
  STAND_IN_SETTING *Setting = FindSetting (ItemId);

  if (Setting != nullptr) {
    Setting->InUse = FALSE;
  }
}

VOID
StandInResetSettings (VOID)
{
  ZeroMem (mSettings, sizeof (mSettings));
}
