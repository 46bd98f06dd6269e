/** @file
  The image package that the driver hands to the UI framework: its size, its
  header fields at their byte offsets, and the embedded PNG file.
**/
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "ResourceTestHelpers.h"
#include "UiResources.h"

using ResourceTest::GuidBytes;
using ResourceTest::ReadLe32;

namespace {

constexpr UINTN kPackageSize = 63854;
constexpr UINTN kNameLength = 143;
constexpr UINTN kPngSize = 63655;

const UINT8 *
PackageBytes ()
{
  return reinterpret_cast<const UINT8 *> (&UserInterfaceImagePackage);
}

std::vector<UINT8>
ReadSourcePng ()
{
  std::ifstream File (KESTUI_LOGO_PNG_PATH, std::ios::binary);
  return std::vector<UINT8> (std::istreambuf_iterator<char> (File), std::istreambuf_iterator<char> ());
}

} // namespace

TEST (ImagePackageLayout, HasTheSizeHandedOver)
{
  EXPECT_EQ (sizeof (UserInterfaceImagePackage), kPackageSize);
}

TEST (ImagePackageLayout, HeaderNamesAGuidPackageThatStopsEightBytesShortOfThePngEnd)
{
  const UINT8 *Bytes = PackageBytes ();
  const UINT32 Header = ReadLe32 (Bytes);

  EXPECT_EQ (Header >> 24, (UINT32)EFI_HII_PACKAGE_TYPE_GUID);
  EXPECT_EQ (Header & 0xFFFFFF, 0xF95EU);
  EXPECT_EQ (Header & 0xFFFFFF, 48 + kNameLength + kPngSize - 8);
}

TEST (ImagePackageLayout, CarriesThePackageGuid)
{
  const auto Expected = GuidBytes ("5B733946-DC42-F795-C96F-318D5CB1BDAB");

  EXPECT_EQ (std::vector<UINT8> (PackageBytes () + 4, PackageBytes () + 20),
             std::vector<UINT8> (Expected.begin (), Expected.end ()));
}

TEST (ImagePackageLayout, FixedFieldsBeforeTheName)
{
  const UINT8 *Bytes = PackageBytes ();

  EXPECT_EQ (ReadLe32 (Bytes + 20), 3U);
  EXPECT_EQ (ReadLe32 (Bytes + 24), 1U);
  EXPECT_EQ (ReadLe32 (Bytes + 28), 0xF946U);
  EXPECT_EQ (ReadLe32 (Bytes + 28), (ReadLe32 (Bytes) & 0xFFFFFF) - 24);
  EXPECT_EQ (ReadLe32 (Bytes + 32), kNameLength);
}

TEST (ImagePackageLayout, FileNameIsAFixedSourcePathOfTheLogo)
{
  const std::string Name (reinterpret_cast<const char *> (PackageBytes () + 36), kNameLength);
  const std::string Ending = "/Images/WelcomePageLogo.png";

  EXPECT_EQ (Name.front (), '/');
  ASSERT_GE (Name.size (), Ending.size ());
  EXPECT_EQ (Name.substr (Name.size () - Ending.size ()), Ending);
  for (char Character : Name) {
    EXPECT_TRUE ((Character > ' ') && (Character < 0x7F)) << "not a printable path character: " << (int)Character;
  }

  // No terminator: the next field follows the last character at once.
  EXPECT_EQ (ReadLe32 (PackageBytes () + 36 + kNameLength), 0U);
}

TEST (ImagePackageLayout, FileFieldsAfterTheName)
{
  const UINT8 *Bytes = PackageBytes () + 36 + kNameLength;

  EXPECT_EQ (ReadLe32 (Bytes + 4), kPngSize);
  EXPECT_EQ (ReadLe32 (Bytes + 8), 1U);
}

TEST (ImagePackageLayout, EmbedsTheLogoFileByteForByte)
{
  const std::vector<UINT8> Source = ReadSourcePng ();
  const UINT8 *Embedded = PackageBytes () + 48 + kNameLength;

  ASSERT_EQ (Source.size (), kPngSize) << KESTUI_LOGO_PNG_PATH;
  EXPECT_TRUE (std::equal (Source.begin (), Source.end (), Embedded));
}

TEST (ImagePackageLayout, EndsWithZeroAndTheEndPackage)
{
  const UINT8 *Bytes = PackageBytes ();

  EXPECT_EQ (48 + kNameLength + kPngSize + 8, kPackageSize);
  EXPECT_EQ (ReadLe32 (Bytes + 63846), 0U);
  EXPECT_EQ (ReadLe32 (Bytes + 63850), 4U | ((UINT32)EFI_HII_PACKAGE_END << 24));
}
