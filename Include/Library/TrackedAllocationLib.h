/** @file
  Tracked pool: buffers kept beyond one call are made and released through the
  address of their owning pointer, so that a released owner is null at once.
  Every call names its site; no behaviour depends on it.
**/
#ifndef KEST_TRACKED_ALLOCATION_LIB_H_
#define KEST_TRACKED_ALLOCATION_LIB_H_

#include <Uefi.h>

/**
  Allocates Size bytes of zero-filled EfiBootServicesData pool into *OwnerCell.
  What the cell held before is neither read nor released.

  @param[out] OwnerCell     Address of the owning pointer.
  @param[in]  Size          Bytes wanted; 0 is refused.
  @param[in]  FunctionName  Name of the calling function.
  @param[in]  FileName      Source file of the call.
  @param[in]  Line          Line of the call.

  @retval EFI_SUCCESS            *OwnerCell holds the buffer.
  @retval EFI_INVALID_PARAMETER  OwnerCell is null or Size is 0; the cell is unchanged.
  @retval EFI_OUT_OF_RESOURCES   No pool; *OwnerCell is null.
**/
EFI_STATUS
EFIAPI
AllocateTrackedPool (
  OUT VOID **OwnerCell, IN UINTN Size, IN CONST CHAR8 *FunctionName, IN CONST CHAR8 *FileName, IN UINTN Line);

/**
  Returns the buffer that *OwnerCell holds to pool and sets the cell to null.
  A null cell, or a cell that holds null, is left alone.
**/
VOID EFIAPI FreeTrackedPool (IN OUT VOID **OwnerCell,
                             IN CONST CHAR8 *FunctionName,
                             IN CONST CHAR8 *FileName,
                             IN UINTN Line);

//
// Site-naming wrappers. FileName is the module's source path, given once per file as
// TRACKED_POOL_FILE; the owner may be a pointer of any type.
//
#define ALLOCATE_TRACKED_POOL(Owner, Size)                                                                             \
  AllocateTrackedPool ((VOID **)&(Owner), (Size), __func__, TRACKED_POOL_FILE, __LINE__)
#define FREE_TRACKED_POOL(Owner) FreeTrackedPool ((VOID **)&(Owner), __func__, TRACKED_POOL_FILE, __LINE__)

#endif
