/** @file
  ACPI tables for the TSC calibration tests, each below 4 GB and followed by
  a guard page.
**/
#include "FakeAcpiTables.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace FakeAcpi {

namespace {

constexpr UINT32 kXsdtSignature = EFI_ACPI_2_0_EXTENDED_SYSTEM_DESCRIPTION_TABLE_SIGNATURE;
constexpr UINT32 kRsdtSignature = EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_TABLE_SIGNATURE;
constexpr UINT32 kFadtSignature = EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE_SIGNATURE;

} // namespace

GuardedBlock::GuardedBlock (size_t Length)
{
  const size_t Page = (size_t)sysconf (_SC_PAGESIZE);
  const size_t DataPages = (Length + Page - 1) / Page;

  mMappingLength = (DataPages + 1) * Page;
  mMapping = mmap (nullptr, mMappingLength, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0);
  if (mMapping == MAP_FAILED) {
    std::abort ();
  }

  UINT8 *Guard = (UINT8 *)mMapping + DataPages * Page;
  if (mprotect (Guard, Page, PROT_NONE) != 0) {
    std::abort ();
  }

  mData = Guard - Length;
}

GuardedBlock::~GuardedBlock ()
{
  munmap (mMapping, mMappingLength);
}

void
FixChecksum (UINT8 *Table, size_t Length, size_t ChecksumOffset)
{
  UINT8 Sum = 0;

  Table[ChecksumOffset] = 0;
  for (size_t Index = 0; Index < Length; Index++) {
    Sum = (UINT8)(Sum + Table[Index]);
  }

  Table[ChecksumOffset] = (UINT8)(0 - Sum);
}

std::unique_ptr<GuardedBlock>
MakeTable (UINT32 Signature, const std::vector<UINT8> &Body)
{
  const size_t Length = sizeof (EFI_ACPI_DESCRIPTION_HEADER) + Body.size ();
  auto Block = std::make_unique<GuardedBlock> (Length);
  EFI_ACPI_DESCRIPTION_HEADER Header = {};

  Header.Signature = Signature;
  Header.Length = (UINT32)Length;
  Header.Revision = 1;
  std::memcpy (Header.OemId, "KESTUI", 6);
  std::memcpy (Block->Data (), &Header, sizeof (Header));
  if (!Body.empty ()) {
    std::memcpy (Block->Data () + sizeof (Header), Body.data (), Body.size ());
  }

  FixChecksum (Block->Data (), Length, OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Checksum));
  return Block;
}

std::unique_ptr<GuardedBlock>
MakeFadt (const FADT_SETTINGS &Settings)
{
  EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE Fadt = {};
  std::vector<UINT8> Body (Settings.Length - sizeof (EFI_ACPI_DESCRIPTION_HEADER), 0);

  Fadt.PmTmrBlk = Settings.PmTmrBlk;
  Fadt.PmTmrLen = 4;
  Fadt.Flags = Settings.Flags;
  Fadt.XPmTmrBlk.AddressSpaceId = Settings.XPmTmrSpace;
  Fadt.XPmTmrBlk.RegisterBitWidth = 32;
  Fadt.XPmTmrBlk.AccessSize = 3;
  Fadt.XPmTmrBlk.Address = Settings.XPmTmrBlk;
  std::memcpy (Body.data (), (const UINT8 *)&Fadt + sizeof (EFI_ACPI_DESCRIPTION_HEADER),
               std::min (Body.size (), sizeof (Fadt) - sizeof (EFI_ACPI_DESCRIPTION_HEADER)));
  auto Block = MakeTable (kFadtSignature, Body);
  Block->Data ()[OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Revision)] = 4;
  FixChecksum (Block->Data (), Settings.Length, OFFSET_OF (EFI_ACPI_DESCRIPTION_HEADER, Checksum));
  return Block;
}

std::unique_ptr<GuardedBlock>
MakeRootTable (bool Extended, const std::vector<UINT64> &Tables)
{
  const size_t EntrySize = Extended ? sizeof (UINT64) : sizeof (UINT32);
  std::vector<UINT8> Body (Tables.size () * EntrySize);

  for (size_t Index = 0; Index < Tables.size (); Index++) {
    std::memcpy (Body.data () + Index * EntrySize, &Tables[Index], EntrySize);
  }

  return MakeTable (Extended ? kXsdtSignature : kRsdtSignature, Body);
}

std::unique_ptr<GuardedBlock>
MakeRsdp (UINT8 Revision, UINT64 XsdtAddress, UINT32 RsdtAddress)
{
  EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER Rsdp = {};
  const size_t Length = (Revision >= 2) ? sizeof (Rsdp) : sizeof (EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_POINTER);
  auto Block = std::make_unique<GuardedBlock> (Length);

  Rsdp.Signature = EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER_SIGNATURE;
  std::memcpy (Rsdp.OemId, "KESTUI", 6);
  Rsdp.Revision = Revision;
  Rsdp.RsdtAddress = RsdtAddress;
  Rsdp.Length = (UINT32)Length;
  Rsdp.XsdtAddress = XsdtAddress;
  std::memcpy (Block->Data (), &Rsdp, Length);
  FixChecksum (Block->Data (), sizeof (EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_POINTER),
               OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Checksum));
  if (Revision >= 2) {
    FixChecksum (Block->Data (), Length, OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, ExtendedChecksum));
  }

  return Block;
}

} // namespace FakeAcpi
