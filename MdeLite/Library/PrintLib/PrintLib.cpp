/** @file
  UnicodeSPrint, AsciiSPrint and their VA_LIST forms.
**/
extern "C" {
#include <Library/PrintLib.h>
}

#include "PrintLibInternal.h"

UINTN
EFIAPI
UnicodeVSPrint (OUT CHAR16 *StartOfBuffer, IN UINTN BufferSize, IN CONST CHAR16 *FormatString, IN VA_LIST Marker)
{
  return InternalPrintFormat (StartOfBuffer, BufferSize, TRUE, FormatString, TRUE, Marker);
}

UINTN
EFIAPI
UnicodeSPrint (OUT CHAR16 *StartOfBuffer, IN UINTN BufferSize, IN CONST CHAR16 *FormatString, ...)
{
  VA_LIST Marker;
  UINTN Count;

  VA_START (Marker, FormatString);
  Count = UnicodeVSPrint (StartOfBuffer, BufferSize, FormatString, Marker);
  VA_END (Marker);
  return Count;
}

UINTN
EFIAPI
AsciiVSPrint (OUT CHAR8 *StartOfBuffer, IN UINTN BufferSize, IN CONST CHAR8 *FormatString, IN VA_LIST Marker)
{
  return InternalPrintFormat (StartOfBuffer, BufferSize, FALSE, FormatString, FALSE, Marker);
}

UINTN
EFIAPI
AsciiSPrint (OUT CHAR8 *StartOfBuffer, IN UINTN BufferSize, IN CONST CHAR8 *FormatString, ...)
{
  VA_LIST Marker;
  UINTN Count;

  VA_START (Marker, FormatString);
  Count = AsciiVSPrint (StartOfBuffer, BufferSize, FormatString, Marker);
  VA_END (Marker);
  return Count;
}
