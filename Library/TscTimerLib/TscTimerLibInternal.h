/** @file
  The two halves of the TSC calibration: finding the ACPI power-management
  timer in the firmware's ACPI tables, and counting TSC ticks against it.
**/
#ifndef KEST_TSC_TIMER_LIB_INTERNAL_H_
#define KEST_TSC_TIMER_LIB_INTERNAL_H_

#include <Uefi.h>

///
/// Where the PM timer is read and how many of its bits count.
///
typedef struct {
  UINT16 Port;
  UINT32 CounterMask; // 0xFFFFFF for a 24-bit timer, 0xFFFFFFFF for a 32-bit one
} ACPI_PM_TIMER;

/**
  Finds the PM timer through the ACPI root pointer in the system table's
  configuration tables (ACPI 2.0 first, then ACPI 1.0), its XSDT or RSDT, and
  the FADT. Every table is checked (signature, length, checksum) before it is
  used, and nothing is read beyond a table's length.

  @retval EFI_SUCCESS    Timer describes the PM timer.
  @retval EFI_NOT_FOUND  No valid table describes an I/O-space PM timer.
**/
EFI_STATUS
FindAcpiPmTimer (OUT ACPI_PM_TIMER *Timer);

/**
  Counts the TSC ticks that pass while Timer advances by PmTicks.

  @retval EFI_SUCCESS       TscTicks holds the count, which is not zero.
  @retval EFI_DEVICE_ERROR  The timer does not advance, or the count is not usable.
**/
EFI_STATUS
CountTscTicks (IN CONST ACPI_PM_TIMER *Timer, IN UINT32 PmTicks, OUT UINT64 *TscTicks);

#endif
