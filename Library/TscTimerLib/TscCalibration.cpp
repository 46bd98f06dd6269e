/** @file
  Counting TSC ticks against the ACPI PM timer.

  The count starts on a tick edge of the PM timer and ends at the first read
  that shows PmTicks or more elapsed. The counter wraps (at 24 or 32 bits), so
  elapsed ticks are taken modulo its width. When the last read overshoots
  (an interruption, or slow port reads), the count is scaled back to exactly
  PmTicks: both clocks ran on during the overshoot, so the ratio stays true.
**/
extern "C" {
#include <Library/BaseLib.h>
#include <Library/IoLib.h>
}

#include "TscTimerLibInternal.h"

//
// A PM timer advances every 279 ns; no port read is fast enough to see no
// progress this many times in a row from a timer that runs.
//
#define MAXIMUM_UNCHANGED_READS 1000000U

STATIC UINT32
ReadPmTimer (IN CONST ACPI_PM_TIMER *Timer)
{
  return IoRead32 (Timer->Port) & Timer->CounterMask;
}

EFI_STATUS
CountTscTicks (IN CONST ACPI_PM_TIMER *Timer, IN UINT32 PmTicks, OUT UINT64 *TscTicks)
{
  UINT32 Previous;
  UINT32 Start;
  UINT32 Now;
  UINT32 Elapsed;
  UINT32 Progress;
  UINT32 Unchanged;
  UINT64 TscStart;
  UINT64 TscDelta;

  if (PmTicks == 0 || PmTicks > Timer->CounterMask / 2) {
    return EFI_DEVICE_ERROR;
  }

  //
  // Wait for a tick edge, so that the count starts with a whole tick.
  //
  Previous = ReadPmTimer (Timer);
  Unchanged = 0;
  do {
    Start = ReadPmTimer (Timer);
    if (++Unchanged > MAXIMUM_UNCHANGED_READS) {
      return EFI_DEVICE_ERROR;
    }
  } while (Start == Previous);

  TscStart = AsmReadTsc ();
  Progress = 0;
  Unchanged = 0;
  for (;;) {
    Now = ReadPmTimer (Timer);
    Elapsed = (Now - Start) & Timer->CounterMask;
    if (Elapsed > Timer->CounterMask / 2) {
      //
      // More than half the counter's range: the timer went back, since no
      // pause of the seconds that its range spans comes between two reads.
      //
      return EFI_DEVICE_ERROR;
    }

    if (Elapsed >= PmTicks) {
      break;
    }

    //
    // Progress is what counts, not change: a timer that flickers between two
    // values changes on every read but never gets anywhere.
    //
    if (Elapsed > Progress) {
      Progress = Elapsed;
      Unchanged = 0;
    } else if (++Unchanged > MAXIMUM_UNCHANGED_READS) {
      return EFI_DEVICE_ERROR;
    }
  }

  TscDelta = AsmReadTsc () - TscStart;

  if (TscDelta <= MAX_UINT64 / PmTicks) {
    *TscTicks = TscDelta * PmTicks / Elapsed;
  } else {
    *TscTicks = TscDelta / Elapsed * PmTicks;
  }

  return (*TscTicks != 0) ? EFI_SUCCESS : EFI_DEVICE_ERROR;
}
