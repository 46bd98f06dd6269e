/** @file
  Firmware volume attribute types of the PI specification.
**/
#ifndef MDE_LITE_PI_FIRMWARE_VOLUME_H_
#define MDE_LITE_PI_FIRMWARE_VOLUME_H_

#include <Uefi/UefiBaseType.h>

typedef UINT32 EFI_FV_FILE_ATTRIBUTES;
typedef UINT64 EFI_FV_ATTRIBUTES;

#endif
