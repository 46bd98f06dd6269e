/** @file
  BOOT_MENU_PROTOCOL: the one-time boot menu service. Plain functions, without
  an interface argument.
**/
#ifndef KEST_BOOT_MENU_PROTOCOL_H_
#define KEST_BOOT_MENU_PROTOCOL_H_

#include <Uefi.h>

#define BOOT_MENU_PROTOCOL_GUID                                                                                        \
  {                                                                                                                    \
    0x3a09f4a1, 0x66a8, 0x4fa4,                                                                                        \
    {                                                                                                                  \
      0x8b, 0x1c, 0x05, 0x50, 0xb3, 0xcb, 0x61, 0xa4                                                                   \
    }                                                                                                                  \
  }

typedef EFI_STATUS (EFIAPI *BOOT_MENU_RUN) (VOID);
typedef EFI_STATUS (EFIAPI *BOOT_MENU_SET_FLAG) (IN UINTN Index, IN UINT8 *Flag);

typedef struct {
  BOOT_MENU_RUN RunBootMenu; // 0
  VOID *Slot1;
  BOOT_MENU_SET_FLAG SetBootMenuFlag; // 2
} BOOT_MENU_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (BOOT_MENU_PROTOCOL, RunBootMenu) == 0, "boot menu slot 0");
STATIC_ASSERT (OFFSET_OF (BOOT_MENU_PROTOCOL, SetBootMenuFlag) == 2 * 8, "boot menu slot 2");

extern EFI_GUID gBootMenuProtocolGuid;

#endif
