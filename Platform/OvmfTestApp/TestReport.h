/** @file
  The test's report on the console: one line per check, then a summary line.
  The runner on the host reads these lines from the serial port, so their
  form ("KESTUI-TEST PASS|FAIL|DONE ...") is fixed.
**/
#ifndef OVMF_TEST_REPORT_H_
#define OVMF_TEST_REPORT_H_

#include <Uefi.h>

/**
  Prints the outcome of one check.

  @param[in] Passed        Whether the check passed.
  @param[in] What          What was checked (ASCII).
  @param[in] DetailFormat  AsciiSPrint format of the failure detail; printed only on failure.

  @return Passed.
**/
BOOLEAN
EFIAPI
ReportCheck (IN BOOLEAN Passed, IN CONST CHAR8 *What, IN CONST CHAR8 *DetailFormat, ...);

/**
  Reports whether Status is the one expected.

  @return TRUE when Status == Expected.
**/
BOOLEAN
CheckStatus (IN CONST CHAR8 *What, IN EFI_STATUS Status, IN EFI_STATUS Expected);

/**
  Prints the summary line with the numbers of passed and failed checks.

  @return the number of failed checks.
**/
UINTN
ReportDone (VOID);

/**
  Announces on the serial port that the screen shows Name now ("KESTUI-SCREEN
  Name"), so that the runner on the host takes a screenshot of it. Without a
  serial port the line goes to the console.
**/
VOID ReportScreen (IN CONST CHAR8 *Name);

#endif
