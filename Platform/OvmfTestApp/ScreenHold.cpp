/** @file
  Pages held on the screen for the runner's screenshots: the runner sees the
  announcement on the serial port and asks QEMU for a screendump while the
  page stays up.
**/
#include "ScreenHold.h"

#include "TestReport.h"

#include <Library/UefiBootServicesTableLib.h>
#include <StandIns/StandInRender.h>

//
// Long enough for the runner's 0.1 s serial poll and QEMU's screendump, also
// without KVM.
//
#define SCREEN_HOLD_MICROSECONDS 1000000

VOID
HoldScreen (IN CONST CHAR8 *Name)
{
  StandInRenderActivePage ();
  ReportScreen (Name);
  gBS->Stall (SCREEN_HOLD_MICROSECONDS);
}
