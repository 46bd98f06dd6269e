/** @file
  The string package array, read byte by byte: its length field, the two
  standard string-package headers and the kinds of string blocks each package
  uses.
**/
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ResourceTestHelpers.h"
#include "UiResources.h"

using ResourceTest::ReadLe16;
using ResourceTest::ReadLe32;

namespace {

constexpr UINTN kArraySize = 2002;
constexpr UINTN kEnglishOffset = 4;
constexpr UINTN kEnglishLength = 0x6F3;
constexpr UINTN kThemeOffset = kEnglishOffset + kEnglishLength;
constexpr UINTN kThemeLength = 0xDB;

const UINT8 *
ArrayBytes ()
{
  return UserInterfaceStrings.Bytes;
}

struct BLOCK {
  UINT8 Kind;
  UINTN Value; ///< text length for a string, the count for a skip

  bool
  operator== (const BLOCK &Other) const
  {
    return (Kind == Other.Kind) && (Value == Other.Value);
  }
};

std::ostream &
operator<< (std::ostream &Stream, const BLOCK &Block)
{
  return Stream << "{0x" << std::hex << (int)Block.Kind << ", " << std::dec << Block.Value << "}";
}

//
// The blocks of the package at Offset, up to its end block; a kind that this
// package must not use ends the list with that kind and value 0.
//
std::vector<BLOCK>
Blocks (UINTN Offset, UINTN Length)
{
  std::vector<BLOCK> Result;
  const UINT8 *Package = ArrayBytes () + Offset;
  UINTN At = ReadLe32 (Package + 8);

  while (At < Length) {
    const UINT8 Kind = Package[At++];
    if (Kind == EFI_HII_SIBT_END) {
      Result.push_back ({Kind, At});
      return Result;
    }

    if (Kind == EFI_HII_SIBT_SKIP2) {
      Result.push_back ({Kind, ReadLe16 (Package + At)});
      At += 2;
    } else if (Kind == EFI_HII_SIBT_STRING_UCS2) {
      UINTN Characters = 0;
      while ((At + 1 < Length) && (ReadLe16 (Package + At) != 0)) {
        Characters++;
        At += 2;
      }

      Result.push_back ({Kind, Characters});
      At += 2;
    } else {
      Result.push_back ({Kind, 0});
      return Result;
    }
  }

  return Result;
}

void
ExpectStringPackageHeader (UINTN Offset, UINTN Length, const char *Language)
{
  const UINT8 *Package = ArrayBytes () + Offset;

  EXPECT_EQ (ReadLe32 (Package), Length | ((UINT32)EFI_HII_PACKAGE_STRINGS << 24));
  EXPECT_EQ (ReadLe32 (Package + 4), 0x34U) << "header size";
  EXPECT_EQ (ReadLe32 (Package + 8), 0x34U) << "string information offset";
  for (UINTN Index = 0; Index < 16; Index++) {
    EXPECT_EQ (ReadLe16 (Package + 12 + 2 * Index), 0) << "language window " << Index;
  }

  EXPECT_EQ (ReadLe16 (Package + 44), 1) << "language name id";
  EXPECT_EQ (std::string (reinterpret_cast<const char *> (Package + 46), 6), std::string (Language, 6));
}

} // namespace

TEST (StringArrayLayout, LengthFieldCountsTheWholeArray)
{
  EXPECT_EQ (sizeof (UserInterfaceStrings), kArraySize);
  EXPECT_EQ (ReadLe32 (ArrayBytes ()), kArraySize);
}

TEST (StringArrayLayout, HoldsTheTwoPackagesAndNothingElse)
{
  const UINT8 *Bytes = ArrayBytes ();

  EXPECT_EQ (ReadLe32 (Bytes + kEnglishOffset) & 0xFFFFFF, kEnglishLength);
  EXPECT_EQ (ReadLe32 (Bytes + kThemeOffset) & 0xFFFFFF, kThemeLength);
  EXPECT_EQ (kThemeOffset + kThemeLength, kArraySize);
}

TEST (StringArrayLayout, EnglishPackageHeader)
{
  ExpectStringPackageHeader (kEnglishOffset, kEnglishLength, "en-US");
}

TEST (StringArrayLayout, ThemePackageHeader)
{
  ExpectStringPackageHeader (kThemeOffset, kThemeLength, "tm-CL");
}

TEST (StringArrayLayout, EnglishPackageIsTwentyTwoUcs2StringsThenItsEnd)
{
  const std::vector<BLOCK> Found = Blocks (kEnglishOffset, kEnglishLength);

  ASSERT_EQ (Found.size (), 23U);
  for (UINTN Index = 0; Index < 22; Index++) {
    EXPECT_EQ (Found[Index].Kind, EFI_HII_SIBT_STRING_UCS2) << "string id " << Index + 1;
  }

  EXPECT_EQ (Found.back (), (BLOCK{EFI_HII_SIBT_END, kEnglishLength})) << "the end block is the last byte";
}

TEST (StringArrayLayout, ThemePackageSkipsTheIdsItDoesNotHold)
{
  const UINTN ThemeText = std::string ("BGCL=010101|FGCL=FFFFFF").size ();
  const std::vector<BLOCK> Expected = {
    {EFI_HII_SIBT_STRING_UCS2, 5},    {EFI_HII_SIBT_STRING_UCS2, ThemeText}, {EFI_HII_SIBT_STRING_UCS2, ThemeText},
    {EFI_HII_SIBT_SKIP2, 4},          {EFI_HII_SIBT_STRING_UCS2, ThemeText}, {EFI_HII_SIBT_SKIP2, 14},
    {EFI_HII_SIBT_END, kThemeLength},
  };

  EXPECT_EQ (Blocks (kThemeOffset, kThemeLength), Expected);
}
