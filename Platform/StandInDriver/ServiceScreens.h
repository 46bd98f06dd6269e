/** @file
  What the platform shows when the UI driver hands over: the one-time boot
  menu, the diagnostics launch and the Setup screen, each drawn full-screen by
  the stand-ins' renderer and announced on the serial port.
**/
#ifndef KEST_SERVICE_SCREENS_H_
#define KEST_SERVICE_SCREENS_H_

#include <Uefi.h>

/**
  Watches the stand-ins' calls (boot menu, diagnostics start) and the
  Setup-entry event group.

  @retval EFI_SUCCESS  Watching.
  @return the status of a failed CreateEventEx (the calls are watched all the same).
**/
EFI_STATUS
WatchServiceScreens (VOID);

#endif
