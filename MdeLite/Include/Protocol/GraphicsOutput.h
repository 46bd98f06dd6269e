/** @file
  Graphics output protocol: the BLT pixel format.
**/
#ifndef MDE_LITE_GRAPHICS_OUTPUT_H_
#define MDE_LITE_GRAPHICS_OUTPUT_H_

#include <Uefi.h>

#define EFI_GRAPHICS_OUTPUT_PROTOCOL_GUID                                                                              \
  {                                                                                                                    \
    0x9042a9de, 0x23dc, 0x4a38,                                                                                        \
    {                                                                                                                  \
      0x96, 0xfb, 0x7a, 0xde, 0xd0, 0x80, 0x51, 0x6a                                                                   \
    }                                                                                                                  \
  }

typedef struct {
  UINT8 Blue;
  UINT8 Green;
  UINT8 Red;
  UINT8 Reserved;
} EFI_GRAPHICS_OUTPUT_BLT_PIXEL;

STATIC_ASSERT (sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL) == 4, "BLT pixel is 4 bytes");

extern EFI_GUID gEfiGraphicsOutputProtocolGuid;

#endif
