/** @file
  Device path protocol: the generic node header and the firmware-volume nodes
  of PI (a volume, and a file in it).
**/
#ifndef MDE_LITE_DEVICE_PATH_H_
#define MDE_LITE_DEVICE_PATH_H_

#include <Uefi/UefiBaseType.h>

#define EFI_DEVICE_PATH_PROTOCOL_GUID                                                                                  \
  {                                                                                                                    \
    0x09576e91, 0x6d3f, 0x11d2,                                                                                        \
    {                                                                                                                  \
      0x8e, 0x39, 0x00, 0xa0, 0xc9, 0x69, 0x72, 0x3b                                                                   \
    }                                                                                                                  \
  }

#pragma pack(1)
typedef struct {
  UINT8 Type;
  UINT8 SubType;
  UINT8 Length[2];
} EFI_DEVICE_PATH_PROTOCOL;
#pragma pack()

#define END_DEVICE_PATH_TYPE 0x7f
#define END_ENTIRE_DEVICE_PATH_SUBTYPE 0xFF
#define MEDIA_DEVICE_PATH 0x04
#define MEDIA_FILEPATH_DP 0x04
#define MEDIA_PIWG_FW_FILE_DP 0x06
#define MEDIA_PIWG_FW_VOL_DP 0x07

#pragma pack(1)
///
/// A file of a firmware volume, by its name (the FILE_GUID of its module).
///
typedef struct {
  EFI_DEVICE_PATH_PROTOCOL Header;
  EFI_GUID FvFileName;
} MEDIA_FW_VOL_FILEPATH_DEVICE_PATH;
#pragma pack()

extern EFI_GUID gEfiDevicePathProtocolGuid;

#endif
