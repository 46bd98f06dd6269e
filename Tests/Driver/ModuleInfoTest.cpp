/** @file
  Module identification records and the list that carries them to the module
  registry.
**/
#include "DriverTest.h"

#include <string>

extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/ModuleInfoLib.h>

namespace {

///
/// A record read back entry by entry, as the registry would read it.
///
struct DecodedRecord {
  EFI_GUID RecordGuid;
  EFI_GUID Component;
  EFI_GUID Common;
  UINT16 ValueA;
  UINT16 ValueB;
  UINT32 Value32;
  std::u16string Tag;
  std::string Types;
  bool Ended;
};

DecodedRecord
Decode (const MODULE_INFO_BLOB &Blob)
{
  DecodedRecord Record = {};
  UINTN Offset = sizeof (EFI_GUID);

  CopyMem (&Record.RecordGuid, Blob.Bytes, sizeof (EFI_GUID));
  while (Offset + 3 <= Blob.Length) {
    UINT8 Type = Blob.Bytes[Offset];
    UINT16 Length = (UINT16)(Blob.Bytes[Offset + 1] | (Blob.Bytes[Offset + 2] << 8));
    const UINT8 *Value = Blob.Bytes + Offset + 3;

    Record.Types.push_back ((char)Type);
    if (Offset + 3 + Length > Blob.Length) {
      break;
    }

    switch (Type) {
      case MODULE_INFO_TYPE_COMPONENT_GUID:
        CopyMem (&Record.Component, Value, sizeof (EFI_GUID));
        break;
      case MODULE_INFO_TYPE_COMMON_GUID:
        CopyMem (&Record.Common, Value, sizeof (EFI_GUID));
        break;
      case MODULE_INFO_TYPE_UINT16_A:
        CopyMem (&Record.ValueA, Value, 2);
        break;
      case MODULE_INFO_TYPE_UINT16_B:
        CopyMem (&Record.ValueB, Value, 2);
        break;
      case MODULE_INFO_TYPE_UINT32:
        CopyMem (&Record.Value32, Value, 4);
        break;
      case MODULE_INFO_TYPE_STRING:
        for (UINTN Index = 0; Index + 1 < Length; Index += 2) {
          char16_t Character = (char16_t)(Value[Index] | (Value[Index + 1] << 8));
          if (Character != 0) {
            Record.Tag.push_back (Character);
          }
        }

        break;
      default:
        break;
    }

    Offset += 3 + Length;
    if (Type == MODULE_INFO_TYPE_END) {
      Record.Ended = (Length == 0) && (Offset == Blob.Length);
      break;
    }
  }

  return Record;
}

void
ExpectRecord (const MODULE_INFO_BLOB &Blob,
              UINT32 Length,
              const EFI_GUID &Component,
              UINT16 ValueA,
              UINT16 ValueB,
              UINT32 Value32,
              const std::u16string &Tag)
{
  constexpr EFI_GUID RecordGuid = CompileTime::GuidFromText ("059EF06E-C652-4A45-9FBE-5975E369461C");
  constexpr EFI_GUID CommonGuid = CompileTime::GuidFromText ("7AA80CF5-9185-5271-B430-D8BDFCAA9B90");

  ASSERT_EQ (Blob.Length, Length);
  DecodedRecord Record = Decode (Blob);
  EXPECT_TRUE (CompareGuid (&Record.RecordGuid, &RecordGuid));
  EXPECT_TRUE (CompareGuid (&Record.Component, &Component));
  EXPECT_TRUE (CompareGuid (&Record.Common, &CommonGuid));
  EXPECT_EQ (Record.ValueA, ValueA);
  EXPECT_EQ (Record.ValueB, ValueB);
  EXPECT_EQ (Record.Value32, Value32);
  EXPECT_EQ (Record.Tag, Tag);
  EXPECT_TRUE (Record.Ended) << "the end entry closes the record exactly";
}

using ModuleInfoTest = DriverTest;

TEST_F (ModuleInfoTest, RecordsCarryTheirFieldsInTheirExactLengths)
{
  ExpectRecord (gUiDriverModuleInfo, 85, CompileTime::GuidFromText ("4A5CA267-4016-460F-80EE-7B4C3D77FD62"), 20, 1,
                5762, u"p36");
  ExpectRecord (gPrintLibModuleInfo, 83, CompileTime::GuidFromText ("C2622256-47E0-4A8F-90CD-E4183F706F93"), 2, 0, 607,
                u"p2");
  ExpectRecord (gTimerLibModuleInfo, 83, CompileTime::GuidFromText ("1AE64635-9E80-4FC0-8CE7-8C45B61EC8AE"), 6, 0, 5237,
                u"p6");
}

TEST_F (ModuleInfoTest, TheRegistryGetsTheDriverRecordFirstThenTheLibrariesInOrder)
{
  InstallModuleRegistry ();
  InstallPageEngine ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);

  ASSERT_EQ (RegistryCalls ().size (), 1u);
  ASSERT_TRUE (RegistryCalls ()[0].Register);
  LIST_ENTRY *Head = RegistryCalls ()[0].ListHead;

  std::vector<MODULE_INFO_LIST_ENTRY *> Entries;
  for (LIST_ENTRY *Link = Head->ForwardLink; Link != Head; Link = Link->ForwardLink) {
    Entries.push_back ((MODULE_INFO_LIST_ENTRY *)Link);
  }

  ASSERT_EQ (Entries.size (), 3u);
  EXPECT_EQ (Entries[0]->Kind, MODULE_KIND_DRIVER);
  EXPECT_EQ ((decltype (Entries[0]->Blob))Entries[0]->Blob, gUiDriverModuleInfo.Bytes);
  EXPECT_EQ ((decltype (Entries[0]->BlobLength))Entries[0]->BlobLength, 85u);
  EXPECT_EQ (Entries[1]->Kind, MODULE_KIND_LIBRARY);
  EXPECT_EQ ((decltype (Entries[1]->Blob))Entries[1]->Blob, gPrintLibModuleInfo.Bytes);
  EXPECT_EQ (Entries[2]->Kind, MODULE_KIND_LIBRARY);
  EXPECT_EQ ((decltype (Entries[2]->Blob))Entries[2]->Blob, gTimerLibModuleInfo.Bytes);
  for (MODULE_INFO_LIST_ENTRY *Entry : Entries) {
    EFI_HANDLE ImageHandle = Entry->ImageHandle; // packed: read it out before comparing
    EXPECT_EQ (ImageHandle, mImage);
    EXPECT_NE (Platform ().Pool ().Find (Entry), nullptr) << "entries come from boot-services pool";
  }

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_F (ModuleInfoTest, ARegistryInstalledLaterReceivesTheListOnce)
{
  InstallPageEngine ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  EXPECT_TRUE (RegistryCalls ().empty ());

  UINTN OpenEvents = Platform ().Events ().OpenEvents ().size ();
  InstallModuleRegistry ();
  ASSERT_EQ (RegistryCalls ().size (), 1u);
  EXPECT_TRUE (RegistryCalls ()[0].Register);
  EXPECT_EQ (Platform ().Events ().OpenEvents ().size (), OpenEvents - 1);

  // Its notification closed its own event: a second registry is not told.
  MODULE_REGISTRY_PROTOCOL Second = {};
  Platform ().Handles ().InstallProtocol (gModuleRegistryProtocolGuid, &Second);
  EXPECT_EQ (RegistryCalls ().size (), 1u);

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_F (ModuleInfoTest, AddingWithoutPoolOrArgumentsFailsCleanly)
{
  LIST_ENTRY *Head = CreateModuleInfoList ();
  ASSERT_NE (Head, nullptr);

  EXPECT_EQ (AddModuleInfo (nullptr, MODULE_KIND_LIBRARY, nullptr, &gPrintLibModuleInfo), EFI_INVALID_PARAMETER);
  EXPECT_EQ (AddModuleInfo (Head, MODULE_KIND_LIBRARY, nullptr, nullptr), EFI_INVALID_PARAMETER);
  Platform ().Pool ().FailAllocation (1);
  EXPECT_EQ (AddModuleInfo (Head, MODULE_KIND_LIBRARY, nullptr, &gPrintLibModuleInfo), EFI_OUT_OF_RESOURCES);
  EXPECT_TRUE (IsListEmpty (Head));

  DestroyModuleInfoList (Head);
}

} // namespace
