/** @file
  Files by name: a disk volume's copy first, else the firmware-volume file
  that the list names.
**/
#include <Library/TrackedAllocationLib.h>

#include "FileMgrLibInternal.h"

#define TRACKED_POOL_FILE "Library/FileMgrLib/FileData"

EFI_STATUS
ReadFileDataFromFVByName (IN CONST CHAR16 *FileName, OUT VOID **Buffer, OUT UINTN *Size)
{
  EFI_GUID FileGuid;

  if (!FindFileGuidByName (FileName, &FileGuid)) {
    return EFI_NOT_FOUND;
  }

  return ReadFileDataFromFVByGuid (&FileGuid, Buffer, Size);
}

EFI_STATUS
EFIAPI
GetFileData (IN CONST CHAR16 *FileName, IN OUT VOID **Buffer, OUT UINTN *Size)
{
  EFI_STATUS Status;

  if (Buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  //
  // The caller's earlier buffer goes first, whatever happens next: after a
  // failure *Buffer is null, never a stale pointer.
  //
  FreeTrackedPool (Buffer, __func__, TRACKED_POOL_FILE, __LINE__);
  if ((FileName == nullptr) || (Size == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  //
  // An empty file on disk still wins: its buffer holds the two zero bytes.
  //
  Status = ReadFileDataFromFS (FileName, Buffer, Size);
  if (EFI_ERROR (Status) || (*Buffer == nullptr)) {
    return ReadFileDataFromFVByName (FileName, Buffer, Size);
  }

  return Status;
}
