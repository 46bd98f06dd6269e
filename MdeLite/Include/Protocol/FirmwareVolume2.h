/** @file
  Firmware volume protocol, version 2 (EFI_FIRMWARE_VOLUME2_PROTOCOL).
**/
#ifndef MDE_LITE_FIRMWARE_VOLUME2_H_
#define MDE_LITE_FIRMWARE_VOLUME2_H_

#include <PiDxe.h>

#define EFI_FIRMWARE_VOLUME2_PROTOCOL_GUID                                                                             \
  {                                                                                                                    \
    0x220e73b6, 0x6bdb, 0x4413,                                                                                        \
    {                                                                                                                  \
      0x84, 0x05, 0xb9, 0x74, 0xb1, 0x08, 0x61, 0x9a                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_FIRMWARE_VOLUME2_PROTOCOL EFI_FIRMWARE_VOLUME2_PROTOCOL;

typedef EFI_STATUS (EFIAPI *EFI_FV_READ_FILE) (IN CONST EFI_FIRMWARE_VOLUME2_PROTOCOL *This,
                                               IN CONST EFI_GUID *NameGuid,
                                               IN OUT VOID **Buffer,
                                               IN OUT UINTN *BufferSize,
                                               OUT EFI_FV_FILETYPE *FoundType,
                                               OUT EFI_FV_FILE_ATTRIBUTES *FileAttributes,
                                               OUT UINT32 *AuthenticationStatus);

typedef EFI_STATUS (EFIAPI *EFI_FV_READ_SECTION) (IN CONST EFI_FIRMWARE_VOLUME2_PROTOCOL *This,
                                                  IN CONST EFI_GUID *NameGuid,
                                                  IN EFI_SECTION_TYPE SectionType,
                                                  IN UINTN SectionInstance,
                                                  IN OUT VOID **Buffer,
                                                  IN OUT UINTN *BufferSize,
                                                  OUT UINT32 *AuthenticationStatus);

struct _EFI_FIRMWARE_VOLUME2_PROTOCOL {
  VOID *GetVolumeAttributes;
  VOID *SetVolumeAttributes;
  EFI_FV_READ_FILE ReadFile;
  EFI_FV_READ_SECTION ReadSection;
  VOID *WriteFile;
  VOID *GetNextFile;
  UINT32 KeySize;
  EFI_HANDLE ParentHandle;
  VOID *GetInfo;
  VOID *SetInfo;
};

extern EFI_GUID gEfiFirmwareVolume2ProtocolGuid;

#endif
