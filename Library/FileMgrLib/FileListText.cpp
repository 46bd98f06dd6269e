/** @file
  Text helpers of the file list: GUID text, hexadecimal fields, line length,
  name comparison and widening.
**/
#include "FileMgrLibInternal.h"

namespace {

constexpr CHAR8 mCarriageReturn = 0x0D;
constexpr CHAR8 mBlank = 0x20;

/** @return the value of a hexadecimal digit, or -1 for any other character. **/
INTN
HexDigitValue (CHAR8 Character)
{
  if ((Character >= '0') && (Character <= '9')) {
    return Character - '0';
  }

  if ((Character >= 'a') && (Character <= 'f')) {
    return Character - 'a' + 10;
  }

  if ((Character >= 'A') && (Character <= 'F')) {
    return Character - 'A' + 10;
  }

  return -1;
}

/** Folds A to Z to a to z; nothing else. **/
CHAR16
FoldCase (CHAR16 Character)
{
  return ((Character >= 'A') && (Character <= 'Z')) ? (CHAR16)(Character - 'A' + 'a') : Character;
}

} // namespace

VOID
ParseGuidText (IN CONST CHAR8 *Text, OUT EFI_GUID *Guid)
{
  //
  // Offsets of the eight Data4 bytes: two in the fourth group, six in the last.
  //
  static constexpr UINT8 mData4Offsets[8] = {19, 21, 24, 26, 28, 30, 32, 34};

  Guid->Data1 = (UINT32)ParseHexField (Text, 8);
  Guid->Data2 = (UINT16)ParseHexField (Text + 9, 4);
  Guid->Data3 = (UINT16)ParseHexField (Text + 14, 4);
  for (UINTN Index = 0; Index < ARRAY_SIZE (mData4Offsets); Index++) {
    Guid->Data4[Index] = (UINT8)ParseHexField (Text + mData4Offsets[Index], 2);
  }
}

UINT64
ParseHexField (IN CONST CHAR8 *Text, IN UINTN MaxDigits)
{
  UINT64 Value = 0;

  while (*Text == mBlank) {
    Text++;
  }

  for (UINTN Count = 0; Count < MaxDigits; Count++) {
    INTN Digit = HexDigitValue (Text[Count]);
    if (Digit < 0) {
      break;
    }

    Value = (Value << 4) | (UINT64)Digit;
  }

  return Value;
}

UINTN
AsciiLineLength (IN CONST CHAR8 *Text)
{
  UINTN Length = 0;

  while ((Text[Length] != 0) && (Text[Length] != mCarriageReturn)) {
    Length++;
  }

  return Length;
}

INTN
FileNameCompare (IN CONST CHAR16 *First, IN CONST CHAR16 *Second)
{
  //
  // Only an empty name against an empty one is equal; a non-empty prefix
  // matches the longer name (so "logo" finds "Logo.bmp" and the reverse).
  //
  if ((First[0] == 0) || (Second[0] == 0)) {
    return (INTN)First[0] - (INTN)Second[0];
  }

  for (UINTN Index = 0; (First[Index] != 0) && (Second[Index] != 0); Index++) {
    if (FoldCase (First[Index]) != FoldCase (Second[Index])) {
      return (INTN)First[Index] - (INTN)Second[Index];
    }
  }

  return 0;
}

VOID
CopyAsciiToUnicode (OUT CHAR16 *Destination, IN CONST CHAR8 *Source, IN UINTN MaxChars)
{
  UINTN Index = 0;

  //
  // Through UINT8, so that bytes from 0x80 up become U+0080 to U+00FF and do
  // not sign-extend.
  //
  while ((Index < MaxChars) && (Source[Index] != 0)) {
    Destination[Index] = (CHAR16)(UINT8)Source[Index];
    Index++;
  }

  Destination[Index] = 0;
}
