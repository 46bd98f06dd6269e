/** @file
  The image package with the welcome-page logo, as the UI framework takes it.

  The PNG bytes come from Images/WelcomePageLogo.png through the include file
  Images/WelcomePageLogo.inc, kept beside it so that every build (also one
  that runs no generator) has it; the build stops when the file does not have
  the size that the package's fields state.
**/
#include <Guid/KestUiGuids.h>

#include "Images/WelcomePageLogo.inc"
#include "UiResources.h"

namespace {

//
// The name under which the framework files the logo. It is the same on every
// build machine, so that the image does not depend on where it was built.
//
constexpr CHAR8 mFileName[] = "/build/kestui-1.0/firmware/x64/release/components/4a5ca267-4016-460f-80ee-7b4c3d77fd62/"
                              "sources/Drivers/UserInterface/Images/WelcomePageLogo.png";

constexpr CHAR8 mNameEnding[] = "Images/WelcomePageLogo.png";

template <UINTN N>
constexpr UI_IMAGE_FILE_NAME
MakeFileName (const CHAR8 (&Literal)[N])
{
  static_assert (N - 1 == UI_IMAGE_FILE_NAME_LENGTH, "the file name fills its field exactly");
  UI_IMAGE_FILE_NAME Name{};

  for (UINTN Index = 0; Index < UI_IMAGE_FILE_NAME_LENGTH; Index++) {
    Name.Text[Index] = Literal[Index];
  }

  return Name;
}

constexpr bool
NameEndsWith (const UI_IMAGE_FILE_NAME &Name, const CHAR8 *Ending, UINTN Length)
{
  for (UINTN Index = 0; Index < Length; Index++) {
    if (Name.Text[UI_IMAGE_FILE_NAME_LENGTH - Length + Index] != Ending[Index]) {
      return false;
    }
  }

  return true;
}

//
// The package header's length and the entries' size stop 8 bytes short of the
// end of the PNG data; the framework is handed them as they are, together with
// the full size of the package.
//
constexpr UINT32 mHeaderLength = 0xF95E;
constexpr UINT32 mEntriesSize = 0xF946;

static_assert (mHeaderLength == OFFSET_OF (UI_IMAGE_PACKAGE, File) + UI_LOGO_FILE_SIZE - 8, "header length");
static_assert (mEntriesSize == mHeaderLength - OFFSET_OF (UI_IMAGE_PACKAGE, EntryCount), "entries size");
static_assert (WELCOME_PAGE_LOGO_FILE_SIZE == UI_LOGO_FILE_SIZE, "WelcomePageLogo.png must be 63,655 bytes");

} // namespace

//
// Declared extern in UiResources.h; constexpr keeps it constant-initialised.
//
constexpr UI_IMAGE_PACKAGE UserInterfaceImagePackage = {
  {mHeaderLength, EFI_HII_PACKAGE_TYPE_GUID},
  UI_IMAGE_PACKAGE_GUID,
  3,
  1,
  mEntriesSize,
  UI_IMAGE_FILE_NAME_LENGTH,
  MakeFileName (mFileName),
  0,
  UI_LOGO_FILE_SIZE,
  1,
  {WELCOME_PAGE_LOGO_FILE_BYTES},
  0,
  {sizeof (EFI_HII_PACKAGE_HEADER), EFI_HII_PACKAGE_END},
};

static_assert (NameEndsWith (UserInterfaceImagePackage.FileName, mNameEnding, sizeof (mNameEnding) - 1),
               "the file name is the source path of the logo");
static_assert (UserInterfaceImagePackage.File[0] == 0x89 && UserInterfaceImagePackage.File[1] == 'P' &&
                 UserInterfaceImagePackage.File[2] == 'N' && UserInterfaceImagePackage.File[3] == 'G',
               "the logo is a PNG file");
