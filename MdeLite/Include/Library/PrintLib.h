/** @file
  Formatting into fixed buffers in the UEFI manner.

  Supported conversions: %s (UCS-2 string), %a (8-bit string), %d and %u
  (decimal), %x and %X (hexadecimal), %c (character), %g (GUID), %r (status
  text), %% and the flags '-', '0', ',', 'l' and a width or '*'. The output is
  cut to the buffer, which always ends with a null when BufferSize allows one.
**/
#ifndef MDE_LITE_PRINT_LIB_H_
#define MDE_LITE_PRINT_LIB_H_

#include <Base.h>

/** Formats into a UCS-2 buffer of BufferSize bytes.
    @return the number of CHAR16 written, not counting the null. **/
UINTN EFIAPI UnicodeSPrint (OUT CHAR16 *StartOfBuffer, IN UINTN BufferSize, IN CONST CHAR16 *FormatString, ...);

/** As UnicodeSPrint, with the arguments in a VA_LIST. **/
UINTN EFIAPI UnicodeVSPrint (OUT CHAR16 *StartOfBuffer,
                             IN UINTN BufferSize,
                             IN CONST CHAR16 *FormatString,
                             IN VA_LIST Marker);

/** Formats into an 8-bit buffer of BufferSize bytes with an 8-bit format.
    @return the number of CHAR8 written, not counting the null. **/
UINTN EFIAPI AsciiSPrint (OUT CHAR8 *StartOfBuffer, IN UINTN BufferSize, IN CONST CHAR8 *FormatString, ...);

/** As AsciiSPrint, with the arguments in a VA_LIST. **/
UINTN EFIAPI AsciiVSPrint (OUT CHAR8 *StartOfBuffer,
                           IN UINTN BufferSize,
                           IN CONST CHAR8 *FormatString,
                           IN VA_LIST Marker);

#endif
