/** @file
  Finding the PM timer: which root pointer, root table and timer block is
  used, and the tables that must be refused. The tables end at guard pages,
  so a read past any table's end faults the test.
**/
#include "TscTestFixture.h"

#include <cstring>

namespace {

using FakeAcpi::FADT_SETTINGS;

const EFI_GUID kAcpi10TableGuid = ACPI_10_TABLE_GUID;

constexpr UINT32 kApicSignature = SIGNATURE_32 ('A', 'P', 'I', 'C');
constexpr UINT32 kHpetSignature = SIGNATURE_32 ('H', 'P', 'E', 'T');

FADT_SETTINGS
FadtWith (UINT32 Length, UINT32 PmTmrBlk, UINT64 XPmTmrBlk, UINT32 Flags = 0)
{
  FADT_SETTINGS Settings;
  Settings.Length = Length;
  Settings.PmTmrBlk = PmTmrBlk;
  Settings.XPmTmrBlk = XPmTmrBlk;
  Settings.Flags = Flags;
  return Settings;
}

//
// Publishing succeeds with a timer on Port, and only Port is read.
//
#define EXPECT_PUBLISHED_WITH_TIMER_AT(Port)                                                                           \
  do {                                                                                                                 \
    SimulatedPmTimer Timer (TimerSettings (Port));                                                                     \
    ExpectMeasuredFrom (Timer);                                                                                        \
    EXPECT_GT (Timer.Reads (), 0U);                                                                                    \
  } while (FALSE)

//
// Publishing finds no timer: nothing is read, installed or left in pool.
//
#define EXPECT_NO_TIMER_FOUND()                                                                                        \
  do {                                                                                                                 \
    SimulatedPmTimer Timer (TimerSettings (kTimerPort));                                                               \
    EXPECT_EQ (PublishTscFrequency (), EFI_UNSUPPORTED);                                                               \
    ExpectNothingPublished ();                                                                                         \
    EXPECT_EQ (Timer.Reads () + Timer.StrayReads (), 0U);                                                              \
  } while (FALSE)

class AcpiPmTimerDiscoveryTest : public TscTimerLibTest {
protected:
  void
  SetByte (UINT64 Table, size_t Offset, UINT8 Value)
  {
    At (Table)[Offset] = Value;
  }

  void
  SetUint32 (UINT64 Table, size_t Offset, UINT32 Value)
  {
    std::memcpy (At (Table) + Offset, &Value, sizeof (Value));
  }

  /// Recomputes a system description table's checksum over its first Length bytes.
  void
  FixTableChecksum (UINT64 Table, size_t Length)
  {
    FakeAcpi::FixChecksum (At (Table), Length, OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Checksum));
  }

  /// Recomputes both checksums of a revision-2 RSDP.
  void
  FixRsdpChecksums (UINT64 Rsdp)
  {
    FakeAcpi::FixChecksum (At (Rsdp), 20, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Checksum));
    FakeAcpi::FixChecksum (At (Rsdp), 36, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, ExtendedChecksum));
  }

  /// RSDP (revision 2) -> XSDT -> FADT with a timer at kTimerPort, and nothing else.
  struct CHAIN {
    UINT64 Rsdp;
    UINT64 Xsdt;
    UINT64 Fadt;
  };

  CHAIN
  MakeAcpi20Chain ()
  {
    CHAIN Chain;
    Chain.Fadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kTimerPort)));
    Chain.Xsdt = Keep (FakeAcpi::MakeRootTable (true, {Chain.Fadt}));
    Chain.Rsdp = Keep (FakeAcpi::MakeRsdp (2, Chain.Xsdt, 0));
    return Chain;
  }
};

// --- Which timer block ---

TEST_F (AcpiPmTimerDiscoveryTest, ExtendedBlockInIoSpaceSupersedesPmTmrBlk)
{
  PublishAcpi20Platform (FadtWith (244, kLegacyTimerPort, kTimerPort));
  EXPECT_PUBLISHED_WITH_TIMER_AT (kTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, EmptyExtendedBlockFallsBackToPmTmrBlk)
{
  PublishAcpi20Platform (FadtWith (244, kLegacyTimerPort, 0));
  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, ExtendedBlockInMemorySpaceFallsBackToPmTmrBlk)
{
  FADT_SETTINGS Fadt = FadtWith (244, kLegacyTimerPort, 0xFED00000);
  Fadt.XPmTmrSpace = EFI_ACPI_2_0_SYSTEM_MEMORY;
  PublishAcpi20Platform (Fadt);
  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, ExtendedBlockOutsideThePortRangeFallsBackToPmTmrBlk)
{
  PublishAcpi20Platform (FadtWith (244, kLegacyTimerPort, 0x10000));
  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtWithoutATimerBlockIsUnsupported)
{
  PublishAcpi20Platform (FadtWith (244, 0, 0));
  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, Acpi10FadtEndsBeforeTheExtendedBlock)
{
  // 116 bytes: PM_TMR_BLK and Flags, nothing after. The 32-bit flag holds.
  PublishAcpi20Platform (FadtWith (116, kLegacyTimerPort, 0, EFI_ACPI_2_0_TMR_VAL_EXT));
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kLegacyTimerPort, 32);
  Settings.Behaviour = SimulatedPmTimer::Mode::StepsPerRead;
  Settings.Step = 0x01000001;
  SimulatedPmTimer Timer (Settings);

  PublishTscFrequency ();

  EXPECT_EQ (Timer.Reads (), 3U) << "counted as a 32-bit timer";
}

TEST_F (AcpiPmTimerDiscoveryTest, ShortestFadtThatHoldsPmTmrBlk)
{
  // 80 bytes end right after PM_TMR_BLK: no Flags, so a 24-bit timer.
  PublishAcpi20Platform (FadtWith (80, kLegacyTimerPort, 0));
  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtOneByteShortOfTheExtendedBlockUsesPmTmrBlk)
{
  PublishAcpi20Platform (FadtWith (219, kLegacyTimerPort, kTimerPort));
  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtTooShortForPmTmrBlkIsUnsupported)
{
  PublishAcpi20Platform (FadtWith (79, kLegacyTimerPort, 0));
  EXPECT_NO_TIMER_FOUND ();
}

// --- Which root pointer and root table ---

TEST_F (AcpiPmTimerDiscoveryTest, RsdtWhenTheRootPointerHasNoXsdt)
{
  UINT64 Fadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kTimerPort)));
  UINT64 Rsdt = Keep (FakeAcpi::MakeRootTable (false, {Fadt}));
  PublishRootPointer (gEfiAcpi20TableGuid, Keep (FakeAcpi::MakeRsdp (2, 0, (UINT32)Rsdt)));

  EXPECT_PUBLISHED_WITH_TIMER_AT (kTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, Acpi10RootPointerLeadsThroughTheRsdt)
{
  // A 20-byte RSDP: its Length field would lie beyond the guard page.
  UINT64 Fadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kTimerPort)));
  UINT64 Rsdt = Keep (FakeAcpi::MakeRootTable (false, {Fadt}));
  PublishRootPointer (kAcpi10TableGuid, Keep (FakeAcpi::MakeRsdp (0, 0, (UINT32)Rsdt)));

  EXPECT_PUBLISHED_WITH_TIMER_AT (kTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, XsdtIsPreferredOverRsdt)
{
  UINT64 XsdtFadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kTimerPort)));
  UINT64 RsdtFadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kLegacyTimerPort)));
  UINT64 Xsdt = Keep (FakeAcpi::MakeRootTable (true, {XsdtFadt}));
  UINT64 Rsdt = Keep (FakeAcpi::MakeRootTable (false, {RsdtFadt}));
  PublishRootPointer (gEfiAcpi20TableGuid, Keep (FakeAcpi::MakeRsdp (2, Xsdt, (UINT32)Rsdt)));

  EXPECT_PUBLISHED_WITH_TIMER_AT (kTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, CorruptXsdtFallsBackToRsdt)
{
  UINT64 XsdtFadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kTimerPort)));
  UINT64 RsdtFadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kLegacyTimerPort)));
  UINT64 Xsdt = Keep (FakeAcpi::MakeRootTable (true, {XsdtFadt}));
  UINT64 Rsdt = Keep (FakeAcpi::MakeRootTable (false, {RsdtFadt}));
  PublishRootPointer (gEfiAcpi20TableGuid, Keep (FakeAcpi::MakeRsdp (2, Xsdt, (UINT32)Rsdt)));
  At (Xsdt)[OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Checksum)] ^= 0x55;

  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, Acpi20PointerIsPreferredOverAcpi10)
{
  UINT64 Fadt10 = Keep (FakeAcpi::MakeFadt (TimerAtPort (kLegacyTimerPort)));
  UINT64 Rsdt = Keep (FakeAcpi::MakeRootTable (false, {Fadt10}));
  PublishRootPointer (kAcpi10TableGuid, Keep (FakeAcpi::MakeRsdp (0, 0, (UINT32)Rsdt)));
  PublishAcpi20Platform (TimerAtPort (kTimerPort));

  EXPECT_PUBLISHED_WITH_TIMER_AT (kTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, CorruptAcpi20PointerFallsBackToAcpi10)
{
  UINT64 Fadt10 = Keep (FakeAcpi::MakeFadt (TimerAtPort (kLegacyTimerPort)));
  UINT64 Rsdt = Keep (FakeAcpi::MakeRootTable (false, {Fadt10}));
  PublishRootPointer (kAcpi10TableGuid, Keep (FakeAcpi::MakeRsdp (0, 0, (UINT32)Rsdt)));
  CHAIN Chain = MakeAcpi20Chain ();
  SetByte (Chain.Rsdp, 0, 'X');
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_PUBLISHED_WITH_TIMER_AT (kLegacyTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtIsFoundAmongOtherTablesAndNullEntries)
{
  UINT64 Apic = Keep (FakeAcpi::MakeTable (kApicSignature, std::vector<UINT8> (8, 0)));
  UINT64 Hpet = Keep (FakeAcpi::MakeTable (kHpetSignature, std::vector<UINT8> (20, 0)));
  UINT64 Fadt = Keep (FakeAcpi::MakeFadt (TimerAtPort (kTimerPort)));
  UINT64 Xsdt = Keep (FakeAcpi::MakeRootTable (true, {Apic, 0, Hpet, Fadt}));
  PublishRootPointer (gEfiAcpi20TableGuid, Keep (FakeAcpi::MakeRsdp (2, Xsdt, 0)));

  EXPECT_PUBLISHED_WITH_TIMER_AT (kTimerPort);
}

TEST_F (AcpiPmTimerDiscoveryTest, RootTableWithoutAFadtIsUnsupported)
{
  UINT64 Apic = Keep (FakeAcpi::MakeTable (kApicSignature, std::vector<UINT8> (8, 0)));
  UINT64 Xsdt = Keep (FakeAcpi::MakeRootTable (true, {Apic}));
  PublishRootPointer (gEfiAcpi20TableGuid, Keep (FakeAcpi::MakeRsdp (2, Xsdt, 0)));

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, RootPointerUnderAnotherGuidIsIgnored)
{
  CHAIN Chain = MakeAcpi20Chain ();
  const EFI_GUID Unrelated = {0x1c2d3e4f, 0x5a6b, 0x7c8d, {0x9e, 0xaf, 0xb0, 0xc1, 0xd2, 0xe3, 0xf4, 0x05}};
  PublishRootPointer (Unrelated, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

// --- Tables that must be refused ---

TEST_F (AcpiPmTimerDiscoveryTest, RootPointerWithAWrongSignatureIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetByte (Chain.Rsdp, 7, 'X'); // "RSD PTRX"
  FixRsdpChecksums (Chain.Rsdp);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, RootPointerWithABadChecksumIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetByte (Chain.Rsdp, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Checksum),
           (UINT8)(At (Chain.Rsdp)[OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Checksum)] + 1));
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, RootPointerWithABadExtendedChecksumIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetByte (Chain.Rsdp, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, ExtendedChecksum),
           (UINT8)(At (Chain.Rsdp)[OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, ExtendedChecksum)] + 1));
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, RootPointerShorterThanItsRevisionIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetUint32 (Chain.Rsdp, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Length), 20);
  FixRsdpChecksums (Chain.Rsdp);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, RootPointerWithAnImpossibleLengthIsRefusedUnread)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetUint32 (Chain.Rsdp, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Length), 0x7FFFFFFF);
  FixRsdpChecksums (Chain.Rsdp);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, XsdtWithAWrongSignatureIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetUint32 (Chain.Xsdt, 0, kApicSignature);
  FixTableChecksum (Chain.Xsdt, 36 + 8);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, XsdtShorterThanItsHeaderIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetUint32 (Chain.Xsdt, OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Length), 20);
  FixTableChecksum (Chain.Xsdt, 20);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, XsdtWithAnImpossibleLengthIsRefusedUnread)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetUint32 (Chain.Xsdt, OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Length), 0x10000000);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, XsdtWithABadChecksumAndNoRsdtIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  At (Chain.Xsdt)[OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Checksum)] ^= 0x01;
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtWithABadChecksumIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  At (Chain.Fadt)[OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Checksum)] ^= 0x01;
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtWithAWrongSignatureIsRefused)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetByte (Chain.Fadt, 3, 'Q'); // "FACQ"
  FixTableChecksum (Chain.Fadt, 244);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

TEST_F (AcpiPmTimerDiscoveryTest, FadtWithAnImpossibleLengthIsRefusedUnread)
{
  CHAIN Chain = MakeAcpi20Chain ();
  SetUint32 (Chain.Fadt, OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Length), 0x00100000);
  PublishRootPointer (gEfiAcpi20TableGuid, Chain.Rsdp);

  EXPECT_NO_TIMER_FOUND ();
}

} // namespace
