/** @file
  Pool helpers of the stand-ins: growing arrays and copies of callers' texts.
**/
extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
}

#include "StandInInternal.h"

EFI_STATUS
StandInGrowArray (IN OUT VOID **Array, IN OUT UINTN *Capacity, IN UINTN Count, IN UINTN ElementSize)
{
  UINTN NewCapacity;
  VOID *NewArray;

  if (Count < *Capacity) {
    return EFI_SUCCESS;
  }

  //
  // Doubling keeps the copies linear in the number of elements.
  //
  NewCapacity = (*Capacity == 0) ? 8 : *Capacity * 2;
  if ((NewCapacity <= Count) || (ElementSize == 0) || (NewCapacity > MAX_UINTN / ElementSize)) {
    return EFI_OUT_OF_RESOURCES;
  }

  NewArray = AllocateZeroPool (NewCapacity * ElementSize);
  if (NewArray == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  if (*Array != nullptr) {
    CopyMem (NewArray, *Array, Count * ElementSize);
    FreePool (*Array);
  }

  *Array = NewArray;
  *Capacity = NewCapacity;
  return EFI_SUCCESS;
}

EFI_STATUS
StandInCopyText (IN CONST CHAR16 *Text OPTIONAL, OUT CHAR16 **Copy)
{
  UINTN Length;
  CHAR16 *Buffer;

  *Copy = nullptr;
  if (Text == nullptr) {
    return EFI_SUCCESS;
  }

  Length = StrnLenS (Text, STAND_IN_MAX_TEXT);
  if (Length == STAND_IN_MAX_TEXT) {
    return EFI_INVALID_PARAMETER;
  }

  Buffer = (CHAR16 *)AllocatePool ((Length + 1) * sizeof (CHAR16));
  if (Buffer == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  CopyMem (Buffer, Text, (Length + 1) * sizeof (CHAR16));
  *Copy = Buffer;
  return EFI_SUCCESS;
}
