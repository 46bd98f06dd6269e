/** @file
  The file list: loading "FileList.lst", releasing it, and looking names up.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/TrackedAllocationLib.h>

#include "FileMgrLibInternal.h"

#define TRACKED_POOL_FILE "Library/FileMgrLib/FileMgrLib"

namespace {

constexpr auto mListFileName = CompileTime::MakeWideString (u"FileList.lst");

//
// Bytes of zeros behind the copy of the list text, so that the text helpers
// that scan for a zero byte stop inside the buffer.
//
constexpr UINTN mTextPadding = 2;

//
// The loaded list; a count of 0 means that no list is loaded.
//
FILE_LIST_ENTRY *mFileList = nullptr;
UINT8 mFileListCount = 0;

} // namespace

EFI_STATUS
EFIAPI
InitFileList (IN CONST EFI_GUID *ListFileGuid)
{
  EFI_STATUS Status;
  VOID *Data = nullptr;
  UINTN DataSize = 0;
  CHAR8 *Text = nullptr;

  if (ListFileGuid == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if ((mFileListCount != 0) && (mFileList != nullptr)) {
    return EFI_NOT_FOUND;
  }

  //
  // A list on a disk takes the place of the firmware's, even when it is empty.
  //
  Status = ReadFileDataFromFS (mListFileName.Text, &Data, &DataSize);
  if (EFI_ERROR (Status)) {
    Status = ReadFileDataFromFVByGuid (ListFileGuid, &Data, &DataSize);
    if (EFI_ERROR (Status)) {
      return Status;
    }
  }

  //
  // One copy with zero bytes behind it: the walk may then scan for a line's
  // end without a bound, whatever the file holds.
  //
  if (DataSize > MAX_UINTN - mTextPadding) {
    FREE_TRACKED_POOL (Data);
    return EFI_OUT_OF_RESOURCES;
  }

  Status = ALLOCATE_TRACKED_POOL (Text, DataSize + mTextPadding);
  if (EFI_ERROR (Status)) {
    FREE_TRACKED_POOL (Data);
    return Status;
  }

  CopyMem (Text, Data, DataSize);
  FREE_TRACKED_POOL (Data);

  //
  // An empty file, or one too short for a GUID and its separator, holds no
  // entry: no list, as a count of 0 means.
  //
  UINT8 Count = FileListCountEntries (Text, DataSize);
  if (Count == 0) {
    FREE_TRACKED_POOL (Text);
    return EFI_NOT_FOUND;
  }

  Status = ALLOCATE_TRACKED_POOL (mFileList, Count * sizeof (FILE_LIST_ENTRY));
  if (EFI_ERROR (Status)) {
    FREE_TRACKED_POOL (Text);
    return Status;
  }

  //
  // A name that cannot be had leaves it and the later entries without a
  // name; the list stays loaded with all its GUIDs, and CleanupFileList
  // releases what there is.
  //
  Status = FileListFillEntries (Text, DataSize, mFileList, Count);
  mFileListCount = Count;
  FREE_TRACKED_POOL (Text);
  return Status;
}

VOID EFIAPI
CleanupFileList (VOID)
{
  if (mFileList != nullptr) {
    for (UINTN Index = 0; Index < mFileListCount; Index++) {
      FREE_TRACKED_POOL (mFileList[Index].Name);
    }
  }

  FREE_TRACKED_POOL (mFileList);
  mFileListCount = 0;
}

BOOLEAN
FindFileGuidByName (IN CONST CHAR16 *FileName, OUT EFI_GUID *FileGuid)
{
  if ((mFileList == nullptr) || (FileName == nullptr)) {
    return FALSE;
  }

  for (UINTN Index = 0; Index < mFileListCount; Index++) {
    if ((mFileList[Index].Name != nullptr) && (FileNameCompare (FileName, mFileList[Index].Name) == 0)) {
      CopyGuid (FileGuid, &mFileList[Index].FileGuid);
      return TRUE;
    }
  }

  return FALSE;
}
