/** @file
  SETUP_STATE_PROTOCOL: receives the password state on the way into Setup.
**/
#ifndef KEST_SETUP_STATE_PROTOCOL_H_
#define KEST_SETUP_STATE_PROTOCOL_H_

#include <Uefi.h>

#define SETUP_STATE_PROTOCOL_GUID                                                                                      \
  {                                                                                                                    \
    0x6a683524, 0x687d, 0x4d7b,                                                                                        \
    {                                                                                                                  \
      0x93, 0xe1, 0x95, 0x29, 0x8e, 0xe3, 0x13, 0xd1                                                                   \
    }                                                                                                                  \
  }

typedef EFI_STATUS (EFIAPI *SETUP_STATE_SET_FLAG) (IN UINTN Index, IN UINT8 *Flag);

typedef struct {
  VOID *Slot0;
  VOID *Slot1;
  VOID *Slot2;
  SETUP_STATE_SET_FLAG SetSetupFlag; // 3
} SETUP_STATE_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (SETUP_STATE_PROTOCOL, SetSetupFlag) == 3 * 8, "setup state slot 3");

extern EFI_GUID gSetupStateProtocolGuid;

#endif
