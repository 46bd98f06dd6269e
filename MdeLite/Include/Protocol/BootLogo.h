/** @file
  Boot logo protocol: tells the platform where the logo is on the screen.
**/
#ifndef MDE_LITE_BOOT_LOGO_H_
#define MDE_LITE_BOOT_LOGO_H_

#include <Protocol/GraphicsOutput.h>

#define EFI_BOOT_LOGO_PROTOCOL_GUID                                                                                    \
  {                                                                                                                    \
    0xcdea2bd3, 0xfc25, 0x4c1c,                                                                                        \
    {                                                                                                                  \
      0xb9, 0x7c, 0xb3, 0x11, 0x86, 0x06, 0x49, 0x90                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_BOOT_LOGO_PROTOCOL EFI_BOOT_LOGO_PROTOCOL;

typedef EFI_STATUS (EFIAPI *EFI_SET_BOOT_LOGO) (IN EFI_BOOT_LOGO_PROTOCOL *This,
                                                IN EFI_GRAPHICS_OUTPUT_BLT_PIXEL *BltBuffer OPTIONAL,
                                                IN UINTN DestinationX,
                                                IN UINTN DestinationY,
                                                IN UINTN Width,
                                                IN UINTN Height);

struct _EFI_BOOT_LOGO_PROTOCOL {
  EFI_SET_BOOT_LOGO SetBootLogo;
};

extern EFI_GUID gEfiBootLogoProtocolGuid;

#endif
