/** @file
  ACPI tables as a platform would publish them, built for the TSC calibration
  tests: an RSDP, an XSDT and an RSDT, and a FADT of any length.

  Every table lives below 4 GB (an RSDT holds 32-bit addresses) and ends
  exactly where an inaccessible guard page begins, so that a read past a
  table's end stops the test with a fault instead of passing unseen.
**/
#ifndef KEST_TESTS_FAKE_ACPI_TABLES_H_
#define KEST_TESTS_FAKE_ACPI_TABLES_H_

#include <cstddef>
#include <memory>
#include <vector>

#include <IndustryStandard/Acpi.h>

namespace FakeAcpi {

/// Memory below 4 GB that ends at a guard page; released with the object.
class GuardedBlock {
public:
  explicit GuardedBlock (size_t Length);
  ~GuardedBlock ();
  GuardedBlock (const GuardedBlock &) = delete;
  GuardedBlock &operator= (const GuardedBlock &) = delete;

  UINT8 *
  Data () const
  {
    return mData;
  }

  UINT64
  Address () const
  {
    return (UINT64)(UINTN)mData;
  }

private:
  void *mMapping;
  size_t mMappingLength;
  UINT8 *mData;
};

/// Sets the checksum byte at ChecksumOffset so that the Length bytes sum to zero.
void FixChecksum (UINT8 *Table, size_t Length, size_t ChecksumOffset);

/// A FADT of Length bytes (the ACPI 2.0 layout cut or padded) with a valid checksum.
struct FADT_SETTINGS {
  UINT32 Length = sizeof (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE);
  UINT32 PmTmrBlk = 0;
  UINT32 Flags = 0;
  UINT8 XPmTmrSpace = EFI_ACPI_2_0_SYSTEM_IO;
  UINT64 XPmTmrBlk = 0;
};

/**
  A table with a header and Body bytes after it: Signature, Length =
  36 + Body.size(), valid checksum.
**/
std::unique_ptr<GuardedBlock> MakeTable (UINT32 Signature, const std::vector<UINT8> &Body);

std::unique_ptr<GuardedBlock> MakeFadt (const FADT_SETTINGS &Settings);

/// An XSDT (8-byte entries) or RSDT (4-byte entries) listing Tables.
std::unique_ptr<GuardedBlock> MakeRootTable (bool Extended, const std::vector<UINT64> &Tables);

/// An ACPI 2.0 RSDP (revision 2, 36 bytes) or, when Revision is 0, an ACPI 1.0 one (20 bytes).
std::unique_ptr<GuardedBlock> MakeRsdp (UINT8 Revision, UINT64 XsdtAddress, UINT32 RsdtAddress);

} // namespace FakeAcpi

#endif
