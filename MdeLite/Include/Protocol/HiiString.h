/** @file
  HII string protocol.
**/
#ifndef MDE_LITE_HII_STRING_H_
#define MDE_LITE_HII_STRING_H_

#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

#define EFI_HII_STRING_PROTOCOL_GUID                                                                                   \
  {                                                                                                                    \
    0x0fd96974, 0x23aa, 0x4cdc,                                                                                        \
    {                                                                                                                  \
      0xb9, 0xcb, 0x98, 0xd1, 0x77, 0x50, 0x32, 0x2a                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_HII_STRING_PROTOCOL EFI_HII_STRING_PROTOCOL;

typedef EFI_STATUS (EFIAPI *EFI_HII_GET_STRING) (IN CONST EFI_HII_STRING_PROTOCOL *This,
                                                 IN CONST CHAR8 *Language,
                                                 IN EFI_HII_HANDLE PackageList,
                                                 IN EFI_STRING_ID StringId,
                                                 OUT EFI_STRING String,
                                                 IN OUT UINTN *StringSize,
                                                 OUT VOID **StringFontInfo OPTIONAL);

struct _EFI_HII_STRING_PROTOCOL {
  VOID *NewString;
  EFI_HII_GET_STRING GetString;
  VOID *SetString;
  VOID *GetLanguages;
  VOID *GetSecondaryLanguages;
};

extern EFI_GUID gEfiHiiStringProtocolGuid;

#endif
