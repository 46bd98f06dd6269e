/** @file
  Functions shared by the parts of the file manager library; not for callers
  of the library.
**/
#ifndef FILE_MGR_LIB_INTERNAL_H_
#define FILE_MGR_LIB_INTERNAL_H_

#include <Library/FileMgrLib.h>
#include <Protocol/SimpleFileSystem.h>
#include <Uefi.h>

///
/// Bytes in front of a name: the GUID text and the separator.
///
#define FILE_LIST_GUID_TEXT_LENGTH 36
#define FILE_LIST_NAME_OFFSET (FILE_LIST_GUID_TEXT_LENGTH + 1)

///
/// Where one entry of the list text lies, as offsets into the text.
///
typedef struct {
  UINTN Start;      ///< the GUID text
  UINTN NameStart;  ///< the name, FILE_LIST_NAME_OFFSET bytes after Start
  UINTN NameLength; ///< bytes before the first carriage return or zero byte
  UINTN Next;       ///< where the next entry starts (the text's size when this is the last)
} FILE_LIST_LINE;

//
// FileSystemRead.cpp
//

/**
  Opens FileName for reading from the root of the first disk volume that has
  it. Every root directory opened on the way is closed again.

  @param[in]  FileName  Name relative to the volume's root.
  @param[out] File      The open file, or null.

  @return the status of the last step tried; success when a file was opened.
**/
EFI_STATUS
OpenFileOnAnyFileSystem (IN CONST CHAR16 *FileName, OUT EFI_FILE_PROTOCOL **File);

//
// FileMgrLib.cpp
//

/**
  Looks FileName up in the loaded list (FileNameCompare; the first matching
  entry wins; an entry without a name matches nothing).

  @return TRUE with *FileGuid set when an entry matches.
**/
BOOLEAN
FindFileGuidByName (IN CONST CHAR16 *FileName, OUT EFI_GUID *FileGuid);

//
// FileData.cpp
//

/**
  Reads the firmware-volume file that the list names FileName.

  @retval EFI_NOT_FOUND  The name is not listed, or no list is loaded.
  @return                What ReadFileDataFromFVByGuid returns.
**/
EFI_STATUS
ReadFileDataFromFVByName (IN CONST CHAR16 *FileName, OUT VOID **Buffer, OUT UINTN *Size);

//
// FileListWalk.cpp. Text is the list file's Size bytes followed by two zero
// bytes; the walk never reads past them.
//

/**
  Finds the entry that starts at Offset.

  @return FALSE when no whole entry (GUID text and separator) starts there.
**/
BOOLEAN
FileListNextLine (IN CONST CHAR8 *Text, IN UINTN Size, IN UINTN Offset, OUT FILE_LIST_LINE *Line);

/** @return the number of entries in Text, at most FILE_LIST_MAX_ENTRIES. **/
UINT8
FileListCountEntries (IN CONST CHAR8 *Text, IN UINTN Size);

/**
  Fills Count zero-filled entries from Text: GUID and a tracked name buffer.

  @retval EFI_SUCCESS           Every entry has its name.
  @retval EFI_OUT_OF_RESOURCES  A name could not be had; it and the later entries have none.
**/
EFI_STATUS
FileListFillEntries (IN CONST CHAR8 *Text, IN UINTN Size, IN OUT FILE_LIST_ENTRY *Entries, IN UINT8 Count);

//
// FileListText.cpp
//

/**
  Reads a GUID from its 36-character text form. The fields are taken at fixed
  offsets, whatever lies between them; each value is cut to its field's width.
**/
VOID ParseGuidText (IN CONST CHAR8 *Text, OUT EFI_GUID *Guid);

/**
  Skips blanks (0x20), then reads up to MaxDigits hexadecimal digits, stopping
  at the first other character.

  @return the value; 0 for an empty field.
**/
UINT64
ParseHexField (IN CONST CHAR8 *Text, IN UINTN MaxDigits);

/** @return the number of bytes before the first zero byte or carriage return. **/
UINTN
AsciiLineLength (IN CONST CHAR8 *Text);

/**
  Compares two names with A to Z taken as a to z (no other folding). A name
  equals any longer name that it begins, and conversely; two empty names are
  equal, an empty name differs from any other.

  @return 0 for equal, else the first differing characters' difference as stored.
**/
INTN FileNameCompare (IN CONST CHAR16 *First, IN CONST CHAR16 *Second);

/**
  Widens 8-bit characters (as Latin-1) until a zero byte or MaxChars
  characters, then writes a terminating null: Destination holds MaxChars + 1.
**/
VOID CopyAsciiToUnicode (OUT CHAR16 *Destination, IN CONST CHAR8 *Source, IN UINTN MaxChars);

#endif
