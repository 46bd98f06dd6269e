/** @file
  EFI_HII_FONT_PROTOCOL: the driver only locates it and keeps the pointer.
**/
#ifndef MDE_LITE_HIIFONT_H_
#define MDE_LITE_HIIFONT_H_

#include <Uefi.h>

#define EFI_HII_FONT_PROTOCOL_GUID                                                                                     \
  {                                                                                                                    \
    0xe9ca4775, 0x8657, 0x47fc,                                                                                        \
    {                                                                                                                  \
      0x97, 0xe7, 0x7e, 0xd6, 0x5a, 0x08, 0x43, 0x24                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_HII_FONT_PROTOCOL EFI_HII_FONT_PROTOCOL;

extern EFI_GUID gEfiHiiFontProtocolGuid;

#endif
