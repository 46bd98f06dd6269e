/** @file
  The welcome page and the boot actions that its hot keys choose: slots 0 to 5
  of the UI driver protocol.
**/
#ifndef WELCOME_PAGE_H_
#define WELCOME_PAGE_H_

#include <Uefi.h>

VOID EFIAPI ShowWelcomePage (VOID);
VOID EFIAPI UpdateWelcomeProgress (IN CHAR16 *Message, IN UINTN Progress);
VOID EFIAPI RefreshWelcomePage (VOID);
EFI_STATUS EFIAPI LaunchSetup (VOID);
EFI_STATUS EFIAPI LaunchBootMenu (VOID);
EFI_STATUS EFIAPI FinishWelcomePage (VOID);

#endif
