/** @file
  The flash update page and its protocol record.
**/
#ifndef FLASH_UPDATE_PAGE_H_
#define FLASH_UPDATE_PAGE_H_

#include <Protocol/FlashUpdatePage.h>

/**
  Makes the zero-filled FLASH_UPDATE_PAGE_PROTOCOL record and fills its members.

  @return the status of the record's allocation.
**/
EFI_STATUS
InitFlashUpdatePageDriverInterfaces (VOID);

/**
  Forgets the flash page's handles without destroying the page: the pages are
  left for the operating system.
**/
VOID ForgetFlashUpdatePage (VOID);

VOID EFIAPI ShowFlashUpdatePage (VOID);
VOID EFIAPI SetFlashProgress (IN UINTN Percent);
VOID EFIAPI SetFlashStatusText (IN CHAR8 *Text OPTIONAL);
VOID EFIAPI ShowFlashResult (IN UINT32 Result);
EFI_STATUS EFIAPI FlashSessionPassThrough (
  IN VOID *Unused, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4);

#endif
