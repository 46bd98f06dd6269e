/** @file
  Reads a file from the volume that the test application was booted from: the
  driver image under test lies beside it on the same FAT volume.
**/
#include "OwnVolumeFiles.h"

#include <Guid/FileInfo.h>
extern "C" {
#include <Library/MemoryAllocationLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/LoadedImage.h>
#include <Protocol/SimpleFileSystem.h>

/**
  Opens the root directory of the volume that this image was loaded from.
**/
STATIC
EFI_STATUS
OpenOwnVolume (OUT EFI_FILE_PROTOCOL **Root)
{
  EFI_LOADED_IMAGE_PROTOCOL *LoadedImage = nullptr;
  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *FileSystem = nullptr;
  EFI_STATUS Status;

  Status = gBS->HandleProtocol (gImageHandle, &gEfiLoadedImageProtocolGuid, (VOID **)&LoadedImage);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Status = gBS->HandleProtocol (LoadedImage->DeviceHandle, &gEfiSimpleFileSystemProtocolGuid, (VOID **)&FileSystem);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  return FileSystem->OpenVolume (FileSystem, Root);
}

/**
  Reads the size of an open file from its EFI_FILE_INFO.
**/
STATIC
EFI_STATUS
GetFileSize (IN EFI_FILE_PROTOCOL *File, OUT UINTN *Size)
{
  EFI_FILE_INFO *Info;
  UINTN InfoSize = 0;
  EFI_STATUS Status;

  Status = File->GetInfo (File, &gEfiFileInfoGuid, &InfoSize, nullptr);
  if (Status != EFI_BUFFER_TOO_SMALL) {
    return EFI_ERROR (Status) ? Status : EFI_DEVICE_ERROR;
  }

  Info = (EFI_FILE_INFO *)AllocatePool (InfoSize);
  if (Info == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = File->GetInfo (File, &gEfiFileInfoGuid, &InfoSize, Info);
  if (!EFI_ERROR (Status)) {
    *Size = (UINTN)Info->FileSize;
  }

  FreePool (Info);
  return Status;
}

/**
  Reads all Size bytes of an open file into a new pool buffer.
**/
STATIC
EFI_STATUS
ReadWholeFile (IN EFI_FILE_PROTOCOL *File, IN UINTN Size, OUT VOID **Buffer)
{
  UINTN ReadSize = Size;
  EFI_STATUS Status;

  // An empty file cannot be an image; say so instead of loading nothing.
  if (Size == 0) {
    return EFI_END_OF_FILE;
  }

  *Buffer = AllocatePool (Size);
  if (*Buffer == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = File->Read (File, &ReadSize, *Buffer);
  if (!EFI_ERROR (Status) && (ReadSize != Size)) {
    Status = EFI_END_OF_FILE;
  }

  if (EFI_ERROR (Status)) {
    FreePool (*Buffer);
    *Buffer = nullptr;
  }

  return Status;
}

EFI_STATUS
ReadFileFromOwnVolume (IN CONST CHAR16 *Path, OUT VOID **Buffer, OUT UINTN *Size)
{
  EFI_FILE_PROTOCOL *Root = nullptr;
  EFI_FILE_PROTOCOL *File = nullptr;
  EFI_STATUS Status;

  *Buffer = nullptr;
  *Size = 0;

  Status = OpenOwnVolume (&Root);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  // Open() takes a non-const name but only reads it.
  Status = Root->Open (Root, &File, (CHAR16 *)Path, EFI_FILE_MODE_READ, 0);
  if (!EFI_ERROR (Status)) {
    Status = GetFileSize (File, Size);
    if (!EFI_ERROR (Status)) {
      Status = ReadWholeFile (File, *Size, Buffer);
    }

    File->Close (File);
  }

  Root->Close (Root);
  if (EFI_ERROR (Status)) {
    *Size = 0;
  }

  return Status;
}
