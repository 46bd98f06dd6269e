/** @file
  The host HII database used by the driver tests: it must take well-formed
  package lists, answer GetString as the firmware does, and turn malformed
  lists away without reading past them.
**/
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HostHii.h"
#include "ResourceTestHelpers.h"

using ResourceTest::LookUp;

namespace {

std::vector<UINT8>
Ucs2 (const std::u16string &Text)
{
  std::vector<UINT8> Block = {EFI_HII_SIBT_STRING_UCS2};
  for (char16_t Character : Text) {
    Block.push_back ((UINT8)(Character & 0xFF));
    Block.push_back ((UINT8)(Character >> 8));
  }

  Block.push_back (0);
  Block.push_back (0);
  return Block;
}

std::vector<UINT8>
Skip1 (UINT8 Count)
{
  return {EFI_HII_SIBT_SKIP1, Count};
}

std::vector<UINT8>
Skip2 (UINT16 Count)
{
  return {EFI_HII_SIBT_SKIP2, (UINT8)(Count & 0xFF), (UINT8)(Count >> 8)};
}

void
Append (std::vector<UINT8> &To, const std::vector<UINT8> &Bytes)
{
  To.insert (To.end (), Bytes.begin (), Bytes.end ());
}

void
PutLe32 (std::vector<UINT8> &Bytes, UINTN Offset, UINT32 Value)
{
  for (UINTN Index = 0; Index < 4; Index++) {
    Bytes[Offset + Index] = (UINT8)(Value >> (8 * Index));
  }
}

std::vector<UINT8>
StringPackage (const std::string &Language, const std::vector<std::vector<UINT8>> &Blocks)
{
  const UINTN HeaderSize = OFFSET_OF (EFI_HII_STRING_PACKAGE_HDR, Language) + Language.size () + 1;
  std::vector<UINT8> Package (HeaderSize, 0);

  Package[44] = 1; // language name: string 1
  std::copy (Language.begin (), Language.end (), Package.begin () + 46);
  for (const auto &Block : Blocks) {
    Append (Package, Block);
  }

  PutLe32 (Package, 0, (UINT32)Package.size () | ((UINT32)EFI_HII_PACKAGE_STRINGS << 24));
  PutLe32 (Package, 4, (UINT32)HeaderSize);
  PutLe32 (Package, 8, (UINT32)HeaderSize);
  return Package;
}

const std::vector<UINT8> kEndPackage = {4, 0, 0, EFI_HII_PACKAGE_END};

//
// A package list with the given GUID text byte and packages; its length field
// counts exactly the bytes given.
//
std::vector<UINT8>
PackageList (UINT8 GuidByte, const std::vector<std::vector<UINT8>> &Packages)
{
  std::vector<UINT8> List (sizeof (EFI_HII_PACKAGE_LIST_HEADER), 0);

  List[0] = GuidByte;
  for (const auto &Package : Packages) {
    Append (List, Package);
  }

  PutLe32 (List, 16, (UINT32)List.size ());
  return List;
}

class HostHiiTest : public testing::Test {
protected:
  EFI_HII_DATABASE_PROTOCOL *Database = HostHiiDatabase ();
  EFI_HII_STRING_PROTOCOL *Strings = HostHiiString ();
  std::vector<EFI_HII_HANDLE> Registered;

  EFI_STATUS
  Register (const std::vector<UINT8> &List, EFI_HII_HANDLE *Handle)
  {
    // An exact copy on the heap, so that a read past its end is caught.
    std::unique_ptr<UINT8[]> Exact (new UINT8[List.size ()]);
    std::copy (List.begin (), List.end (), Exact.get ());
    const EFI_STATUS Status = Database->NewPackageList (
      Database, reinterpret_cast<EFI_HII_PACKAGE_LIST_HEADER *> (Exact.get ()), (EFI_HANDLE)this, Handle);
    if (!EFI_ERROR (Status)) {
      Registered.push_back (*Handle);
    }

    return Status;
  }

  EFI_HII_HANDLE
  RegisterSample ()
  {
    EFI_HII_HANDLE Handle = nullptr;
    const auto List = PackageList (
      1,
      {StringPackage (
         "en-US", {Ucs2 (u"One"), Skip1 (2), Ucs2 (u"Four"), Skip2 (300), Ucs2 (u"Three-o-five"), {EFI_HII_SIBT_END}}),
       StringPackage ("fr-FR", {Ucs2 (u"Un"), {EFI_HII_SIBT_END}}), kEndPackage});

    EXPECT_EQ (Register (List, &Handle), EFI_SUCCESS);
    return Handle;
  }

  void
  TearDown () override
  {
    for (EFI_HII_HANDLE Handle : Registered) {
      Database->RemovePackageList (Database, Handle);
    }

    HostHiiFailNewPackageList (EFI_SUCCESS);
  }
};

} // namespace

TEST_F (HostHiiTest, KeepsACopyOfTheListWithItsDriverHandle)
{
  EFI_HII_HANDLE Handle = RegisterSample ();

  ASSERT_NE (Handle, nullptr);
  EXPECT_EQ (HostHiiPackageListCount (), 1U);
  EXPECT_EQ (HostHiiDriverHandle (Handle), (EFI_HANDLE)this);
  ASSERT_NE (HostHiiPackageList (Handle), nullptr);
  EXPECT_EQ (HostHiiPackageList (Handle)->PackageListGuid.Data1, 1U);
}

TEST_F (HostHiiTest, ReportsTheSizeThatASmallBufferLacks)
{
  EFI_HII_HANDLE Handle = RegisterSample ();
  CHAR16 Buffer[5] = {0xAAAA, 0xAAAA, 0xAAAA, 0xAAAA, 0xAAAA};
  UINTN Size = 4 * sizeof (CHAR16);

  // "Four" and its terminator take ten bytes.
  EXPECT_EQ (Strings->GetString (Strings, "en-US", Handle, 4, Buffer, &Size, nullptr), EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ (Size, 10U);
  EXPECT_EQ (Buffer[0], 0xAAAA) << "nothing is written into a buffer that is too small";

  EXPECT_EQ (Strings->GetString (Strings, "en-US", Handle, 4, Buffer, &Size, nullptr), EFI_SUCCESS);
  EXPECT_EQ (Size, 10U);
  EXPECT_EQ (Buffer[3], u'r');
  EXPECT_EQ (Buffer[4], 0);
}

TEST_F (HostHiiTest, RejectsInvalidGetStringArguments)
{
  EFI_HII_HANDLE Handle = RegisterSample ();
  CHAR16 Buffer[8];
  UINTN Size = sizeof (Buffer);

  EXPECT_EQ (Strings->GetString (Strings, "en-US", Handle, 0, Buffer, &Size, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Strings->GetString (Strings, nullptr, Handle, 1, Buffer, &Size, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Strings->GetString (Strings, "en-US", Handle, 1, Buffer, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Strings->GetString (Strings, "en-US", Handle, 1, nullptr, &Size, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Strings->GetString (Strings, "en-US", (EFI_HII_HANDLE)&Size, 1, Buffer, &Size, nullptr), EFI_NOT_FOUND);
}

TEST_F (HostHiiTest, FailsOnRequestWithoutRegistering)
{
  EFI_HII_HANDLE Handle = (EFI_HII_HANDLE)this;

  HostHiiFailNewPackageList (EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (Register (PackageList (1, {kEndPackage}), &Handle), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (Handle, nullptr);
  EXPECT_EQ (HostHiiPackageListCount (), 0U);
}

TEST_F (HostHiiTest, TurnsAwayMalformedListsWithoutReadingPastThem)
{
  const auto Good = StringPackage ("en-US", {Ucs2 (u"One"), {EFI_HII_SIBT_END}});
  auto TooLong = Good;
  PutLe32 (TooLong, 0, (UINT32)(TooLong.size () + 8) | ((UINT32)EFI_HII_PACKAGE_STRINGS << 24));
  auto Empty = Good;
  PutLe32 (Empty, 0, (UINT32)EFI_HII_PACKAGE_STRINGS << 24);
  auto HeaderPastPackage = Good;
  PutLe32 (HeaderPastPackage, 4, (UINT32)HeaderPastPackage.size () + 1);
  auto Unterminated = StringPackage ("en-US", {});
  Unterminated.back () = 'x'; // the language tag runs to the end of the header

  const std::vector<std::vector<UINT8>> Malformed = {
    PackageList (1, {Good}),                    // no end package
    PackageList (1, {Good, kEndPackage, Good}), // a package after the end package
    PackageList (1, {TooLong, kEndPackage}),    // a package longer than the list
    PackageList (1, {Empty, kEndPackage}),      // a package shorter than its header
    PackageList (1, {HeaderPastPackage, kEndPackage}),
    PackageList (1, {Unterminated, kEndPackage}),
    std::vector<UINT8> (sizeof (EFI_HII_PACKAGE_LIST_HEADER), 0), // length zero
  };

  for (UINTN Index = 0; Index < Malformed.size (); Index++) {
    EFI_HII_HANDLE Handle = nullptr;
    EXPECT_EQ (Register (Malformed[Index], &Handle), EFI_INVALID_PARAMETER) << "list " << Index;
    EXPECT_EQ (Handle, nullptr) << "list " << Index;
  }

  EXPECT_EQ (HostHiiPackageListCount (), 0U);
}

TEST_F (HostHiiTest, StopsAtATextWithoutTerminatorOrAnUnknownBlock)
{
  EFI_HII_HANDLE Handle = nullptr;
  auto Cut = StringPackage ("en-US", {Ucs2 (u"One"), {EFI_HII_SIBT_STRING_UCS2, 'A', 0, 'B'}});
  auto Odd = StringPackage ("fr-FR", {Ucs2 (u"Un"), {0x7F}, Ucs2 (u"Deux")});

  ASSERT_EQ (Register (PackageList (1, {Cut, Odd, kEndPackage}), &Handle), EFI_SUCCESS);
  EXPECT_EQ (LookUp (Strings, Handle, "en-US", 1).Text, u"One");
  EXPECT_EQ (LookUp (Strings, Handle, "en-US", 2).Status, EFI_NOT_FOUND);
  EXPECT_EQ (LookUp (Strings, Handle, "fr-FR", 1).Text, u"Un");
  EXPECT_EQ (LookUp (Strings, Handle, "fr-FR", 2).Status, EFI_UNSUPPORTED);
}
