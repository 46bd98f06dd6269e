/** @file
  The page's colours: its theme string, looked up in the theme language
  "tm-CL" of its HII package list, read as "BGCL=RRGGBB|FGCL=RRGGBB". The
  string comes from a package that another driver registered, so it is read
  with a bound and every digit is checked.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/HiiString.h>

#include "RenderInternal.h"

STATIC CONST CHAR8 mThemeLanguage[] = "tm-CL";

///
/// Theme strings are short; a longer one is not a theme this renderer reads.
///
#define THEME_MAX_CHARACTERS 128U

STATIC
BOOLEAN
HexDigit (IN CHAR16 Character, OUT UINT32 *Value)
{
  if ((Character >= u'0') && (Character <= u'9')) {
    *Value = (UINT32)(Character - u'0');
  } else if ((Character >= u'A') && (Character <= u'F')) {
    *Value = (UINT32)(Character - u'A' + 10);
  } else if ((Character >= u'a') && (Character <= u'f')) {
    *Value = (UINT32)(Character - u'a' + 10);
  } else {
    return FALSE;
  }

  return TRUE;
}

/**
  Reads six hex digits at Text that end the item (followed by '|' or the end).
**/
STATIC
BOOLEAN
ReadColour (IN CONST CHAR16 *Text, IN UINTN Length, OUT UINT32 *Colour)
{
  UINT32 Value = 0;
  UINT32 Digit;

  if ((Length < 6) || ((Length > 6) && (Text[6] != u'|'))) {
    return FALSE;
  }

  for (UINTN Index = 0; Index < 6; Index++) {
    if (!HexDigit (Text[Index], &Digit)) {
      return FALSE;
    }

    Value = (Value << 4) | Digit;
  }

  *Colour = Value;
  return TRUE;
}

STATIC
BOOLEAN
StartsWith (IN CONST CHAR16 *Text, IN UINTN Length, IN CONST CHAR16 *Prefix, IN UINTN PrefixLength)
{
  return (Length >= PrefixLength) && (CompareMem (Text, Prefix, PrefixLength * sizeof (CHAR16)) == 0);
}

BOOLEAN
StandInParseThemeColours (IN CONST CHAR16 *Theme OPTIONAL, IN OUT UINT32 *Background, IN OUT UINT32 *Foreground)
{
  STATIC CONST CHAR16 BackgroundKey[] = {u'B', u'G', u'C', u'L', u'='};
  STATIC CONST CHAR16 ForegroundKey[] = {u'F', u'G', u'C', u'L', u'='};
  BOOLEAN Found = FALSE;
  UINTN Length = 0;

  if ((Theme == nullptr) || (Background == nullptr) || (Foreground == nullptr)) {
    return FALSE;
  }

  while ((Length < THEME_MAX_CHARACTERS) && (Theme[Length] != 0)) {
    Length++;
  }

  for (UINTN Start = 0; Start < Length;) {
    CONST CHAR16 *Item = &Theme[Start];
    UINTN Left = Length - Start;
    UINTN ItemLength = 0;

    while ((ItemLength < Left) && (Item[ItemLength] != u'|')) {
      ItemLength++;
    }

    if (StartsWith (Item, ItemLength, BackgroundKey, ARRAY_SIZE (BackgroundKey))) {
      Found = ReadColour (&Item[5], ItemLength - 5, Background) || Found;
    } else if (StartsWith (Item, ItemLength, ForegroundKey, ARRAY_SIZE (ForegroundKey))) {
      Found = ReadColour (&Item[5], ItemLength - 5, Foreground) || Found;
    }

    Start += ItemLength + 1;
  }

  return Found;
}

VOID
RenderThemeColours (IN CONST STAND_IN_PAGE *Page, OUT UINT32 *Background, OUT UINT32 *Foreground)
{
  EFI_HII_STRING_PROTOCOL *HiiString = nullptr;
  CHAR16 Theme[THEME_MAX_CHARACTERS + 1];
  UINTN Size = sizeof (Theme) - sizeof (CHAR16);

  *Background = RENDER_DEFAULT_BACKGROUND;
  *Foreground = RENDER_DEFAULT_FOREGROUND;
  if ((Page->HiiHandle == nullptr) || (Page->ThemeId == 0) || (Page->ThemeId > 0xFFFFU)) {
    return;
  }

  if (EFI_ERROR (gBS->LocateProtocol (&gEfiHiiStringProtocolGuid, nullptr, (VOID **)&HiiString)) ||
      (HiiString == nullptr) || (HiiString->GetString == nullptr)) {
    return;
  }

  ZeroMem (Theme, sizeof (Theme));
  if (EFI_ERROR (HiiString->GetString (HiiString, mThemeLanguage, Page->HiiHandle, (EFI_STRING_ID)Page->ThemeId, Theme,
                                       &Size, nullptr))) {
    return;
  }

  Theme[THEME_MAX_CHARACTERS] = 0;
  StandInParseThemeColours (Theme, Background, Foreground);
}
