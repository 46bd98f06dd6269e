/** @file
  File information returned by EFI_FILE_PROTOCOL.GetInfo.
**/
#ifndef MDE_LITE_FILE_INFO_H_
#define MDE_LITE_FILE_INFO_H_

#include <Uefi.h>

#define EFI_FILE_INFO_ID                                                                                               \
  {                                                                                                                    \
    0x09576e92, 0x6d3f, 0x11d2,                                                                                        \
    {                                                                                                                  \
      0x8e, 0x39, 0x00, 0xa0, 0xc9, 0x69, 0x72, 0x3b                                                                   \
    }                                                                                                                  \
  }

typedef struct {
  UINT64 Size;
  UINT64 FileSize;
  UINT64 PhysicalSize;
  EFI_TIME CreateTime;
  EFI_TIME LastAccessTime;
  EFI_TIME ModificationTime;
  UINT64 Attribute;
  CHAR16 FileName[1];
} EFI_FILE_INFO;

#define SIZE_OF_EFI_FILE_INFO OFFSET_OF (EFI_FILE_INFO, FileName)

extern EFI_GUID gEfiFileInfoGuid;

#endif
