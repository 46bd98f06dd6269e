/** @file
  HII package formats: package headers, string packages and string blocks.
**/
#ifndef MDE_LITE_UEFI_IFR_H_
#define MDE_LITE_UEFI_IFR_H_

#include <Uefi/UefiBaseType.h>

typedef VOID *EFI_HII_HANDLE;
typedef CHAR16 *EFI_STRING;
typedef UINT16 EFI_STRING_ID;
typedef UINT16 EFI_IMAGE_ID;

#pragma pack(1)

typedef struct {
  UINT32 Length : 24;
  UINT32 Type : 8;
} EFI_HII_PACKAGE_HEADER;

typedef struct {
  EFI_GUID PackageListGuid;
  UINT32 PackageLength;
} EFI_HII_PACKAGE_LIST_HEADER;

#define EFI_HII_PACKAGE_TYPE_ALL 0x00
#define EFI_HII_PACKAGE_TYPE_GUID 0x01
#define EFI_HII_PACKAGE_FORMS 0x02
#define EFI_HII_PACKAGE_STRINGS 0x04
#define EFI_HII_PACKAGE_FONTS 0x05
#define EFI_HII_PACKAGE_IMAGES 0x06
#define EFI_HII_PACKAGE_END 0xDF

typedef struct {
  EFI_HII_PACKAGE_HEADER Header;
  UINT32 HdrSize;
  UINT32 StringInfoOffset;
  CHAR16 LanguageWindow[16];
  EFI_STRING_ID LanguageName;
  CHAR8 Language[1];
} EFI_HII_STRING_PACKAGE_HDR;

typedef struct {
  UINT8 BlockType;
} EFI_HII_STRING_BLOCK;

#define EFI_HII_SIBT_END 0x00
#define EFI_HII_SIBT_STRING_UCS2 0x14
#define EFI_HII_SIBT_SKIP1 0x20
#define EFI_HII_SIBT_SKIP2 0x21

#pragma pack()

STATIC_ASSERT (sizeof (EFI_HII_PACKAGE_HEADER) == 4, "HII package header is 4 bytes");
STATIC_ASSERT (sizeof (EFI_HII_PACKAGE_LIST_HEADER) == 20, "HII package list header is 20 bytes");
STATIC_ASSERT (OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, Language) == 46, "string package header layout");

#endif
