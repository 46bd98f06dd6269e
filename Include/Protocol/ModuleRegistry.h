/** @file
  MODULE_REGISTRY_PROTOCOL: receives the list of module identification
  records. A packed record: one byte, then Register at byte 1 and Unregister at
  byte 9, each called with the registry and the list head.
**/
#ifndef KEST_MODULE_REGISTRY_PROTOCOL_H_
#define KEST_MODULE_REGISTRY_PROTOCOL_H_

#include <Uefi.h>

#define MODULE_REGISTRY_PROTOCOL_GUID                                                                                  \
  {                                                                                                                    \
    0x11d1ec21, 0xe568, 0x4eb0,                                                                                        \
    {                                                                                                                  \
      0x8e, 0x1d, 0xa0, 0x80, 0x97, 0x72, 0xb6, 0x06                                                                   \
    }                                                                                                                  \
  }

typedef struct _MODULE_REGISTRY_PROTOCOL MODULE_REGISTRY_PROTOCOL;

typedef EFI_STATUS (EFIAPI *MODULE_REGISTRY_CALL) (IN MODULE_REGISTRY_PROTOCOL *Registry, IN LIST_ENTRY *ListHead);

#pragma pack(1)
struct _MODULE_REGISTRY_PROTOCOL {
  UINT8 Revision;
  MODULE_REGISTRY_CALL Register;   // byte 1
  MODULE_REGISTRY_CALL Unregister; // byte 9
};
#pragma pack()

STATIC_ASSERT (OFFSET_OF (MODULE_REGISTRY_PROTOCOL, Register) == 1, "Register at byte 1");
STATIC_ASSERT (OFFSET_OF (MODULE_REGISTRY_PROTOCOL, Unregister) == 9, "Unregister at byte 9");

extern EFI_GUID gModuleRegistryProtocolGuid;

#endif
