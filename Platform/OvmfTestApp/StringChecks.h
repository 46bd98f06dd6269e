/** @file
  Checks of the driver's string packages as the firmware's HII database holds
  them.
**/
#ifndef OVMF_STRING_CHECKS_H_
#define OVMF_STRING_CHECKS_H_

#include <Uefi.h>

/**
  Checks that the driver's package list is registered once, on DriverImage,
  and that its "en-US" texts and a theme string read back exactly through the
  firmware's EFI_HII_STRING_PROTOCOL.
**/
VOID CheckDriverStrings (IN EFI_HANDLE DriverImage);

/**
  Checks that no package list with the driver's list GUID is registered.

  @param[in] When  Stage of the test, ASCII, for the report line.
**/
VOID CheckDriverStringsAbsent (IN CONST CHAR8 *When);

#endif
