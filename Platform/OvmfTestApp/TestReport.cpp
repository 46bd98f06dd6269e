/** @file
  Console report of the checks.
**/
#include "TestReport.h"

#include <FirmwareCommon/SerialLog.h>

extern "C" {
#include <Library/PrintLib.h>
}
#include <Library/UefiBootServicesTableLib.h>

//
// Longest report line; the serial terminal passes longer lines on unbroken,
// only the screen wraps them.
//
#define REPORT_LINE_LENGTH 160

STATIC UINTN mPassed = 0;
STATIC UINTN mFailed = 0;

/**
  Writes one ASCII line to the console output, followed by CR LF.
**/
STATIC
VOID
PrintLine (IN CONST CHAR8 *Line)
{
  CHAR16 WideLine[REPORT_LINE_LENGTH + 3];
  UINTN Index = 0;

  for (; (Index < REPORT_LINE_LENGTH) && (Line[Index] != '\0'); Index++) {
    WideLine[Index] = (CHAR16)(UINT8)Line[Index];
  }

  WideLine[Index++] = '\r';
  WideLine[Index++] = '\n';
  WideLine[Index] = 0;
  gST->ConOut->OutputString (gST->ConOut, WideLine);
}

BOOLEAN
EFIAPI
ReportCheck (IN BOOLEAN Passed, IN CONST CHAR8 *What, IN CONST CHAR8 *DetailFormat, ...)
{
  CHAR8 Line[REPORT_LINE_LENGTH + 1];
  CHAR8 Detail[REPORT_LINE_LENGTH + 1];
  VA_LIST Marker;

  if (Passed) {
    mPassed++;
    AsciiSPrint (Line, sizeof (Line), "KESTUI-TEST PASS %a", What);
  } else {
    mFailed++;
    VA_START (Marker, DetailFormat);
    AsciiVSPrint (Detail, sizeof (Detail), DetailFormat, Marker);
    VA_END (Marker);
    AsciiSPrint (Line, sizeof (Line), "KESTUI-TEST FAIL %a: %a", What, Detail);
  }

  PrintLine (Line);
  return Passed;
}

BOOLEAN
CheckStatus (IN CONST CHAR8 *What, IN EFI_STATUS Status, IN EFI_STATUS Expected)
{
  return ReportCheck (Status == Expected, What, "%r, expected %r", Status, Expected);
}

UINTN
ReportDone (VOID)
{
  CHAR8 Line[REPORT_LINE_LENGTH + 1];

  AsciiSPrint (Line, sizeof (Line), "KESTUI-TEST DONE %lu passed, %lu failed", mPassed, mFailed);
  PrintLine (Line);
  return mFailed;
}

VOID
ReportScreen (IN CONST CHAR8 *Name)
{
  CHAR8 Line[REPORT_LINE_LENGTH];

  //
  // Straight to the serial port: on the console the line would be drawn over
  // the page (and scroll it) just when it is to be photographed.
  //
  if (!SerialLogLine ("KESTUI-SCREEN %a", Name)) {
    AsciiSPrint (Line, sizeof (Line), "KESTUI-SCREEN %a", Name);
    PrintLine (Line);
  }
}
