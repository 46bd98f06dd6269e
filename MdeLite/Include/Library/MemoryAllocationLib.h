/** @file
  Boot-services pool allocation.
**/
#ifndef MDE_LITE_MEMORY_ALLOCATION_LIB_H_
#define MDE_LITE_MEMORY_ALLOCATION_LIB_H_

#include <Uefi.h>

/** Allocates AllocationSize bytes of EfiBootServicesData pool. @return the buffer, or NULL. **/
VOID *EFIAPI AllocatePool (IN UINTN AllocationSize);

/** Allocates AllocationSize bytes of zero-filled EfiBootServicesData pool. @return the buffer, or NULL. **/
VOID *EFIAPI AllocateZeroPool (IN UINTN AllocationSize);

/** Returns Buffer to pool. **/
VOID EFIAPI FreePool (IN VOID *Buffer);

#endif
