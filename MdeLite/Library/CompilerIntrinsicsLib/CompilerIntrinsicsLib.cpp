/** @file
  The memory functions that the compiler emits calls to for structure copies
  and initialisation. Only the firmware image needs them; the host has libc.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

extern "C" {

void *
memcpy (void *Destination, const void *Source, UINTN Length)
{
  return CopyMem (Destination, Source, Length);
}

void *
memmove (void *Destination, const void *Source, UINTN Length)
{
  return CopyMem (Destination, Source, Length);
}

void *
memset (void *Buffer, int Value, UINTN Length)
{
  return SetMem (Buffer, Length, (UINT8)Value);
}

int
memcmp (const void *First, const void *Second, UINTN Length)
{
  return (int)CompareMem (First, Second, Length);
}

} // extern "C"
