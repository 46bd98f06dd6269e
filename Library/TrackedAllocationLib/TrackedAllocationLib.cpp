/** @file
  Tracked pool: allocation and release through the address of the owning
  pointer. The site arguments name the caller for a reader of the sources; no
  behaviour depends on them and they are written nowhere.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/TrackedAllocationLib.h>
#include <Library/UefiBootServicesTableLib.h>

EFI_STATUS
EFIAPI
AllocateTrackedPool (
  OUT VOID **OwnerCell, IN UINTN Size, IN CONST CHAR8 *FunctionName, IN CONST CHAR8 *FileName, IN UINTN Line)
{
  VOID *Buffer = nullptr;

  if ((OwnerCell == nullptr) || (Size == 0)) {
    return EFI_INVALID_PARAMETER;
  }

  if (EFI_ERROR (gBS->AllocatePool (EfiBootServicesData, Size, &Buffer)) || (Buffer == nullptr)) {
    *OwnerCell = nullptr;
    return EFI_OUT_OF_RESOURCES;
  }

  ZeroMem (Buffer, Size);
  *OwnerCell = Buffer;
  return EFI_SUCCESS;
}

VOID EFIAPI
FreeTrackedPool (IN OUT VOID **OwnerCell, IN CONST CHAR8 *FunctionName, IN CONST CHAR8 *FileName, IN UINTN Line)
{
  if ((OwnerCell == nullptr) || (*OwnerCell == nullptr)) {
    return;
  }

  gBS->FreePool (*OwnerCell);
  *OwnerCell = nullptr;
}
