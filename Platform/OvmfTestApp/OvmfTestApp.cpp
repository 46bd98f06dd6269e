/** @file
  Entry of the firmware-side test: booted by OVMF as \EFI\BOOT\BOOTX64.EFI,
  it checks the UI driver that lies beside it on the same volume, reports on
  the console (which reaches the serial port) and powers the machine off.
**/
#include "DriverChecks.h"
#include "FlowChecks.h"
#include "TestReport.h"

#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

//
// Time for the runner to take a screenshot of the report before power-off.
//
#define SCREEN_HOLD_MICROSECONDS 1000000

/**
  Runs the checks and shuts the machine down; it does not return.
**/
extern "C" EFI_STATUS EFIAPI
OvmfTestAppMain (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  UINTN Failed;

  RunDriverChecks ();
  RunFlowChecks ();
  Failed = ReportDone ();

  gBS->Stall (SCREEN_HOLD_MICROSECONDS);
  gRT->ResetSystem (EfiResetShutdown, (Failed == 0) ? EFI_SUCCESS : EFI_ABORTED, 0, nullptr);
  return EFI_ABORTED;
}
