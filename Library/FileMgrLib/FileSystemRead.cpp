/** @file
  Whole files from disk volumes (simple file system protocol).

  A volume may answer anything: information smaller than EFI_FILE_INFO, a file
  size that cannot be held, more bytes read than asked for. Each such answer
  gets a status, and nothing is read or written beyond the buffers made here.
  Every file and root directory opened here is closed again, and a failing
  call hands out no buffer.
**/
#include <Guid/FileInfo.h>
#include <Library/TrackedAllocationLib.h>
#include <Library/UefiBootServicesTableLib.h>

#include "FileMgrLibInternal.h"

#define TRACKED_POOL_FILE "Library/FileMgrLib/FileSystemRead"

namespace {

//
// Zero bytes behind disk data, so that 8-bit and UCS-2 text ends terminated.
//
constexpr UINTN mDataPadding = 2;

/**
  Gets the file information of File into a tracked buffer of at least
  SIZE_OF_EFI_FILE_INFO bytes: first the size it needs, then the information.
**/
EFI_STATUS
GetFileInformation (IN EFI_FILE_PROTOCOL *File, OUT EFI_FILE_INFO **Info)
{
  EFI_STATUS Status;
  UINTN InfoSize = 0;

  *Info = nullptr;
  Status = File->GetInfo (File, &gEfiFileInfoGuid, &InfoSize, nullptr);
  if (Status != EFI_BUFFER_TOO_SMALL) {
    //
    // Success for an empty buffer cannot be right: the information has a
    // fixed part of its own.
    //
    return EFI_ERROR (Status) ? Status : EFI_DEVICE_ERROR;
  }

  if (InfoSize < SIZE_OF_EFI_FILE_INFO) {
    return EFI_DEVICE_ERROR;
  }

  Status = ALLOCATE_TRACKED_POOL (*Info, InfoSize);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  //
  // The buffer keeps its size whatever the second answer reports, and it is
  // zero-filled, so FileSize is read from inside it in any case.
  //
  UINTN FilledSize = InfoSize;
  Status = File->GetInfo (File, &gEfiFileInfoGuid, &FilledSize, *Info);
  if (EFI_ERROR (Status)) {
    FREE_TRACKED_POOL (*Info);
  }

  return Status;
}

/**
  Reads the whole of File into a new tracked buffer of its size plus two zero
  bytes.
**/
EFI_STATUS
ReadWholeFile (IN EFI_FILE_PROTOCOL *File, OUT VOID **Data, OUT UINTN *DataSize)
{
  EFI_STATUS Status;
  EFI_FILE_INFO *Info = nullptr;

  *Data = nullptr;
  Status = GetFileInformation (File, &Info);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  UINT64 FileSize = Info->FileSize;
  FREE_TRACKED_POOL (Info);

  if (FileSize > MAX_UINTN - mDataPadding) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = ALLOCATE_TRACKED_POOL (*Data, (UINTN)FileSize + mDataPadding);
  if (EFI_ERROR (Status)) {
    return EFI_OUT_OF_RESOURCES;
  }

  UINTN ReadSize = (UINTN)FileSize;
  Status = File->Read (File, &ReadSize, *Data);
  if (!EFI_ERROR (Status) && (ReadSize > FileSize)) {
    //
    // More than the buffer was asked to take: the answer cannot be trusted.
    //
    Status = EFI_DEVICE_ERROR;
  }

  if (EFI_ERROR (Status)) {
    FREE_TRACKED_POOL (*Data);
    return Status;
  }

  *DataSize = ReadSize;
  return Status;
}

} // namespace

EFI_STATUS
OpenFileOnAnyFileSystem (IN CONST CHAR16 *FileName, OUT EFI_FILE_PROTOCOL **File)
{
  EFI_STATUS Status;
  EFI_HANDLE *Handles = nullptr;
  UINTN HandleCount = 0;

  *File = nullptr;
  Status = gBS->LocateHandleBuffer (ByProtocol, &gEfiSimpleFileSystemProtocolGuid, nullptr, &HandleCount, &Handles);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (Handles == nullptr) {
    return EFI_NOT_FOUND;
  }

  Status = EFI_NOT_FOUND;
  for (UINTN Index = 0; Index < HandleCount; Index++) {
    EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *FileSystem = nullptr;
    EFI_FILE_PROTOCOL *Root = nullptr;
    EFI_FILE_PROTOCOL *Opened = nullptr;

    Status = gBS->HandleProtocol (Handles[Index], &gEfiSimpleFileSystemProtocolGuid, (VOID **)&FileSystem);
    if (!EFI_ERROR (Status) && (FileSystem == nullptr)) {
      Status = EFI_NOT_FOUND;
    }

    if (EFI_ERROR (Status)) {
      continue;
    }

    Status = FileSystem->OpenVolume (FileSystem, &Root);
    if (!EFI_ERROR (Status) && (Root == nullptr)) {
      Status = EFI_NOT_FOUND;
    }

    if (EFI_ERROR (Status)) {
      continue;
    }

    Status = Root->Open (Root, &Opened, (CHAR16 *)FileName, EFI_FILE_MODE_READ, EFI_FILE_VALID_ATTR);
    //
    // The file handle stands on its own; the root directory is not needed
    // any more.
    //
    Root->Close (Root);
    if (!EFI_ERROR (Status) && (Opened == nullptr)) {
      Status = EFI_NOT_FOUND;
    }

    if (!EFI_ERROR (Status)) {
      *File = Opened;
      break;
    }
  }

  FREE_TRACKED_POOL (Handles);
  return Status;
}

EFI_STATUS
EFIAPI
ReadFileDataFromFS (IN CONST CHAR16 *FileName, OUT VOID **Buffer, OUT UINTN *Size)
{
  EFI_STATUS Status;
  EFI_FILE_PROTOCOL *File = nullptr;
  VOID *Data = nullptr;
  UINTN DataSize = 0;

  if ((FileName == nullptr) || (Buffer == nullptr) || (Size == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  Status = OpenFileOnAnyFileSystem (FileName, &File);
  if (EFI_ERROR (Status) || (File == nullptr)) {
    return EFI_NOT_FOUND;
  }

  Status = ReadWholeFile (File, &Data, &DataSize);

  //
  // Closing a file that was only read cannot lose anything, but a volume
  // that reports a failure gets it passed on, without data, so that no
  // failing call hands out a buffer.
  //
  EFI_STATUS CloseStatus = File->Close (File);
  if (!EFI_ERROR (Status) && EFI_ERROR (CloseStatus)) {
    Status = CloseStatus;
    FREE_TRACKED_POOL (Data);
  }

  if (!EFI_ERROR (Status)) {
    *Buffer = Data;
    *Size = DataSize;
  }

  return Status;
}
