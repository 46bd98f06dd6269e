/** @file
  The welcome page: slots 0 to 5 of the UI driver protocol.

  The page, its hot keys and the boot actions are not built yet: until they
  are, showing and refreshing do nothing and the actions report
  EFI_UNSUPPORTED, so a boot flow that calls them goes on unharmed.
**/
#include "WelcomePage.h"

VOID EFIAPI
ShowWelcomePage (VOID)
{}

VOID EFIAPI
UpdateWelcomeProgress (IN CHAR16 *Message, IN UINTN Progress)
{}

VOID EFIAPI
RefreshWelcomePage (VOID)
{}

EFI_STATUS EFIAPI
LaunchSetup (VOID)
{
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
LaunchBootMenu (VOID)
{
  return EFI_UNSUPPORTED;
}

EFI_STATUS EFIAPI
FinishWelcomePage (VOID)
{
  return EFI_UNSUPPORTED;
}
