/** @file
  The driver's resources: the string package array that it registers with the
  HII database, the image package with the welcome-page logo that it hands to
  the UI framework, and the two calls that do so.
**/
#ifndef UI_RESOURCES_H_
#define UI_RESOURCES_H_

#include <Protocol/HiiDatabase.h>
#include <Protocol/UiFramework.h>
#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

//
// String ids. "en-US" holds all of them; the theme pseudo-language "tm-CL"
// holds only the language name and the three theme ids, which are empty in
// "en-US".
//
#define STR_LANGUAGE_NAME 1
#define STR_WELCOME_PAGE_THEME 2
#define STR_PROGRESS_THEME 3
#define STR_ENTER_SETUP_MESSAGE 4
#define STR_LAUNCH_DIAGNOSTICS_MESSAGE 5
#define STR_BOOT_MENU_MESSAGE 6
#define STR_BOOT_OPTIONS_HINT 7
#define STR_FLASH_PAGE_THEME 8
#define STR_FLASH_UPDATING 9
#define STR_FLASH_PROGRESS_TITLE 10
#define STR_FLASH_PERCENTAGE 11
#define STR_FLASH_SUCCESS_REBOOT 12
#define STR_FLASH_SUCCESS 13
#define STR_FLASH_FAILURE_REBOOT 14
#define STR_FLASH_FAILURE 15
#define STR_FLASH_ANTI_THEFT_BLOCKED 16
#define STR_FLASH_SECURE_BOOT_DOWNGRADE_BLOCKED 17
#define STR_FLASH_DOWNGRADE_BLOCKED 18
#define STR_ADMIN_UNLOCK_TITLE 19
#define STR_ADMIN_UNLOCK_MESSAGE 20
#define STR_PASSWORD_INCORRECT 21
#define STR_PASSWORD_SHUTDOWN 22
#define STR_LAST_ID 22

///
/// Size of the string package array: a UINT32 total length (counting itself)
/// followed by the "en-US" and "tm-CL" string packages.
///
#define UI_STRING_ARRAY_SIZE 2002
#define UI_ENGLISH_PACKAGE_LENGTH 0x6F3
#define UI_THEME_PACKAGE_LENGTH 0xDB

typedef struct {
  UINT8 Bytes[UI_STRING_ARRAY_SIZE];
} UI_STRING_ARRAY;

STATIC_ASSERT (sizeof (UI_STRING_ARRAY) == UI_STRING_ARRAY_SIZE, "string array size");

extern CONST UI_STRING_ARRAY UserInterfaceStrings;

//
// The image package handed to the UI framework.
//
#define UI_IMAGE_FILE_NAME_LENGTH 143
#define UI_LOGO_FILE_SIZE 63655
#define UI_IMAGE_PACKAGE_SIZE 63854

///
/// The logo's file name: ASCII without a terminator.
///
typedef struct {
  CHAR8 Text[UI_IMAGE_FILE_NAME_LENGTH];
} UI_IMAGE_FILE_NAME;

#pragma pack(1)

typedef struct {
  EFI_HII_PACKAGE_HEADER Header; ///< EFI_HII_PACKAGE_TYPE_GUID, length 0xF95E
  EFI_GUID Guid;                 ///< gUiImagePackageGuid
  UINT32 Version;                ///< 3
  UINT32 EntryCount;             ///< 1
  UINT32 EntriesSize;            ///< 0xF946: from EntryCount to where Header.Length ends
  UINT32 FileNameLength;         ///< UI_IMAGE_FILE_NAME_LENGTH
  UI_IMAGE_FILE_NAME FileName;
  UINT32 Reserved;               ///< 0
  UINT32 FileSize;               ///< UI_LOGO_FILE_SIZE
  UINT32 FileFormat;             ///< 1
  UINT8 File[UI_LOGO_FILE_SIZE]; ///< the PNG file
  UINT32 Trailer;                ///< 0
  EFI_HII_PACKAGE_HEADER End;    ///< EFI_HII_PACKAGE_END, length 4
} UI_IMAGE_PACKAGE;

#pragma pack()

STATIC_ASSERT (sizeof (UI_IMAGE_PACKAGE) == UI_IMAGE_PACKAGE_SIZE, "image package size");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, Guid) == 4, "image package GUID");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, Version) == 20, "image package version");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, EntryCount) == 24, "image package entry count");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, EntriesSize) == 28, "image package entries size");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, FileNameLength) == 32, "image package name length");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, FileName) == 36, "image package name");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, Reserved) == 36 + UI_IMAGE_FILE_NAME_LENGTH, "after the name");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, FileSize) == 40 + UI_IMAGE_FILE_NAME_LENGTH, "file size");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, FileFormat) == 44 + UI_IMAGE_FILE_NAME_LENGTH, "file format");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, File) == 48 + UI_IMAGE_FILE_NAME_LENGTH, "file data");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, Trailer) == 63846, "trailer");
STATIC_ASSERT (OFFSET_OF (UI_IMAGE_PACKAGE, End) == 63850, "end package");

extern CONST UI_IMAGE_PACKAGE UserInterfaceImagePackage;

/**
  Registers the packages of a package array as one package list, under the
  package-list GUID of the driver.

  The list is built in a zeroed pool buffer that is freed after the call: the
  list header, the packages of the array in order, and the end package.

  @param[in] HiiDatabase   The HII database; nothing is registered when null.
  @param[in] DriverHandle  The handle that the list is associated with.
  @param[in] PackageArray  A UINT32 total length (counting itself), then the
                           packages. Null, or no bytes after the length,
                           registers nothing.

  @return the HII handle of the new list, or null when nothing was registered.
**/
EFI_HII_HANDLE
RegisterPackageArray (IN EFI_HII_DATABASE_PROTOCOL *HiiDatabase,
                      IN EFI_HANDLE DriverHandle,
                      IN CONST VOID *PackageArray OPTIONAL);

/**
  Registers the driver's string packages ("en-US" and "tm-CL").

  @param[in] HiiDatabase   The HII database; nothing is registered when null.
  @param[in] DriverHandle  The driver's handle.

  @return the HII handle of the driver's package list, or null on failure.
**/
EFI_HII_HANDLE
RegisterUiStringPackages (IN EFI_HII_DATABASE_PROTOCOL *HiiDatabase, IN EFI_HANDLE DriverHandle);

/**
  Hands the logo's image package to the UI framework under the driver's
  component GUID. Does nothing without a framework; the framework's answer is
  not needed.

  @param[in] Framework  The UI framework, or null.
**/
VOID HandOverImagePackage (IN UI_FRAMEWORK_PROTOCOL *Framework OPTIONAL);

#endif
