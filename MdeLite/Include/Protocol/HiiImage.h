/** @file
  EFI_HII_IMAGE_PROTOCOL: the driver only locates it and keeps the pointer.
**/
#ifndef MDE_LITE_HIIIMAGE_H_
#define MDE_LITE_HIIIMAGE_H_

#include <Uefi.h>

#define EFI_HII_IMAGE_PROTOCOL_GUID                                                                                    \
  {                                                                                                                    \
    0x31a6406a, 0x6bdf, 0x4e46,                                                                                        \
    {                                                                                                                  \
      0xb2, 0xa2, 0xeb, 0xaa, 0x89, 0xc4, 0x09, 0x20                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_HII_IMAGE_PROTOCOL EFI_HII_IMAGE_PROTOCOL;

extern EFI_GUID gEfiHiiImageProtocolGuid;

#endif
