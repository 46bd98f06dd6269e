/** @file
  The driver's texts, read back from the firmware's HII database: the expected
  "en-US" strings by id, one theme string of "tm-CL", and the absence of ids
  that "tm-CL" skips.
**/
#include "StringChecks.h"

#include "HiiLookup.h"
#include "TestReport.h"

#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseLib.h>
#include <Library/PrintLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/FlashUpdatePage.h>
#include <Protocol/HiiString.h>

//
// Room for the longest text (id 20) with a margin; a longer answer is a
// failure of its own (EFI_BUFFER_TOO_SMALL).
//
#define STRING_BUFFER_LENGTH 512

STATIC CONST CHAR8 *CONST mEnglishStrings[] = {
  "English",
  "",
  "",
  "Preparing to enter BIOS Setup",
  "Preparing to launch Diagnostics",
  "Preparing one-time boot menu",
  "F12 Boot Options",
  "",
  "Updating your system's firmware. Do not power down your system.",
  "Flash Progress",
  "   000%            ",
  "BIOS Update successful. Rebooting your system.",
  "BIOS Update successful.",
  "BIOS Update failed. Rebooting your system.",
  "BIOS Update failed.",
  "BIOS Update blocked due to Intel AntiTheft feature overide.",
  "Downgrading to a BIOS without Secure Boot abilities was blocked.",
  "BIOS Update blocked due to unsupported downgrade.",
  "Admin Unlock",
  ("The administrative password is set on this computer. You cannot access Setup until the correct password is "
   "entered. If you need to change any setup fields, you must first enter the administrative password in this field."),
  "Password is incorrect, re-enter the password",
  "Password Failure: System Shutdown in 2 seconds",
};

STATIC_ASSERT (ARRAY_SIZE (mEnglishStrings) == 22, "the driver has 22 en-US strings");

//
// The driver registers its strings under the GUID that its flash update page
// protocol carries too.
//
STATIC CONST EFI_GUID mPackageListGuid = UI_PACKAGE_LIST_GUID;

#define THEME_LANGUAGE "tm-CL"
#define THEME_STRING_ID 2
#define THEME_STRING "BGCL=010101|FGCL=FFFFFF"
#define THEME_SKIPPED_STRING_ID 4

/**
  Reads string Id of Language and compares it with the ASCII text Expected,
  including its length as GetString reports it.
**/
STATIC
VOID
CheckString (IN EFI_HII_STRING_PROTOCOL *HiiString,
             IN EFI_HII_HANDLE PackageList,
             IN CONST CHAR8 *Language,
             IN EFI_STRING_ID Id,
             IN CONST CHAR8 *Expected)
{
  CHAR16 Text[STRING_BUFFER_LENGTH];
  UINTN Size = sizeof (Text);
  UINTN Length = AsciiStrLen (Expected);
  CHAR8 What[40];
  EFI_STATUS Status;

  AsciiSPrint (What, sizeof (What), "%a string %d", Language, (UINT32)Id);
  Status = HiiString->GetString (HiiString, Language, PackageList, Id, Text, &Size, nullptr);
  if (EFI_ERROR (Status)) {
    ReportCheck (FALSE, What, "GetString %r", Status);
    return;
  }

  if ((Size != (Length + 1) * sizeof (CHAR16)) || (Text[Length] != 0)) {
    ReportCheck (FALSE, What, "%lu bytes, expected %lu", Size, (Length + 1) * sizeof (CHAR16));
    return;
  }

  for (UINTN Index = 0; Index < Length; Index++) {
    if (Text[Index] != (CHAR16)(UINT8)Expected[Index]) {
      ReportCheck (FALSE, What, "differs at character %lu", Index);
      return;
    }
  }

  ReportCheck (TRUE, What, nullptr);
}

/**
  Checks that string Id of Language does not exist.
**/
STATIC
VOID
CheckStringMissing (IN EFI_HII_STRING_PROTOCOL *HiiString,
                    IN EFI_HII_HANDLE PackageList,
                    IN CONST CHAR8 *Language,
                    IN EFI_STRING_ID Id)
{
  CHAR16 Text[STRING_BUFFER_LENGTH];
  UINTN Size = sizeof (Text);
  CHAR8 What[40];
  EFI_STATUS Status;

  AsciiSPrint (What, sizeof (What), "%a string %d absent", Language, (UINT32)Id);
  Status = HiiString->GetString (HiiString, Language, PackageList, Id, Text, &Size, nullptr);
  ReportCheck (EFI_ERROR (Status), What, "GetString %r", Status);
}

/**
  Locates the firmware's HII database; reports a failure when it is missing.
**/
STATIC
EFI_HII_DATABASE_PROTOCOL *
LocateHiiDatabase (VOID)
{
  EFI_HII_DATABASE_PROTOCOL *Database = nullptr;
  EFI_STATUS Status;

  Status = gBS->LocateProtocol (&gEfiHiiDatabaseProtocolGuid, nullptr, (VOID **)&Database);
  if (EFI_ERROR (Status)) {
    ReportCheck (FALSE, "HII database present", "%r", Status);
    return nullptr;
  }

  return Database;
}

VOID
CheckDriverStrings (IN EFI_HANDLE DriverImage)
{
  EFI_HII_DATABASE_PROTOCOL *Database;
  EFI_HII_STRING_PROTOCOL *HiiString = nullptr;
  EFI_HII_HANDLE PackageList;
  EFI_HANDLE Owner = nullptr;
  UINTN Count;
  EFI_STATUS Status;

  Database = LocateHiiDatabase ();
  if (Database == nullptr) {
    return;
  }

  Status = FindPackageListByGuid (Database, &mPackageListGuid, &PackageList, &Count);
  if (!ReportCheck (!EFI_ERROR (Status) && (Count == 1), "package list registered once", "%r, %lu found", Status,
                    Count)) {
    return;
  }

  Status = Database->GetPackageListHandle (Database, PackageList, &Owner);
  ReportCheck (!EFI_ERROR (Status) && (Owner == DriverImage), "package list on the driver's image handle",
               "%r, handle %p", Status, Owner);

  Status = gBS->LocateProtocol (&gEfiHiiStringProtocolGuid, nullptr, (VOID **)&HiiString);
  if (!CheckStatus ("HII string protocol present", Status, EFI_SUCCESS)) {
    return;
  }

  for (UINTN Index = 0; Index < ARRAY_SIZE (mEnglishStrings); Index++) {
    CheckString (HiiString, PackageList, "en-US", (EFI_STRING_ID)(Index + 1), mEnglishStrings[Index]);
  }

  CheckString (HiiString, PackageList, THEME_LANGUAGE, THEME_STRING_ID, THEME_STRING);
  CheckStringMissing (HiiString, PackageList, THEME_LANGUAGE, THEME_SKIPPED_STRING_ID);
}

VOID
CheckDriverStringsAbsent (IN CONST CHAR8 *When)
{
  EFI_HII_DATABASE_PROTOCOL *Database;
  EFI_HII_HANDLE PackageList;
  UINTN Count;
  EFI_STATUS Status;
  CHAR8 What[64];

  Database = LocateHiiDatabase ();
  if (Database == nullptr) {
    return;
  }

  AsciiSPrint (What, sizeof (What), "no package list %a", When);
  Status = FindPackageListByGuid (Database, &mPackageListGuid, &PackageList, &Count);
  ReportCheck (!EFI_ERROR (Status) && (Count == 0), What, "%r, %lu found", Status, Count);
}
