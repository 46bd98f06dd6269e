/** @file
  What the platform's boot flow does with the UI driver: the welcome page
  during start-up, or a firmware update on the flash page.
**/
#ifndef BOOT_FLOWS_H_
#define BOOT_FLOWS_H_

#include <FirmwareCommon/BootConfig.h>

/**
  Shows the welcome page, reports progress while the platform "initialises"
  (each report lets the driver poll a key), runs the UI event loop until the
  page closes (countdown, Enter, Escape or a pending hot-key action), and
  ends the welcome flow with FinishWelcomePage, which carries out the action.
**/
VOID RunWelcomeFlow (IN CONST BOOT_CONFIG *Config);

/**
  Plays a firmware update on the flash page for each configured outcome:
  progress 0 to 100 %, the outcome, then the UI event loop until the page
  closes itself.
**/
VOID RunFlashFlow (IN CONST BOOT_CONFIG *Config);

#endif
