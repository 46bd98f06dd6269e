/** @file
  Publishes the TSC frequency as a configuration table, measured against the
  ACPI PM timer, unless another module has published it already.
**/
#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
}
#include <Library/TscTimerLib.h>
#include <Library/UefiBootServicesTableLib.h>

#include "TscTimerLibInternal.h"

//
// Ticks counted over TSC_CALIBRATION_PM_TICKS (about a millisecond) times
// this give ticks per second.
//
#define CALIBRATIONS_PER_SECOND 1000U

STATIC BOOLEAN
TscFrequencyPublished (VOID)
{
  for (UINTN Index = 0; Index < gST->NumberOfTableEntries; Index++) {
    if (CompareGuid (&gST->ConfigurationTable[Index].VendorGuid, &gTscFrequencyGuid)) {
      return TRUE;
    }
  }

  return FALSE;
}

EFI_STATUS
EFIAPI
PublishTscFrequency (VOID)
{
  ACPI_PM_TIMER Timer;
  UINT64 TscTicks;
  UINT64 *Frequency;
  EFI_STATUS Status;

  if (gST == nullptr || gBS == nullptr) {
    return EFI_NOT_READY;
  }

  if (gST->ConfigurationTable != nullptr && TscFrequencyPublished ()) {
    return EFI_SUCCESS;
  }

  if (EFI_ERROR (FindAcpiPmTimer (&Timer))) {
    return EFI_UNSUPPORTED;
  }

  Status = CountTscTicks (&Timer, TSC_CALIBRATION_PM_TICKS, &TscTicks);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (TscTicks > MAX_UINT64 / CALIBRATIONS_PER_SECOND) {
    return EFI_DEVICE_ERROR;
  }

  Frequency = (UINT64 *)AllocatePool (sizeof (UINT64));
  if (Frequency == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  *Frequency = TscTicks * CALIBRATIONS_PER_SECOND;
  Status = gBS->InstallConfigurationTable (&gTscFrequencyGuid, Frequency);
  if (EFI_ERROR (Status)) {
    FreePool (Frequency);
  }

  return Status;
}
