/** @file
  The formatting engine behind UnicodeSPrint and AsciiSPrint, shared by the
  four entry points of PrintLib.
**/
#ifndef MDE_LITE_PRINT_LIB_INTERNAL_H_
#define MDE_LITE_PRINT_LIB_INTERNAL_H_

#include <Base.h>

/**
  Formats into Buffer, cut to fit, and ends the output with a null when
  BufferSize leaves room for one character.

  @param Buffer         Output; CHAR16 when UnicodeOutput, else CHAR8.
  @param BufferSize     Size of Buffer in bytes.
  @param UnicodeOutput  TRUE for CHAR16 output.
  @param Format         Format string; CHAR16 when UnicodeFormat, else CHAR8.
  @param UnicodeFormat  TRUE for a CHAR16 format string.
  @param Marker         The arguments of the conversions.

  @return the number of characters written, not counting the null.
**/
UINTN
InternalPrintFormat (OUT VOID *Buffer,
                     IN UINTN BufferSize,
                     IN BOOLEAN UnicodeOutput,
                     IN CONST VOID *Format,
                     IN BOOLEAN UnicodeFormat,
                     IN VA_LIST Marker);

/**
  @return the standard text of Status ("Success", "Not Found", ...), or
          nullptr when Status has none.
**/
CONST CHAR8 *InternalStatusText (IN RETURN_STATUS Status);

#endif
