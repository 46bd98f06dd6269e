/** @file
  The administrator-unlock prompt: slots 6 and 8 of the UI driver protocol.

  The password records are not read yet: until they are, no password counts as
  installed and no prompt can be shown.
**/
#include "PasswordPage.h"

EFI_STATUS EFIAPI
PromptPassword (IN UINTN Kind, IN PASSWORD_CALLBACK Callback)
{
  return EFI_UNSUPPORTED;
}

BOOLEAN EFIAPI
IsPasswordInstalled (IN UINTN Kind)
{
  return FALSE;
}
