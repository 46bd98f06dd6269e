/** @file
  Services that both pages use: the logo, and slot 7 of the UI driver protocol.

  No page holds a logo control yet, so the flag has nothing to act on.
**/
#include "UICommon.h"

EFI_STATUS EFIAPI
SetWelcomeLogoFlag (VOID)
{
  return EFI_UNSUPPORTED;
}
