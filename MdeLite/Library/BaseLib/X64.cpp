/** @file
  Processor helpers for x86-64.
**/
extern "C" {
#include <Library/BaseLib.h>
}

UINT64
EFIAPI
AsmReadTsc (VOID)
{
  UINT32 Low;
  UINT32 High;

  __asm__ __volatile__("rdtsc" : "=a"(Low), "=d"(High));
  return ((UINT64)High << 32) | Low;
}

VOID EFIAPI
CpuPause (VOID)
{
  __asm__ __volatile__("pause");
}
