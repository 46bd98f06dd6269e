/** @file
  The driver's pages driven through its protocols in real firmware, on the
  page engine and UI framework stand-ins and the service stand-ins.
**/
#ifndef OVMF_FLOW_CHECKS_H_
#define OVMF_FLOW_CHECKS_H_

#include <Uefi.h>

/**
  Installs the UI framework and service stand-ins, loads the driver once
  more, plays the welcome page, the administrator prompt and the flash page
  through the driver's protocols, reporting each check; then removes what it
  installed and unloads the driver.
**/
VOID RunFlowChecks (VOID);

#endif
