/** @file
  Simple file system protocol and the file protocol.
**/
#ifndef MDE_LITE_SIMPLE_FILE_SYSTEM_H_
#define MDE_LITE_SIMPLE_FILE_SYSTEM_H_

#include <Uefi.h>

#define EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_GUID                                                                           \
  {                                                                                                                    \
    0x964e5b22, 0x6459, 0x11d2,                                                                                        \
    {                                                                                                                  \
      0x8e, 0x39, 0x00, 0xa0, 0xc9, 0x69, 0x72, 0x3b                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_SIMPLE_FILE_SYSTEM_PROTOCOL EFI_SIMPLE_FILE_SYSTEM_PROTOCOL;
typedef struct _EFI_FILE_PROTOCOL EFI_FILE_PROTOCOL;
typedef EFI_FILE_PROTOCOL *EFI_FILE_HANDLE;

#define EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_REVISION 0x00010000
#define EFI_FILE_PROTOCOL_REVISION 0x00010000
#define EFI_FILE_PROTOCOL_REVISION2 0x00020000

#define EFI_FILE_MODE_READ 0x0000000000000001ULL
#define EFI_FILE_MODE_WRITE 0x0000000000000002ULL
#define EFI_FILE_MODE_CREATE 0x8000000000000000ULL

#define EFI_FILE_READ_ONLY 0x0000000000000001ULL
#define EFI_FILE_HIDDEN 0x0000000000000002ULL
#define EFI_FILE_SYSTEM 0x0000000000000004ULL
#define EFI_FILE_RESERVED 0x0000000000000008ULL
#define EFI_FILE_DIRECTORY 0x0000000000000010ULL
#define EFI_FILE_ARCHIVE 0x0000000000000020ULL
#define EFI_FILE_VALID_ATTR 0x0000000000000037ULL

typedef EFI_STATUS (EFIAPI *EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_OPEN_VOLUME) (IN EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *This,
                                                                          OUT EFI_FILE_PROTOCOL **Root);

struct _EFI_SIMPLE_FILE_SYSTEM_PROTOCOL {
  UINT64 Revision;
  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_OPEN_VOLUME OpenVolume;
};

typedef EFI_STATUS (EFIAPI *EFI_FILE_OPEN) (IN EFI_FILE_PROTOCOL *This,
                                            OUT EFI_FILE_PROTOCOL **NewHandle,
                                            IN CHAR16 *FileName,
                                            IN UINT64 OpenMode,
                                            IN UINT64 Attributes);
typedef EFI_STATUS (EFIAPI *EFI_FILE_CLOSE) (IN EFI_FILE_PROTOCOL *This);
typedef EFI_STATUS (EFIAPI *EFI_FILE_DELETE) (IN EFI_FILE_PROTOCOL *This);
typedef EFI_STATUS (EFIAPI *EFI_FILE_READ) (IN EFI_FILE_PROTOCOL *This, IN OUT UINTN *BufferSize, OUT VOID *Buffer);
typedef EFI_STATUS (EFIAPI *EFI_FILE_WRITE) (IN EFI_FILE_PROTOCOL *This, IN OUT UINTN *BufferSize, IN VOID *Buffer);
typedef EFI_STATUS (EFIAPI *EFI_FILE_GET_POSITION) (IN EFI_FILE_PROTOCOL *This, OUT UINT64 *Position);
typedef EFI_STATUS (EFIAPI *EFI_FILE_SET_POSITION) (IN EFI_FILE_PROTOCOL *This, IN UINT64 Position);
typedef EFI_STATUS (EFIAPI *EFI_FILE_GET_INFO) (IN EFI_FILE_PROTOCOL *This,
                                                IN EFI_GUID *InformationType,
                                                IN OUT UINTN *BufferSize,
                                                OUT VOID *Buffer);
typedef EFI_STATUS (EFIAPI *EFI_FILE_SET_INFO) (IN EFI_FILE_PROTOCOL *This,
                                                IN EFI_GUID *InformationType,
                                                IN UINTN BufferSize,
                                                IN VOID *Buffer);
typedef EFI_STATUS (EFIAPI *EFI_FILE_FLUSH) (IN EFI_FILE_PROTOCOL *This);

struct _EFI_FILE_PROTOCOL {
  UINT64 Revision;
  EFI_FILE_OPEN Open;
  EFI_FILE_CLOSE Close;
  EFI_FILE_DELETE Delete;
  EFI_FILE_READ Read;
  EFI_FILE_WRITE Write;
  EFI_FILE_GET_POSITION GetPosition;
  EFI_FILE_SET_POSITION SetPosition;
  EFI_FILE_GET_INFO GetInfo;
  EFI_FILE_SET_INFO SetInfo;
  EFI_FILE_FLUSH Flush;
  VOID *OpenEx;
  VOID *ReadEx;
  VOID *WriteEx;
  VOID *FlushEx;
};

extern EFI_GUID gEfiSimpleFileSystemProtocolGuid;

#endif
