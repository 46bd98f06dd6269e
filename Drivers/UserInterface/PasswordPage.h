/** @file
  The administrator-unlock prompt: slots 6 and 8 of the UI driver protocol.
**/
#ifndef PASSWORD_PAGE_H_
#define PASSWORD_PAGE_H_

#include <Protocol/UiDriver.h>

EFI_STATUS EFIAPI PromptPassword (IN UINTN Kind, IN PASSWORD_CALLBACK Callback);
BOOLEAN EFIAPI IsPasswordInstalled (IN UINTN Kind);

#endif
