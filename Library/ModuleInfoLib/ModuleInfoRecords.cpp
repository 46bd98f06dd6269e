/** @file
  The module identification records of the driver and of its two libraries,
  built at compile time from their fields.

  A record is the record GUID, then entries of UINT8 type, UINT16 length and
  the value, closed by an end entry of length 0.
**/
#include <Library/CompileTimeLib.h>
#include <Library/ModuleInfoLib.h>

namespace {

constexpr UINTN kHeaderSize = 16;
constexpr UINTN kEntryHead = 3; // type and length
constexpr UINTN kGuidEntry = kEntryHead + 16;
constexpr UINTN kUint16Entry = kEntryHead + 2;
constexpr UINTN kUint32Entry = kEntryHead + 4;

constexpr UINTN
RecordSize (UINTN TagCharacters)
{
  // Component and common GUID, two UINT16, one UINT32, the tag with its null, the end.
  return kHeaderSize + 2 * kGuidEntry + 2 * kUint16Entry + kUint32Entry + kEntryHead +
         (TagCharacters + 1) * sizeof (CHAR16) + kEntryHead;
}

template <UINTN N> struct RecordBuilder {
  UINT8 Bytes[N];
  UINTN Used;

  constexpr void
  Put8 (UINT8 Value)
  {
    Bytes[Used++] = Value;
  }

  constexpr void
  Put16 (UINT16 Value)
  {
    Put8 ((UINT8)Value);
    Put8 ((UINT8)(Value >> 8));
  }

  constexpr void
  Put32 (UINT32 Value)
  {
    Put16 ((UINT16)Value);
    Put16 ((UINT16)(Value >> 16));
  }

  constexpr void
  PutGuid (const EFI_GUID &Guid)
  {
    Put32 (Guid.Data1);
    Put16 (Guid.Data2);
    Put16 (Guid.Data3);
    for (UINTN Index = 0; Index < 8; Index++) {
      Put8 (Guid.Data4[Index]);
    }
  }

  constexpr void
  PutEntryHead (UINT8 Type, UINT16 Length)
  {
    Put8 (Type);
    Put16 (Length);
  }
};

template <UINTN TagSize>
constexpr RecordBuilder<RecordSize (TagSize - 1)>
MakeRecord (const EFI_GUID &Component, UINT16 ValueA, UINT16 ValueB, UINT32 Value32, const char16_t (&Tag)[TagSize])
{
  RecordBuilder<RecordSize (TagSize - 1)> Record{};

  Record.PutGuid (EFI_GUID MODULE_INFO_RECORD_GUID);
  Record.PutEntryHead (MODULE_INFO_TYPE_COMPONENT_GUID, 16);
  Record.PutGuid (Component);
  Record.PutEntryHead (MODULE_INFO_TYPE_COMMON_GUID, 16);
  Record.PutGuid (EFI_GUID MODULE_INFO_COMMON_GUID);
  Record.PutEntryHead (MODULE_INFO_TYPE_UINT16_A, 2);
  Record.Put16 (ValueA);
  Record.PutEntryHead (MODULE_INFO_TYPE_UINT16_B, 2);
  Record.Put16 (ValueB);
  Record.PutEntryHead (MODULE_INFO_TYPE_UINT32, 4);
  Record.Put32 (Value32);
  Record.PutEntryHead (MODULE_INFO_TYPE_STRING, (UINT16)(TagSize * sizeof (CHAR16)));
  for (UINTN Index = 0; Index < TagSize; Index++) {
    Record.Put16 ((UINT16)Tag[Index]);
  }

  Record.PutEntryHead (MODULE_INFO_TYPE_END, 0);
  return Record;
}

constexpr auto mDriverRecord =
  MakeRecord (CompileTime::GuidFromText ("4A5CA267-4016-460F-80EE-7B4C3D77FD62"), 20, 1, 5762, u"p36");
constexpr auto mPrintLibRecord =
  MakeRecord (CompileTime::GuidFromText ("C2622256-47E0-4A8F-90CD-E4183F706F93"), 2, 0, 607, u"p2");
constexpr auto mTimerLibRecord =
  MakeRecord (CompileTime::GuidFromText ("1AE64635-9E80-4FC0-8CE7-8C45B61EC8AE"), 6, 0, 5237, u"p6");

static_assert (sizeof (mDriverRecord.Bytes) == 85 && mDriverRecord.Used == 85, "driver record is 85 bytes");
static_assert (sizeof (mPrintLibRecord.Bytes) == 83 && mPrintLibRecord.Used == 83, "library record is 83 bytes");
static_assert (sizeof (mTimerLibRecord.Bytes) == 83 && mTimerLibRecord.Used == 83, "library record is 83 bytes");

} // namespace

CONST MODULE_INFO_BLOB gUiDriverModuleInfo = {mDriverRecord.Bytes, sizeof (mDriverRecord.Bytes)};
CONST MODULE_INFO_BLOB gPrintLibModuleInfo = {mPrintLibRecord.Bytes, sizeof (mPrintLibRecord.Bytes)};
CONST MODULE_INFO_BLOB gTimerLibModuleInfo = {mTimerLibRecord.Bytes, sizeof (mTimerLibRecord.Bytes)};
