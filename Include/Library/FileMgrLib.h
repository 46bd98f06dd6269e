/** @file
  File manager: reads whole files from disk volumes (simple file system) and
  from firmware volumes, and keeps a list, loaded from "FileList.lst", that maps
  file names to firmware-volume file GUIDs.

  A name is looked for on disk volumes first and only then, through the list, in
  the firmware volumes, so that a file placed on a disk takes the place of the
  firmware's copy.

  Every buffer handed out is the caller's and is released with FreeTrackedPool
  (or FREE_TRACKED_POOL). Buffers read from a disk volume hold the file's bytes
  followed by two zero bytes, so that 8-bit and UCS-2 text comes back
  terminated; buffers read from a firmware volume are as the volume returned
  them. A failing call hands out nothing: *Buffer and *Size are left as they
  were (GetFileData releases the caller's old buffer first, so there *Buffer is
  null after a failure).

  The list file, and whatever a volume answers, is input from outside. The list
  is 8-bit text; every line is one entry: 36 characters of GUID text
  (8-4-4-4-12 hexadecimal digits, either case), one separator byte of any
  value, then the name up to the line's end. How the library reads it:
  - A carriage return ends a line; a line feed right after it belongs to the
    line's end. A carriage return without a line feed ends the line too.
  - The last line may end without a carriage return: it is still an entry.
  - An entry needs its 36 GUID characters and the separator (37 bytes); a file
    that ends before them drops that last partial entry. A file with no whole
    entry (an empty file, too) loads no list: EFI_NOT_FOUND.
  - A zero byte ends a name; the rest of that line is skipped.
  - Only the first 255 entries are kept (the count is 8 bits); later lines are
    ignored.
  Reading never goes past the data, and the work is linear in its size.

  What volumes answer is checked the same way: a firmware volume's success
  without a buffer, or with size 0, is no data (a buffer that came with it is
  released) and the search goes on; file information smaller than
  EFI_FILE_INFO, or success for the size query, is EFI_DEVICE_ERROR; a file
  size that cannot be held with its two zero bytes is EFI_OUT_OF_RESOURCES; a
  read that reports more bytes than asked for is EFI_DEVICE_ERROR; a failed
  Close after a good read is returned and the data released. Every file and
  root directory handle opened is closed again.
**/
#ifndef KEST_FILE_MGR_LIB_H_
#define KEST_FILE_MGR_LIB_H_

#include <Uefi.h>

///
/// The most entries a list holds: the count is 8 bits wide.
///
#define FILE_LIST_MAX_ENTRIES 255

///
/// One line of the list file.
///
typedef struct {
  EFI_GUID FileGuid; ///< name of the firmware-volume file
  CHAR16 *Name;      ///< UCS-2 file name, null-terminated, owned by the entry; null if it could not be had
} FILE_LIST_ENTRY;

/**
  Loads the file list: "FileList.lst" from the first disk volume that has it,
  else the firmware-volume file ListFileGuid.

  @param[in] ListFileGuid  Firmware-volume file that holds the list when no disk has one.

  @retval EFI_SUCCESS            The list is loaded.
  @retval EFI_NOT_FOUND          A list is loaded already (it is kept), the file holds no whole
                                 entry, or neither source has the file.
  @retval EFI_INVALID_PARAMETER  ListFileGuid is null.
  @retval EFI_OUT_OF_RESOURCES   Pool ran out. When it ran out for a name, the list is loaded
                                 and the entries from that one on have no name (they match no
                                 lookup); otherwise no list is loaded.
  @return                        Another failure of the firmware-volume read.
**/
EFI_STATUS
EFIAPI
InitFileList (IN CONST EFI_GUID *ListFileGuid);

/**
  Releases every entry's name and the list; afterwards no list is loaded.
  Harmless when no list is loaded.
**/
VOID EFIAPI CleanupFileList (VOID);

/**
  Reads a whole file by name: from the first disk volume that has it, else
  through the file list from the firmware volumes. What *Buffer holds on entry
  is released first (and *Buffer set to null), even when the read then fails.

  @param[in]      FileName  Name of the file, relative to a volume's root.
  @param[in, out] Buffer    On entry null or a tracked buffer of the caller; on success the data.
  @param[out]     Size      On success the size of the data.

  @retval EFI_SUCCESS            *Buffer and *Size describe the file.
  @retval EFI_NOT_FOUND          No disk volume has it and the list has no such name (or
                                 no firmware volume has the listed file).
  @retval EFI_INVALID_PARAMETER  An argument is null.
  @retval EFI_OUT_OF_RESOURCES   Pool ran out.
**/
EFI_STATUS
EFIAPI
GetFileData (IN CONST CHAR16 *FileName, IN OUT VOID **Buffer, OUT UINTN *Size);

/**
  Reads the named file from the first disk volume that has it. The buffer is
  the file's size plus two zero bytes; *Size is the number of bytes read.

  @param[in]  FileName  Name of the file, relative to a volume's root.
  @param[out] Buffer    On success a new tracked buffer; otherwise unchanged.
  @param[out] Size      On success the size read; otherwise unchanged.

  @retval EFI_SUCCESS            The file was read.
  @retval EFI_NOT_FOUND          No disk volume has the file.
  @retval EFI_INVALID_PARAMETER  An argument is null.
  @retval EFI_OUT_OF_RESOURCES   Pool ran out, or the file is too large to hold.
  @retval EFI_DEVICE_ERROR       The volume gave an answer that cannot be right (information
                                 smaller than EFI_FILE_INFO, more bytes read than asked for).
  @return                        The failure of GetInfo, Read or Close.
**/
EFI_STATUS
EFIAPI
ReadFileDataFromFS (IN CONST CHAR16 *FileName, OUT VOID **Buffer, OUT UINTN *Size);

/**
  Reads the firmware-volume file FileGuid from the first firmware volume that
  gives data for it: its first raw section, else the whole file. The buffer is
  the one that the firmware volume allocated.

  @param[in]  FileGuid  Name of the firmware-volume file.
  @param[out] Buffer    On success the data; otherwise unchanged.
  @param[out] Size      On success the size of the data (above 0); otherwise unchanged.

  @retval EFI_SUCCESS            The file was read.
  @retval EFI_NOT_FOUND          No firmware volume, or none gave data (an answer of success
                                 without a buffer or with size 0 counts as no data).
  @retval EFI_INVALID_PARAMETER  An argument is null.
  @return                        A warning that the volume gave with the data (it is kept),
                                 or the failure of the last read that was tried.
**/
EFI_STATUS
EFIAPI
ReadFileDataFromFVByGuid (IN CONST EFI_GUID *FileGuid, OUT VOID **Buffer, OUT UINTN *Size);

#endif
