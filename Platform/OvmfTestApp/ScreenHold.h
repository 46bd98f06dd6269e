/** @file
  Pages held on the screen for the runner's screenshots.
**/
#ifndef OVMF_SCREEN_HOLD_H_
#define OVMF_SCREEN_HOLD_H_

#include <Uefi.h>

/**
  Draws the active page again (the console's report lines are written over
  it), announces the screenshot Name and keeps the page on the screen for a
  moment.
**/
VOID HoldScreen (IN CONST CHAR8 *Name);

#endif
