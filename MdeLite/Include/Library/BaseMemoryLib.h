/** @file
  Memory copy, fill and compare. Fit for megabyte buffers: the copies move
  whole machine words (or use the string instructions) rather than bytes.
**/
#ifndef MDE_LITE_BASE_MEMORY_LIB_H_
#define MDE_LITE_BASE_MEMORY_LIB_H_

#include <Base.h>

/** Copies Length bytes from SourceBuffer to DestinationBuffer; the areas may overlap.
    @return DestinationBuffer. **/
VOID *EFIAPI CopyMem (OUT VOID *DestinationBuffer, IN CONST VOID *SourceBuffer, IN UINTN Length);

/** Fills Length bytes of Buffer with Value. @return Buffer. **/
VOID *EFIAPI SetMem (OUT VOID *Buffer, IN UINTN Length, IN UINT8 Value);

/** Fills Length bytes of Buffer with zeros. @return Buffer. **/
VOID *EFIAPI ZeroMem (OUT VOID *Buffer, IN UINTN Length);

/** Compares two buffers. @return 0 when equal, else the difference of the first differing bytes. **/
INTN EFIAPI CompareMem (IN CONST VOID *DestinationBuffer, IN CONST VOID *SourceBuffer, IN UINTN Length);

/** @return TRUE when both GUIDs hold the same 128 bits. **/
BOOLEAN EFIAPI CompareGuid (IN CONST GUID *Guid1, IN CONST GUID *Guid2);

/** Copies a GUID. @return DestinationGuid. **/
GUID *EFIAPI CopyGuid (OUT GUID *DestinationGuid, IN CONST GUID *SourceGuid);

#endif
