/** @file
  The driver's string package array, built during compilation from the text
  tables below: a UINT32 total length, then one standard HII string package per
  language with UCS-2 string blocks, skip blocks for absent ids and an end block.
**/
#include "UiResources.h"

//
// Called only when a table breaks a rule. It is declared but neither constexpr
// nor defined, so reaching it during compilation stops the build.
//
UINT8
InvalidStringTable (VOID);

namespace {

///
/// One text of a string package; ids must rise, and gaps become skip blocks.
///
struct STRING_TEXT {
  EFI_STRING_ID Id;
  const char16_t *Text;
};

///
/// One language: its tag and its texts. Ids after the last text, up to
/// STR_LAST_ID, are skipped as well.
///
struct STRING_PACKAGE_SOURCE {
  const CHAR8 *Language;
  const STRING_TEXT *Texts;
  UINTN Count;
};

constexpr STRING_TEXT mEnglishTexts[] = {
  {STR_LANGUAGE_NAME, u"English"},
  {STR_WELCOME_PAGE_THEME, u""},
  {STR_PROGRESS_THEME, u""},
  {STR_ENTER_SETUP_MESSAGE, u"Preparing to enter BIOS Setup"},
  {STR_LAUNCH_DIAGNOSTICS_MESSAGE, u"Preparing to launch Diagnostics"},
  {STR_BOOT_MENU_MESSAGE, u"Preparing one-time boot menu"},
  {STR_BOOT_OPTIONS_HINT, u"F12 Boot Options"},
  {STR_FLASH_PAGE_THEME, u""},
  {STR_FLASH_UPDATING, u"Updating your system's firmware. Do not power down your system."},
  {STR_FLASH_PROGRESS_TITLE, u"Flash Progress"},
  {STR_FLASH_PERCENTAGE, u"   000%            "},
  {STR_FLASH_SUCCESS_REBOOT, u"BIOS Update successful. Rebooting your system."},
  {STR_FLASH_SUCCESS, u"BIOS Update successful."},
  {STR_FLASH_FAILURE_REBOOT, u"BIOS Update failed. Rebooting your system."},
  {STR_FLASH_FAILURE, u"BIOS Update failed."},
  {STR_FLASH_ANTI_THEFT_BLOCKED, u"BIOS Update blocked due to Intel AntiTheft feature overide."},
  {STR_FLASH_SECURE_BOOT_DOWNGRADE_BLOCKED, u"Downgrading to a BIOS without Secure Boot abilities was blocked."},
  {STR_FLASH_DOWNGRADE_BLOCKED, u"BIOS Update blocked due to unsupported downgrade."},
  {STR_ADMIN_UNLOCK_TITLE, u"Admin Unlock"},
  {STR_ADMIN_UNLOCK_MESSAGE,
   u"The administrative password is set on this computer. You cannot access Setup until the correct password is "
   u"entered. If you need to change any setup fields, you must first enter the administrative password in this "
   u"field."},
  {STR_PASSWORD_INCORRECT, u"Password is incorrect, re-enter the password"},
  {STR_PASSWORD_SHUTDOWN, u"Password Failure: System Shutdown in 2 seconds"},
};

//
// Themes: a list of KEY=VALUE items separated by "|"; BGCL is the background
// and FGCL the foreground colour, as six hexadecimal digits.
//
constexpr STRING_TEXT mThemeTexts[] = {
  {STR_LANGUAGE_NAME, u"Theme"},
  {STR_WELCOME_PAGE_THEME, u"BGCL=010101|FGCL=FFFFFF"},
  {STR_PROGRESS_THEME, u"BGCL=010101|FGCL=FFFFFF"},
  {STR_FLASH_PAGE_THEME, u"BGCL=010101|FGCL=FFFFFF"},
};

constexpr STRING_PACKAGE_SOURCE mPackages[] = {
  {"en-US", mEnglishTexts, ARRAY_SIZE (mEnglishTexts)},
  {"tm-CL", mThemeTexts, ARRAY_SIZE (mThemeTexts)},
};

constexpr UINTN mSkip2BlockSize = 1 + sizeof (UINT16);

constexpr UINTN
TextLength (const char16_t *Text)
{
  UINTN Length = 0;

  while (Text[Length] != 0) {
    // UCS-2 has no surrogate pairs.
    if ((Text[Length] >= 0xD800) && (Text[Length] <= 0xDFFF)) {
      InvalidStringTable ();
    }

    Length++;
  }

  return Length;
}

constexpr UINTN
HeaderSize (const STRING_PACKAGE_SOURCE &Source)
{
  UINTN Length = 0;

  while (Source.Language[Length] != 0) {
    Length++;
  }

  return OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, Language) + Length + 1;
}

constexpr UINTN
StringBlockSize (const STRING_TEXT &Entry)
{
  return 1 + (TextLength (Entry.Text) + 1) * sizeof (CHAR16);
}

constexpr UINTN
PackageLength (const STRING_PACKAGE_SOURCE &Source)
{
  UINTN Length = HeaderSize (Source);
  UINTN NextId = 1;

  for (UINTN Index = 0; Index < Source.Count; Index++) {
    if ((Source.Texts[Index].Id < NextId) || (Source.Texts[Index].Id > STR_LAST_ID)) {
      InvalidStringTable ();
    }

    if (Source.Texts[Index].Id > NextId) {
      Length += mSkip2BlockSize;
    }

    Length += StringBlockSize (Source.Texts[Index]);
    NextId = Source.Texts[Index].Id + 1U;
  }

  if (NextId <= STR_LAST_ID) {
    Length += mSkip2BlockSize;
  }

  return Length + 1;
}

constexpr UINTN
ArrayLength (VOID)
{
  UINTN Length = sizeof (UINT32);

  for (const STRING_PACKAGE_SOURCE &Source : mPackages) {
    Length += PackageLength (Source);
  }

  return Length;
}

constexpr const char16_t *
EnglishText (EFI_STRING_ID Id)
{
  for (const STRING_TEXT &Entry : mEnglishTexts) {
    if (Entry.Id == Id) {
      return Entry.Text;
    }
  }

  return nullptr;
}

static_assert (PackageLength (mPackages[0]) == UI_ENGLISH_PACKAGE_LENGTH, "en-US package length");
static_assert (PackageLength (mPackages[1]) == UI_THEME_PACKAGE_LENGTH, "tm-CL package length");
static_assert (ArrayLength () == UI_STRING_ARRAY_SIZE, "string package array length");
static_assert (HeaderSize (mPackages[0]) == 0x34 && HeaderSize (mPackages[1]) == 0x34, "string package headers");
static_assert (TextLength (EnglishText (STR_FLASH_PERCENTAGE)) == 3 + 4 + 12,
               "the percentage text keeps its three leading and twelve trailing spaces");

///
/// Little-endian output into the array, during compilation.
///
struct ARRAY_WRITER {
  UI_STRING_ARRAY Array;
  UINTN At;

  constexpr VOID
  PutUint8 (UINTN Value)
  {
    Array.Bytes[At++] = (UINT8)Value;
  }

  constexpr VOID
  PutUint16 (UINTN Value)
  {
    PutUint8 (Value & 0xFF);
    PutUint8 ((Value >> 8) & 0xFF);
  }

  constexpr VOID
  PutUint32 (UINTN Value)
  {
    PutUint16 (Value & 0xFFFF);
    PutUint16 ((Value >> 16) & 0xFFFF);
  }

  constexpr VOID
  PutSkip (UINTN Count)
  {
    PutUint8 (EFI_HII_SIBT_SKIP2);
    PutUint16 (Count);
  }

  constexpr VOID
  PutPackage (const STRING_PACKAGE_SOURCE &Source)
  {
    const UINTN Header = HeaderSize (Source);
    UINTN NextId = 1;

    PutUint32 (PackageLength (Source) | ((UINTN)EFI_HII_PACKAGE_STRINGS << 24));
    PutUint32 (Header); // HdrSize
    PutUint32 (Header); // StringInfoOffset: the blocks follow the header
    for (UINTN Index = 0; Index < ARRAY_SIZE (EFI_HII_STRING_PACKAGE_HDR{}.LanguageWindow); Index++) {
      PutUint16 (0);
    }

    PutUint16 (STR_LANGUAGE_NAME);
    for (UINTN Index = 0; Source.Language[Index] != 0; Index++) {
      PutUint8 ((UINT8)Source.Language[Index]);
    }

    PutUint8 (0);

    for (UINTN Index = 0; Index < Source.Count; Index++) {
      const STRING_TEXT &Entry = Source.Texts[Index];

      if (Entry.Id > NextId) {
        PutSkip (Entry.Id - NextId);
      }

      PutUint8 (EFI_HII_SIBT_STRING_UCS2);
      for (UINTN Char = 0; Char <= TextLength (Entry.Text); Char++) {
        PutUint16 (Entry.Text[Char]);
      }

      NextId = Entry.Id + 1U;
    }

    if (NextId <= STR_LAST_ID) {
      PutSkip (STR_LAST_ID + 1U - NextId);
    }

    PutUint8 (EFI_HII_SIBT_END);
  }
};

constexpr UI_STRING_ARRAY
BuildStringArray (VOID)
{
  ARRAY_WRITER Writer{};

  Writer.PutUint32 (ArrayLength ());
  for (const STRING_PACKAGE_SOURCE &Source : mPackages) {
    Writer.PutPackage (Source);
  }

  if (Writer.At != UI_STRING_ARRAY_SIZE) {
    InvalidStringTable ();
  }

  return Writer.Array;
}

constexpr UINT32
ReadUint32 (const UI_STRING_ARRAY &Array, UINTN Offset)
{
  return (UINT32)Array.Bytes[Offset] | ((UINT32)Array.Bytes[Offset + 1] << 8) |
         ((UINT32)Array.Bytes[Offset + 2] << 16) | ((UINT32)Array.Bytes[Offset + 3] << 24);
}

} // namespace

//
// Declared extern in UiResources.h; constexpr makes the compiler build it, so
// the image carries the finished bytes and no code runs to make them.
//
constexpr UI_STRING_ARRAY UserInterfaceStrings = BuildStringArray ();

static_assert (ReadUint32 (UserInterfaceStrings, 0) == UI_STRING_ARRAY_SIZE, "array length field");
static_assert (ReadUint32 (UserInterfaceStrings, 4) == (UI_ENGLISH_PACKAGE_LENGTH | (EFI_HII_PACKAGE_STRINGS << 24)),
               "en-US package header");
static_assert (ReadUint32 (UserInterfaceStrings, 4 + UI_ENGLISH_PACKAGE_LENGTH) ==
                 (UI_THEME_PACKAGE_LENGTH | (EFI_HII_PACKAGE_STRINGS << 24)),
               "tm-CL package header");
static_assert (UserInterfaceStrings.Bytes[3 + UI_ENGLISH_PACKAGE_LENGTH] == EFI_HII_SIBT_END &&
                 UserInterfaceStrings.Bytes[UI_STRING_ARRAY_SIZE - 1] == EFI_HII_SIBT_END,
               "each package ends with an end block");
