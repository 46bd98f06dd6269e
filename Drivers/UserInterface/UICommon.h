/** @file
  Services that both pages use: the logo, and slot 7 of the UI driver protocol.
**/
#ifndef UI_COMMON_H_
#define UI_COMMON_H_

#include <Uefi.h>

EFI_STATUS EFIAPI SetWelcomeLogoFlag (VOID);

#endif
