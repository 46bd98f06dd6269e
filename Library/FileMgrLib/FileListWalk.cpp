/** @file
  The walk over the list file's text: where each entry and its name lie, the
  count of entries, and the filling of the entry array.

  The text is the file's bytes followed by two zero bytes. A carriage return
  ends a line, and a line feed right after it belongs to that end; a lone
  carriage return ends the line as well, so that the byte after it starts the
  next entry instead of being lost. A name ends at the first carriage return or
  zero byte; after a zero byte the rest of the line is skipped, so that the next
  entry still starts on the next line. Every step moves forward, so the walk is
  linear in the size of the text, and it never reads beyond the two zero bytes.
**/
#include <Library/TrackedAllocationLib.h>

#include "FileMgrLibInternal.h"

#define TRACKED_POOL_FILE "Library/FileMgrLib/FileListWalk"

namespace {

constexpr CHAR8 mCarriageReturn = 0x0D;
constexpr CHAR8 mLineFeed = 0x0A;

} // namespace

BOOLEAN
FileListNextLine (IN CONST CHAR8 *Text, IN UINTN Size, IN UINTN Offset, OUT FILE_LIST_LINE *Line)
{
  //
  // A file that ends inside the GUID text or before the separator has no
  // whole entry there: the partial entry is dropped.
  //
  if ((Offset >= Size) || (Size - Offset < FILE_LIST_NAME_OFFSET)) {
    return FALSE;
  }

  Line->Start = Offset;
  Line->NameStart = Offset + FILE_LIST_NAME_OFFSET;
  //
  // Stops at the latest at the zero bytes behind the data, so NameEnd <= Size.
  //
  Line->NameLength = AsciiLineLength (Text + Line->NameStart);

  UINTN LineEnd = Line->NameStart + Line->NameLength;
  while ((LineEnd < Size) && (Text[LineEnd] != mCarriageReturn)) {
    LineEnd++;
  }

  Line->Next = LineEnd;
  if (LineEnd < Size) {
    Line->Next++;
    if ((Line->Next < Size) && (Text[Line->Next] == mLineFeed)) {
      Line->Next++;
    }
  }

  return TRUE;
}

UINT8
FileListCountEntries (IN CONST CHAR8 *Text, IN UINTN Size)
{
  FILE_LIST_LINE Line;
  UINTN Offset = 0;
  UINT8 Count = 0;

  //
  // The count is 8 bits wide: the first FILE_LIST_MAX_ENTRIES entries are
  // kept and the rest of the file is not looked at.
  //
  while ((Count < FILE_LIST_MAX_ENTRIES) && FileListNextLine (Text, Size, Offset, &Line)) {
    Count++;
    Offset = Line.Next;
  }

  return Count;
}

EFI_STATUS
FileListFillEntries (IN CONST CHAR8 *Text, IN UINTN Size, IN OUT FILE_LIST_ENTRY *Entries, IN UINT8 Count)
{
  FILE_LIST_LINE Line;
  UINTN Offset = 0;

  for (UINT8 Index = 0; (Index < Count) && FileListNextLine (Text, Size, Offset, &Line); Index++) {
    Offset = Line.Next;
    ParseGuidText (Text + Line.Start, &Entries[Index].FileGuid);

    EFI_STATUS Status = ALLOCATE_TRACKED_POOL (Entries[Index].Name, (Line.NameLength + 1) * sizeof (CHAR16));
    if (EFI_ERROR (Status)) {
      return Status;
    }

    CopyAsciiToUnicode (Entries[Index].Name, Text + Line.NameStart, Line.NameLength);
  }

  return EFI_SUCCESS;
}
