/** @file
  The flash update page and its protocol record.
**/
#ifndef FLASH_UPDATE_PAGE_H_
#define FLASH_UPDATE_PAGE_H_

#include <Protocol/FlashUpdatePage.h>
#include <Protocol/PageEngine.h>

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

/** Returns the flash page's state to what it is when the driver is loaded: part of the unload. **/
VOID ResetFlashUpdatePageState (VOID);

/**
  Event handler of the flash page: counts clock seconds up on the bar and
  closes the page once the bar has reached 100 (or the shared countdown has
  run out), or on Enter or Escape.

  @return UI_EVENT_NOT_HANDLED, UI_EVENT_HANDLED or UI_EVENT_HANDLED_PAGE_CLOSED.
**/
UINTN
EFIAPI
FlashUpdatePageEventHandler (IN OUT UI_EVENT *Event);

VOID EFIAPI ShowFlashUpdatePage (VOID);
VOID EFIAPI SetFlashProgress (IN UINTN Percent);
VOID EFIAPI SetFlashStatusText (IN CHAR8 *Text OPTIONAL);
VOID EFIAPI ShowFlashResult (IN UINT32 Result);
EFI_STATUS EFIAPI FlashSessionPassThrough (
  IN VOID *Unused, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4);

#endif
