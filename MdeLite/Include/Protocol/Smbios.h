/** @file
  SMBIOS protocol.
**/
#ifndef MDE_LITE_SMBIOS_H_
#define MDE_LITE_SMBIOS_H_

#include <IndustryStandard/SmBios.h>
#include <Uefi.h>

#define EFI_SMBIOS_PROTOCOL_GUID                                                                                       \
  {                                                                                                                    \
    0x03583ff6, 0xcb36, 0x4940,                                                                                        \
    {                                                                                                                  \
      0x94, 0x7e, 0xb9, 0xb3, 0x9f, 0x4a, 0xfa, 0xf7                                                                   \
    }                                                                                                                  \
  }

typedef SMBIOS_TYPE EFI_SMBIOS_TYPE;
typedef SMBIOS_HANDLE EFI_SMBIOS_HANDLE;
typedef SMBIOS_STRUCTURE EFI_SMBIOS_TABLE_HEADER;

typedef struct _EFI_SMBIOS_PROTOCOL EFI_SMBIOS_PROTOCOL;

typedef EFI_STATUS (EFIAPI *EFI_SMBIOS_GET_NEXT) (IN CONST EFI_SMBIOS_PROTOCOL *This,
                                                  IN OUT EFI_SMBIOS_HANDLE *SmbiosHandle,
                                                  IN EFI_SMBIOS_TYPE *Type OPTIONAL,
                                                  OUT EFI_SMBIOS_TABLE_HEADER **Record,
                                                  OUT EFI_HANDLE *ProducerHandle OPTIONAL);

struct _EFI_SMBIOS_PROTOCOL {
  VOID *Add;
  VOID *UpdateString;
  VOID *Remove;
  EFI_SMBIOS_GET_NEXT GetNext;
  UINT8 MajorVersion;
  UINT8 MinorVersion;
};

extern EFI_GUID gEfiSmbiosProtocolGuid;

#endif
