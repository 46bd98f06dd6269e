/** @file
  Services that both pages use: the logo, and slot 7 of the UI driver protocol.

  The logo's sources (the personality module and the firmware-volume file)
  are not read yet: until they are, no image is handed to the UI framework and
  the pages show their image control empty.
**/
#include "UICommon.h"

EFI_STATUS
UpdateKestFlashLogo (IN UINTN Page, IN OUT UINTN *ImageCell)
{
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
SetWelcomeLogoFlag (VOID)
{
  return EFI_UNSUPPORTED;
}
