/** @file
  PERSONALITY_MODULE_PROTOCOL: the platform's personality module, which may
  supply a logo of its own. Only the logo pointer is read.
**/
#ifndef KEST_PERSONALITY_MODULE_PROTOCOL_H_
#define KEST_PERSONALITY_MODULE_PROTOCOL_H_

#include <Uefi.h>

#define PERSONALITY_MODULE_PROTOCOL_GUID                                                                               \
  {                                                                                                                    \
    0x00a480ce, 0xd751, 0x4b11,                                                                                        \
    {                                                                                                                  \
      0x89, 0xfb, 0x7d, 0xce, 0xbb, 0xb2, 0x2f, 0x4d                                                                   \
    }                                                                                                                  \
  }

#pragma pack(1)
typedef struct {
  UINT8 Reserved[12];
  UINT32 DataSize;
  UINT8 Data[1]; ///< DataSize bytes of image data
} PERSONALITY_LOGO_IMAGE;
#pragma pack()

typedef struct {
  UINT64 Reserved[3];
  PERSONALITY_LOGO_IMAGE *Logo; ///< null when the platform has no logo of its own
} PERSONALITY_MODULE_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (PERSONALITY_LOGO_IMAGE, DataSize) == 12, "logo size after 12 bytes");
STATIC_ASSERT (OFFSET_OF (PERSONALITY_LOGO_IMAGE, Data) == 16, "logo data after the size");
STATIC_ASSERT (OFFSET_OF (PERSONALITY_MODULE_PROTOCOL, Logo) == 3 * 8, "logo pointer is the fourth word");

extern EFI_GUID gPersonalityModuleProtocolGuid;

#endif
