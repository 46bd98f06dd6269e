/** @file
  Boot-services pool allocation through gBS.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
}
#include <Library/UefiBootServicesTableLib.h>

VOID *EFIAPI
AllocatePool (IN UINTN AllocationSize)
{
  VOID *Buffer = nullptr;

  if (EFI_ERROR (gBS->AllocatePool (EfiBootServicesData, AllocationSize, &Buffer))) {
    return nullptr;
  }

  return Buffer;
}

VOID *EFIAPI
AllocateZeroPool (IN UINTN AllocationSize)
{
  VOID *Buffer = AllocatePool (AllocationSize);

  if (Buffer != nullptr) {
    ZeroMem (Buffer, AllocationSize);
  }

  return Buffer;
}

VOID EFIAPI
FreePool (IN VOID *Buffer)
{
  gBS->FreePool (Buffer);
}
