/** @file
  Memory copy, fill and compare.

  In the firmware image the copies use the string instructions, which move
  whole cache lines on current processors and suit megabyte buffers (a logo
  can be 5 MB). In the host build they go through the compiler's builtins so
  that the sanitizers see every access.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#if defined(MDE_LITE_HOST)

VOID *EFIAPI
CopyMem (OUT VOID *DestinationBuffer, IN CONST VOID *SourceBuffer, IN UINTN Length)
{
  if (Length != 0) {
    __builtin_memmove (DestinationBuffer, SourceBuffer, Length);
  }

  return DestinationBuffer;
}

VOID *EFIAPI
SetMem (OUT VOID *Buffer, IN UINTN Length, IN UINT8 Value)
{
  if (Length != 0) {
    __builtin_memset (Buffer, Value, Length);
  }

  return Buffer;
}

#else

VOID *EFIAPI
CopyMem (OUT VOID *DestinationBuffer, IN CONST VOID *SourceBuffer, IN UINTN Length)
{
  UINT8 *Destination = (UINT8 *)DestinationBuffer;
  CONST UINT8 *Source = (CONST UINT8 *)SourceBuffer;

  if ((Length == 0) || (Destination == Source)) {
    return DestinationBuffer;
  }

  if ((Destination < Source) || (Destination >= Source + Length)) {
    __asm__ __volatile__("rep movsb" : "+D"(Destination), "+S"(Source), "+c"(Length) : : "memory");
  } else {
    //
    // Overlap with the destination above the source. Blocks as long as the
    // distance do not overlap, so they go forward from the last one down; only
    // a distance below a cache line takes the slow backward string copy.
    //
    UINTN Distance = (UINTN)(Destination - Source);

    if (Distance >= 64) {
      while (Length != 0) {
        UINTN Block = (Length < Distance) ? Length : Distance;
        UINT8 *To = Destination + Length - Block;
        CONST UINT8 *From = Source + Length - Block;

        Length -= Block;
        __asm__ __volatile__("rep movsb" : "+D"(To), "+S"(From), "+c"(Block) : : "memory");
      }
    } else {
      Destination += Length - 1;
      Source += Length - 1;
      __asm__ __volatile__("std\n\trep movsb\n\tcld" : "+D"(Destination), "+S"(Source), "+c"(Length) : : "memory");
    }
  }

  return DestinationBuffer;
}

VOID *EFIAPI
SetMem (OUT VOID *Buffer, IN UINTN Length, IN UINT8 Value)
{
  UINT8 *Destination = (UINT8 *)Buffer;

  __asm__ __volatile__("rep stosb" : "+D"(Destination), "+c"(Length) : "a"(Value) : "memory");
  return Buffer;
}

#endif

VOID *EFIAPI
ZeroMem (OUT VOID *Buffer, IN UINTN Length)
{
  return SetMem (Buffer, Length, 0);
}

INTN EFIAPI
CompareMem (IN CONST VOID *DestinationBuffer, IN CONST VOID *SourceBuffer, IN UINTN Length)
{
  CONST UINT8 *First = (CONST UINT8 *)DestinationBuffer;
  CONST UINT8 *Second = (CONST UINT8 *)SourceBuffer;
  UINTN Index = 0;

  //
  // Whole words while they are equal; the bytes of the first differing word
  // (and the tail) decide the result.
  //
  while (Length - Index >= sizeof (UINT64)) {
    UINT64 FirstWord;
    UINT64 SecondWord;

    __builtin_memcpy (&FirstWord, First + Index, sizeof (UINT64));
    __builtin_memcpy (&SecondWord, Second + Index, sizeof (UINT64));
    if (FirstWord != SecondWord) {
      break;
    }

    Index += sizeof (UINT64);
  }

  for (; Index < Length; Index++) {
    if (First[Index] != Second[Index]) {
      return (INTN)First[Index] - (INTN)Second[Index];
    }
  }

  return 0;
}

BOOLEAN
EFIAPI
CompareGuid (IN CONST GUID *Guid1, IN CONST GUID *Guid2)
{
  return (BOOLEAN)(CompareMem (Guid1, Guid2, sizeof (GUID)) == 0);
}

GUID *EFIAPI
CopyGuid (OUT GUID *DestinationGuid, IN CONST GUID *SourceGuid)
{
  CopyMem (DestinationGuid, SourceGuid, sizeof (GUID));
  return DestinationGuid;
}
