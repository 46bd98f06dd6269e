/** @file
  Whole files from firmware volumes, by GUID: the first raw section, else the
  whole file.

  The firmware volume allocates the data buffer. A volume may answer anything:
  success without a buffer, or with a size of 0, counts as no data (a buffer
  that came with it is released), and the search goes on. What a volume left in
  the buffer pointer after a failure is not looked at: UEFI allocates nothing
  on a failure, and a value that is not a pool buffer must not be freed.
**/
#include <PiDxe.h> // the firmware file and section types, before the protocol that uses them

#include <Library/TrackedAllocationLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/FirmwareVolume2.h>

#include "FileMgrLibInternal.h"

#define TRACKED_POOL_FILE "Library/FileMgrLib/FirmwareVolumeRead"

namespace {

/**
  Asks one volume for the file: its first raw section, else the whole file.
  *Data is null on entry of each call, so that the volume allocates.
**/
EFI_STATUS
ReadFromVolume (IN EFI_FIRMWARE_VOLUME2_PROTOCOL *Volume,
                IN CONST EFI_GUID *FileGuid,
                OUT VOID **Data,
                OUT UINTN *DataSize)
{
  EFI_STATUS Status;
  UINT32 AuthenticationStatus = 0;
  EFI_FV_FILETYPE FoundType = 0;
  EFI_FV_FILE_ATTRIBUTES FileAttributes = 0;

  *Data = nullptr;
  *DataSize = 0;
  Status = Volume->ReadSection (Volume, FileGuid, EFI_SECTION_RAW, 0, Data, DataSize, &AuthenticationStatus);
  if (!EFI_ERROR (Status)) {
    return Status;
  }

  *Data = nullptr;
  *DataSize = 0;
  return Volume->ReadFile (Volume, FileGuid, Data, DataSize, &FoundType, &FileAttributes, &AuthenticationStatus);
}

} // namespace

EFI_STATUS
EFIAPI
ReadFileDataFromFVByGuid (IN CONST EFI_GUID *FileGuid, OUT VOID **Buffer, OUT UINTN *Size)
{
  EFI_STATUS Status;
  EFI_HANDLE *Handles = nullptr;
  UINTN HandleCount = 0;

  if ((FileGuid == nullptr) || (Buffer == nullptr) || (Size == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  Status = gBS->LocateHandleBuffer (ByProtocol, &gEfiFirmwareVolume2ProtocolGuid, nullptr, &HandleCount, &Handles);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Status = EFI_NOT_FOUND;
  for (UINTN Index = 0; (Handles != nullptr) && (Index < HandleCount); Index++) {
    EFI_FIRMWARE_VOLUME2_PROTOCOL *Volume = nullptr;
    VOID *Data = nullptr;
    UINTN DataSize = 0;

    Status = gBS->HandleProtocol (Handles[Index], &gEfiFirmwareVolume2ProtocolGuid, (VOID **)&Volume);
    if (!EFI_ERROR (Status) && (Volume == nullptr)) {
      Status = EFI_NOT_FOUND;
    }

    if (EFI_ERROR (Status)) {
      continue;
    }

    Status = ReadFromVolume (Volume, FileGuid, &Data, &DataSize);
    if (EFI_ERROR (Status)) {
      continue;
    }

    if ((Data != nullptr) && (DataSize > 0)) {
      *Buffer = Data;
      *Size = DataSize;
      break;
    }

    FREE_TRACKED_POOL (Data);
    Status = EFI_NOT_FOUND;
  }

  FREE_TRACKED_POOL (Handles);
  return Status;
}
