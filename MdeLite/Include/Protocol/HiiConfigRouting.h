/** @file
  EFI_HII_CONFIG_ROUTING_PROTOCOL: the driver only locates it and keeps the pointer.
**/
#ifndef MDE_LITE_HIICONFIGROUTING_H_
#define MDE_LITE_HIICONFIGROUTING_H_

#include <Uefi.h>

#define EFI_HII_CONFIG_ROUTING_PROTOCOL_GUID                                                                           \
  {                                                                                                                    \
    0x587e72d7, 0xcc50, 0x4f79,                                                                                        \
    {                                                                                                                  \
      0x82, 0x09, 0xca, 0x29, 0x1f, 0xc1, 0xa1, 0x0f                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_HII_CONFIG_ROUTING_PROTOCOL EFI_HII_CONFIG_ROUTING_PROTOCOL;

extern EFI_GUID gEfiHiiConfigRoutingProtocolGuid;

#endif
