/** @file
  FLASH_UPDATE_PAGE_PROTOCOL: the page that the firmware-update driver shows
  while it writes the flash. The members take no pointer to the protocol.
**/
#ifndef KEST_FLASH_UPDATE_PAGE_PROTOCOL_H_
#define KEST_FLASH_UPDATE_PAGE_PROTOCOL_H_

#include <Uefi.h>

#define FLASH_UPDATE_PAGE_PROTOCOL_GUID                                                                                \
  {                                                                                                                    \
    0xbccb2fa7, 0x0fc7, 0x43e4,                                                                                        \
    {                                                                                                                  \
      0xa4, 0xdc, 0x90, 0xac, 0xc8, 0x87, 0x1e, 0x7e                                                                   \
    }                                                                                                                  \
  }

#define FLASH_UPDATE_PAGE_PROTOCOL_REVISION 2

///
/// Outcomes of a flash update, the argument of ShowResult.
///
typedef enum {
  FlashResultSuccessReboot = 0,
  FlashResultFailureReboot = 1,
  FlashResultAntiTheftBlocked = 2,
  FlashResultDowngradeBlocked = 3,
  FlashResultSecureBootDowngradeBlocked = 4,
  FlashResultSuccess = 5,
  FlashResultFailure = 6
} FLASH_UPDATE_RESULT;

typedef VOID (EFIAPI *FLASH_PAGE_SHOW) (VOID);
typedef VOID (EFIAPI *FLASH_PAGE_SET_PROGRESS) (IN UINTN Percent);
typedef VOID (EFIAPI *FLASH_PAGE_SET_STATUS_TEXT) (IN CHAR8 *Text OPTIONAL);
typedef VOID (EFIAPI *FLASH_PAGE_SHOW_RESULT) (IN UINT32 Result);

/**
  Passes a session request through to the UI framework's SessionRequest; the
  first argument is replaced by the framework's service table.
**/
typedef EFI_STATUS (EFIAPI *FLASH_PAGE_SESSION_PASS_THROUGH) (
  IN VOID *Unused, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4);

typedef struct {
  FLASH_PAGE_SHOW Show;
  FLASH_PAGE_SET_PROGRESS SetProgress;
  FLASH_PAGE_SET_STATUS_TEXT SetStatusText;
  FLASH_PAGE_SHOW_RESULT ShowResult;
  UINT32 Revision;
  UINT32 Reserved;
  FLASH_PAGE_SESSION_PASS_THROUGH SessionPassThrough;
} FLASH_UPDATE_PAGE_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (FLASH_UPDATE_PAGE_PROTOCOL, ShowResult) == 24, "flash page member 4");
STATIC_ASSERT (OFFSET_OF (FLASH_UPDATE_PAGE_PROTOCOL, Revision) == 32, "flash page member 5");
STATIC_ASSERT (OFFSET_OF (FLASH_UPDATE_PAGE_PROTOCOL, Reserved) == 36, "flash page member 6");
STATIC_ASSERT (OFFSET_OF (FLASH_UPDATE_PAGE_PROTOCOL, SessionPassThrough) == 40, "flash page member 7");
STATIC_ASSERT (sizeof (FLASH_UPDATE_PAGE_PROTOCOL) == 48, "flash page protocol size");

extern EFI_GUID gFlashUpdatePageProtocolGuid;

#endif
