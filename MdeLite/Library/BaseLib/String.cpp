/** @file
  String lengths and comparisons.
**/
extern "C" {
#include <Library/BaseLib.h>
}

UINTN
EFIAPI
StrLen (IN CONST CHAR16 *String)
{
  UINTN Length = 0;

  while (String[Length] != 0) {
    Length++;
  }

  return Length;
}

UINTN
EFIAPI
StrnLenS (IN CONST CHAR16 *String, IN UINTN MaxSize)
{
  UINTN Length = 0;

  if (String == nullptr) {
    return 0;
  }

  while (Length < MaxSize && String[Length] != 0) {
    Length++;
  }

  return Length;
}

INTN EFIAPI
StrCmp (IN CONST CHAR16 *FirstString, IN CONST CHAR16 *SecondString)
{
  while (*FirstString != 0 && *FirstString == *SecondString) {
    FirstString++;
    SecondString++;
  }

  return (INTN)*FirstString - (INTN)*SecondString;
}

UINTN
EFIAPI
AsciiStrLen (IN CONST CHAR8 *String)
{
  UINTN Length = 0;

  while (String[Length] != 0) {
    Length++;
  }

  return Length;
}

UINTN
EFIAPI
AsciiStrnLenS (IN CONST CHAR8 *String, IN UINTN MaxSize)
{
  UINTN Length = 0;

  if (String == nullptr) {
    return 0;
  }

  while (Length < MaxSize && String[Length] != 0) {
    Length++;
  }

  return Length;
}

INTN EFIAPI
AsciiStrCmp (IN CONST CHAR8 *FirstString, IN CONST CHAR8 *SecondString)
{
  while (*FirstString != 0 && *FirstString == *SecondString) {
    FirstString++;
    SecondString++;
  }

  return (INTN)(UINT8)*FirstString - (INTN)(UINT8)*SecondString;
}
