/** @file
  Firmware file and section types of the PI specification.
**/
#ifndef MDE_LITE_PI_FIRMWARE_FILE_H_
#define MDE_LITE_PI_FIRMWARE_FILE_H_

#include <Uefi/UefiBaseType.h>

typedef UINT8 EFI_FV_FILETYPE;
typedef UINT8 EFI_SECTION_TYPE;

#define EFI_FV_FILETYPE_RAW 0x01
#define EFI_FV_FILETYPE_FREEFORM 0x02
#define EFI_FV_FILETYPE_DRIVER 0x07

#define EFI_SECTION_PE32 0x10
#define EFI_SECTION_RAW 0x19

///
/// The header in front of every section of a firmware file; Size counts the
/// header too (24 bits, little endian).
///
typedef struct {
  UINT8 Size[3];
  EFI_SECTION_TYPE Type;
} EFI_COMMON_SECTION_HEADER;

STATIC_ASSERT (sizeof (EFI_COMMON_SECTION_HEADER) == 4, "EFI_COMMON_SECTION_HEADER layout");

#endif
