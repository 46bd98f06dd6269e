/** @file
  TSC calibration against the ACPI power-management timer.
**/
#ifndef KEST_TSC_TIMER_LIB_H_
#define KEST_TSC_TIMER_LIB_H_

#include <Uefi.h>

/// PM timer ticks counted for one calibration (about 1 ms at 3.579545 MHz).
#define TSC_CALIBRATION_PM_TICKS 3579

/**
  Publishes the TSC frequency configuration table (gTscFrequencyGuid) unless it
  exists already: an 8-byte pool value with the TSC ticks counted over
  TSC_CALIBRATION_PM_TICKS ticks of the ACPI PM timer, times 1,000.

  @retval EFI_SUCCESS      The table exists now.
  @retval EFI_UNSUPPORTED  No ACPI PM timer was found.
  @retval other            Pool or InstallConfigurationTable failed.
**/
EFI_STATUS
EFIAPI
PublishTscFrequency (VOID);

#endif
