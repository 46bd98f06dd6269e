/** @file
  The life cycle of the UI driver in real firmware: load and start without the
  page engine, the page engine's arrival, and unload.
**/
#ifndef OVMF_DRIVER_CHECKS_H_
#define OVMF_DRIVER_CHECKS_H_

#include <Uefi.h>

/**
  Loads \UserInterface.efi from the boot volume and runs every check on it,
  reporting each one; the driver is unloaded at the end.
**/
VOID RunDriverChecks (VOID);

/**
  Reads, loads and starts \UserInterface.efi from the boot volume, reporting
  each step.

  @return its image handle, or null when any step failed.
**/
EFI_HANDLE
LoadAndStartDriver (VOID);

#endif
