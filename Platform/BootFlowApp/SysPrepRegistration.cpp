/** @file
  Registers the welcome flow (WelcomeSysPrep.h) as a SysPrep#### load option
  for the file of the same firmware volume that holds this driver, so that the
  boot manager runs it after connecting the consoles. The option is written
  only when no SysPrep#### of SysPrepOrder holds it already.
**/
#include "WelcomeSysPrep.h"

#include <Guid/GlobalVariable.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
#include <Library/PrintLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/DevicePath.h>
#include <Protocol/LoadedImage.h>

#define SYS_PREP_ORDER_CAPACITY 64
#define SYS_PREP_ATTRIBUTES (EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS)
#define LOAD_OPTION_HEADER_SIZE 6 ///< UINT32 attributes, UINT16 file path list length

STATIC CONST EFI_GUID mWelcomeFile = KEST_WELCOME_SYS_PREP_FILE_GUID;
STATIC constexpr auto mDescription = CompileTime::MakeWideString (u"KestUi welcome page");
STATIC constexpr auto mSysPrepOrderName = CompileTime::MakeWideString (u"SysPrepOrder");

/**
  @return the size of Path up to (not including) its end node; 0 when it has
          none within Limit bytes.
**/
STATIC
UINTN
PathSizeWithoutEnd (IN CONST UINT8 *Path, IN UINTN Limit)
{
  UINTN Offset = 0;

  while (Offset + sizeof (EFI_DEVICE_PATH_PROTOCOL) <= Limit) {
    UINTN Length = (UINTN)Path[Offset + 2] | ((UINTN)Path[Offset + 3] << 8);

    if (Path[Offset] == END_DEVICE_PATH_TYPE) {
      return Offset;
    }

    if (Length < sizeof (EFI_DEVICE_PATH_PROTOCOL)) {
      return 0;
    }

    Offset += Length;
  }

  return 0;
}

/**
  Builds the EFI_LOAD_OPTION that starts the welcome file of the volume whose
  device path is Volume. @return the pool buffer, or null.
**/
STATIC
UINT8 *
BuildOption (IN CONST EFI_DEVICE_PATH_PROTOCOL *Volume, OUT UINTN *Size)
{
  CONST UINTN VolumeLimit = 0x1000;
  UINTN VolumeSize = PathSizeWithoutEnd ((CONST UINT8 *)Volume, VolumeLimit);
  UINTN DescriptionSize = sizeof (mDescription.Text);
  UINTN PathSize = VolumeSize + sizeof (MEDIA_FW_VOL_FILEPATH_DEVICE_PATH) + sizeof (EFI_DEVICE_PATH_PROTOCOL);
  MEDIA_FW_VOL_FILEPATH_DEVICE_PATH File;
  EFI_DEVICE_PATH_PROTOCOL End = {END_DEVICE_PATH_TYPE, END_ENTIRE_DEVICE_PATH_SUBTYPE, {4, 0}};
  UINT8 *Option;
  UINT8 *Cursor;

  if (VolumeSize == 0) {
    return nullptr;
  }

  *Size = LOAD_OPTION_HEADER_SIZE + DescriptionSize + PathSize;
  Option = (UINT8 *)AllocateZeroPool (*Size);
  if (Option == nullptr) {
    return nullptr;
  }

  File.Header.Type = MEDIA_DEVICE_PATH;
  File.Header.SubType = MEDIA_PIWG_FW_FILE_DP;
  File.Header.Length[0] = (UINT8)sizeof (File);
  File.Header.Length[1] = 0;
  CopyGuid (&File.FvFileName, &mWelcomeFile);

  Option[0] = (UINT8)LOAD_OPTION_ACTIVE;
  Option[4] = (UINT8)PathSize;
  Option[5] = (UINT8)(PathSize >> 8);
  Cursor = Option + LOAD_OPTION_HEADER_SIZE;
  CopyMem (Cursor, mDescription.Text, DescriptionSize);
  Cursor += DescriptionSize;
  CopyMem (Cursor, Volume, VolumeSize);
  Cursor += VolumeSize;
  CopyMem (Cursor, &File, sizeof (File));
  Cursor += sizeof (File);
  CopyMem (Cursor, &End, sizeof (End));
  return Option;
}

/**
  @return TRUE when SysPrep<Number> holds exactly Option.
**/
STATIC
BOOLEAN
OptionHolds (IN UINT16 Number, IN CONST UINT8 *Option, IN UINTN Size)
{
  CHAR16 Name[16];
  UINT8 *Stored;
  UINTN StoredSize = Size;
  BOOLEAN Same;

  Stored = (UINT8 *)AllocatePool (Size);
  if (Stored == nullptr) {
    return FALSE;
  }

  UnicodeSPrint (Name, sizeof (Name), CompileTime::MakeWideString (u"SysPrep%04x").Text, Number);
  Same = !EFI_ERROR (gRT->GetVariable (Name, &gEfiGlobalVariableGuid, nullptr, &StoredSize, Stored)) &&
         (StoredSize == Size) && (CompareMem (Stored, Option, Size) == 0);
  FreePool (Stored);
  return Same;
}

/**
  Writes Option as a new SysPrep#### (the lowest number that SysPrepOrder does
  not use) and appends it to SysPrepOrder.
**/
STATIC
EFI_STATUS
AddOption (IN UINT8 *Option, IN UINTN Size, IN OUT UINT16 *Order, IN UINTN Count)
{
  CHAR16 Name[16];
  UINT16 Number = 0;
  EFI_STATUS Status;

  //
  // The order need not be sorted: look again after every number found taken.
  //
  for (BOOLEAN Taken = TRUE; Taken;) {
    Taken = FALSE;
    for (UINTN Index = 0; Index < Count; Index++) {
      if (Order[Index] == Number) {
        Number++;
        Taken = TRUE;
        break;
      }
    }
  }

  UnicodeSPrint (Name, sizeof (Name), CompileTime::MakeWideString (u"SysPrep%04x").Text, Number);
  Status = gRT->SetVariable (Name, &gEfiGlobalVariableGuid, SYS_PREP_ATTRIBUTES, Size, Option);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Order[Count++] = Number;
  return gRT->SetVariable ((CHAR16 *)mSysPrepOrderName.Text, &gEfiGlobalVariableGuid, SYS_PREP_ATTRIBUTES,
                           Count * sizeof (UINT16), Order);
}

/**
  Entry point (ENTRY_POINT of SysPrepRegistrationDxe.inf).

  @retval EFI_SUCCESS  The option is in place.
  @return why it could not be: the driver is not in a firmware volume, no pool, or the variable write failed.
**/
extern "C" EFI_STATUS EFIAPI
SysPrepRegistrationEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  EFI_LOADED_IMAGE_PROTOCOL *LoadedImage = nullptr;
  EFI_DEVICE_PATH_PROTOCOL *Volume = nullptr;
  UINT16 Order[SYS_PREP_ORDER_CAPACITY];
  UINTN OrderSize = sizeof (Order) - sizeof (UINT16); // room to append one
  UINTN Count;
  UINT8 *Option;
  UINTN Size = 0;
  EFI_STATUS Status;

  Status = gBS->HandleProtocol (ImageHandle, &gEfiLoadedImageProtocolGuid, (VOID **)&LoadedImage);
  if (!EFI_ERROR (Status)) {
    Status = gBS->HandleProtocol (LoadedImage->DeviceHandle, &gEfiDevicePathProtocolGuid, (VOID **)&Volume);
  }

  if (EFI_ERROR (Status)) {
    return Status;
  }

  Option = BuildOption (Volume, &Size);
  if (Option == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  if (EFI_ERROR (
        gRT->GetVariable ((CHAR16 *)mSysPrepOrderName.Text, &gEfiGlobalVariableGuid, nullptr, &OrderSize, Order))) {
    OrderSize = 0;
  }

  Count = OrderSize / sizeof (UINT16);
  for (UINTN Index = 0; Index < Count; Index++) {
    if (OptionHolds (Order[Index], Option, Size)) {
      FreePool (Option);
      return EFI_SUCCESS;
    }
  }

  Status = AddOption (Option, Size, Order, Count);
  FreePool (Option);
  return Status;
}
