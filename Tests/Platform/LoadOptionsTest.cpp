/** @file
  The firmware's boot options as the demo platform reads them (boot menu,
  front page): well-formed options, variables that are not load options, and
  the search for the option that starts a firmware-volume file.
**/
#include <cstring>
#include <string>
#include <vector>

#include <FirmwareCommon/LoadOptions.h>
#include <Guid/GlobalVariable.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include "PlatformTest.h"

namespace {

constexpr UINT32 kAttributes =
  EFI_VARIABLE_NON_VOLATILE | EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;
constexpr EFI_GUID kShellFile = {0x7c04a583, 0x9e3e, 0x4f1c, {0xad, 0x65, 0xe0, 0x52, 0x68, 0xd0, 0xb4, 0xd1}};
constexpr EFI_GUID kFrontPageFile = {0x462caa21, 0x7614, 0x4503, {0x83, 0x6e, 0x8a, 0xb6, 0xf4, 0x66, 0x23, 0x31}};

using Bytes = std::vector<UINT8>;

Bytes
Node (UINT8 Type, UINT8 SubType, const Bytes &Body)
{
  UINTN Length = 4 + Body.size ();
  Bytes Out = {Type, SubType, (UINT8)Length, (UINT8)(Length >> 8)};

  Out.insert (Out.end (), Body.begin (), Body.end ());
  return Out;
}

Bytes
GuidBytes (const EFI_GUID &Guid)
{
  const UINT8 *Raw = reinterpret_cast<const UINT8 *> (&Guid);
  return Bytes (Raw, Raw + sizeof (Guid));
}

Bytes
EndNode ()
{
  return Node (END_DEVICE_PATH_TYPE, END_ENTIRE_DEVICE_PATH_SUBTYPE, {});
}

/** Fv(volume)/FvFile(file)/End, as OVMF's boot options for its Shell and front page. **/
Bytes
FvFilePath (const EFI_GUID &File)
{
  Bytes Path = Node (MEDIA_DEVICE_PATH, MEDIA_PIWG_FW_VOL_DP, GuidBytes (kShellFile));
  Bytes FileNode = Node (MEDIA_DEVICE_PATH, MEDIA_PIWG_FW_FILE_DP, GuidBytes (File));
  Bytes End = EndNode ();

  Path.insert (Path.end (), FileNode.begin (), FileNode.end ());
  Path.insert (Path.end (), End.begin (), End.end ());
  return Path;
}

/** An EFI_LOAD_OPTION: attributes, path length, description with its null, path, optional data. **/
Bytes
LoadOption (UINT32 Attributes, const std::u16string &Description, const Bytes &Path, const Bytes &Extra = {})
{
  Bytes Out = {(UINT8)Attributes,         (UINT8)(Attributes >> 8), (UINT8)(Attributes >> 16),
               (UINT8)(Attributes >> 24), (UINT8)Path.size (),      (UINT8)(Path.size () >> 8)};

  for (char16_t Character : Description + u'\0') {
    Out.push_back ((UINT8)Character);
    Out.push_back ((UINT8)(Character >> 8));
  }

  Out.insert (Out.end (), Path.begin (), Path.end ());
  Out.insert (Out.end (), Extra.begin (), Extra.end ());
  return Out;
}

class LoadOptionsTest : public PlatformTest {
protected:
  void
  SetBootVariable (const char16_t *Name, const Bytes &Data)
  {
    ASSERT_EQ (gRT->SetVariable ((CHAR16 *)Name, &gEfiGlobalVariableGuid, kAttributes, Data.size (),
                                 const_cast<UINT8 *> (Data.data ())),
               EFI_SUCCESS);
  }

  void
  SetBootOrder (const std::vector<UINT16> &Order)
  {
    ASSERT_EQ (gRT->SetVariable ((CHAR16 *)u"BootOrder", &gEfiGlobalVariableGuid, kAttributes,
                                 Order.size () * sizeof (UINT16), const_cast<UINT16 *> (Order.data ())),
               EFI_SUCCESS);
  }
};

} // namespace

TEST_F (LoadOptionsTest, ReadsAWellFormedOptionAndReleasesIt)
{
  Bytes Path = FvFilePath (kShellFile);
  LOAD_OPTION Option;

  SetBootVariable (u"Boot0002", LoadOption (LOAD_OPTION_ACTIVE, u"EFI Internal Shell", Path, {1, 2, 3}));
  ASSERT_EQ (ReadBootOption (2, &Option), EFI_SUCCESS);
  EXPECT_EQ (Option.Number, 2);
  EXPECT_EQ (Option.Attributes, (UINT32)LOAD_OPTION_ACTIVE);
  EXPECT_EQ (std::u16string ((const char16_t *)Option.Description), u"EFI Internal Shell");
  ASSERT_EQ (Option.FilePathSize, Path.size ()) << "the path ends at its end node, before the optional data";
  EXPECT_EQ (std::memcmp (Option.FilePath, Path.data (), Path.size ()), 0);
  FreeLoadOption (&Option);
  EXPECT_EQ (Option.Buffer, nullptr);
  FreeLoadOption (&Option);
}

TEST_F (LoadOptionsTest, VariablesThatAreNotLoadOptionsAreRefusedWithoutABufferLeft)
{
  Bytes Path = FvFilePath (kShellFile);
  Bytes Unterminated = {1, 0, 0, 0, (UINT8)Path.size (), 0, 'S', 0, 'h', 0};
  Bytes PathTooLong = LoadOption (LOAD_OPTION_ACTIVE, u"Shell", Path);
  Bytes NoEndNode =
    LoadOption (LOAD_OPTION_ACTIVE, u"Shell", Node (MEDIA_DEVICE_PATH, MEDIA_PIWG_FW_FILE_DP, GuidBytes (kShellFile)));
  Bytes ZeroLengthNode = LoadOption (LOAD_OPTION_ACTIVE, u"Shell", Bytes{MEDIA_DEVICE_PATH, 1, 0, 0});
  LOAD_OPTION Option;

  PathTooLong[4] = (UINT8)(Path.size () + 1);
  SetBootVariable (u"Boot0001", Unterminated);
  SetBootVariable (u"Boot0002", PathTooLong);
  SetBootVariable (u"Boot0003", NoEndNode);
  SetBootVariable (u"Boot0004", ZeroLengthNode);
  SetBootVariable (u"Boot0005", Bytes{1, 0, 0});

  for (UINT16 Number = 1; Number <= 5; Number++) {
    EXPECT_EQ (ReadBootOption (Number, &Option), EFI_COMPROMISED_DATA) << "Boot000" << Number;
    EXPECT_EQ (Option.Buffer, nullptr);
  }

  EXPECT_EQ (ReadBootOption (9, &Option), EFI_NOT_FOUND);
}

TEST_F (LoadOptionsTest, FindsTheOptionOfAFileInBootOrder)
{
  Bytes DiskPath = Node (MEDIA_DEVICE_PATH, MEDIA_FILEPATH_DP, {'\\', 0, 0, 0});
  Bytes End = EndNode ();
  Bytes Cut = FvFilePath (kFrontPageFile);
  UINT16 Number = 0;

  DiskPath.insert (DiskPath.end (), End.begin (), End.end ());
  // The file node one byte short of a GUID: not the front page's, however its bytes begin.
  Cut.erase (Cut.begin () + 20 + 4 + 15);
  Cut[20 + 2] = 4 + 15;
  SetBootVariable (u"Boot0003", LoadOption (LOAD_OPTION_ACTIVE, u"UEFI disk", DiskPath));
  SetBootVariable (u"Boot0007", LoadOption (LOAD_OPTION_ACTIVE, u"Cut", Cut));
  SetBootVariable (u"Boot0001",
                   LoadOption (LOAD_OPTION_ACTIVE | LOAD_OPTION_HIDDEN, u"UiApp", FvFilePath (kFrontPageFile)));
  SetBootVariable (u"Boot0002", LoadOption (LOAD_OPTION_ACTIVE, u"EFI Internal Shell", FvFilePath (kShellFile)));
  SetBootOrder ({3, 7, 1, 2});

  ASSERT_EQ (FindBootOptionOfFile (&kFrontPageFile, &Number), EFI_SUCCESS);
  EXPECT_EQ (Number, 1);
  ASSERT_EQ (FindBootOptionOfFile (&kShellFile, &Number), EFI_SUCCESS);
  EXPECT_EQ (Number, 2);

  UINT16 Order[8];
  EXPECT_EQ (ReadBootOrder (Order, 8), 4U);
  EXPECT_EQ (ReadBootOrder (Order, 2), 0U) << "a BootOrder larger than the room is not read";

  const EFI_GUID Other = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
  EXPECT_EQ (FindBootOptionOfFile (&Other, &Number), EFI_NOT_FOUND);
}
