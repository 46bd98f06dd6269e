/** @file
  Loaded image protocol.
**/
#ifndef MDE_LITE_LOADED_IMAGE_H_
#define MDE_LITE_LOADED_IMAGE_H_

#include <Uefi.h>

#define EFI_LOADED_IMAGE_PROTOCOL_GUID                                                                                 \
  {                                                                                                                    \
    0x5B1B31A1, 0x9562, 0x11d2,                                                                                        \
    {                                                                                                                  \
      0x8E, 0x3F, 0x00, 0xA0, 0xC9, 0x69, 0x72, 0x3B                                                                   \
    }                                                                                                                  \
  }

#define EFI_LOADED_IMAGE_PROTOCOL_REVISION 0x1000

typedef struct {
  UINT32 Revision;
  EFI_HANDLE ParentHandle;
  EFI_SYSTEM_TABLE *SystemTable;
  EFI_HANDLE DeviceHandle;
  EFI_DEVICE_PATH_PROTOCOL *FilePath;
  VOID *Reserved;
  UINT32 LoadOptionsSize;
  VOID *LoadOptions;
  VOID *ImageBase;
  UINT64 ImageSize;
  EFI_MEMORY_TYPE ImageCodeType;
  EFI_MEMORY_TYPE ImageDataType;
  EFI_IMAGE_UNLOAD Unload;
} EFI_LOADED_IMAGE_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (EFI_LOADED_IMAGE_PROTOCOL, Unload) == 0x58, "loaded image layout");

extern EFI_GUID gEfiLoadedImageProtocolGuid;

#endif
