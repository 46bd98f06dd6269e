/** @file
  Finds the ACPI power-management timer: configuration table -> RSDP ->
  XSDT (or RSDT) -> FADT -> X_PM_TMR_BLK or PM_TMR_BLK.

  The tables come from the platform and are trusted no further than they prove
  themselves: each is checked for its signature, a length that holds what is
  read from it, and its checksum. Only the signature and length are read
  before the length is known to cover them.
**/
#include <Guid/Acpi.h>
#include <IndustryStandard/Acpi.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>

#include "TscTimerLibInternal.h"

STATIC CONST EFI_GUID mAcpi10TableGuid = ACPI_10_TABLE_GUID;
static_assert (CompileTime::GuidEqual (EFI_GUID ACPI_10_TABLE_GUID,
                                       CompileTime::GuidFromText ("EB9D2D30-2D88-11D3-9A16-0090273FC14D")),
               "ACPI 1.0 table GUID");
static_assert (CompileTime::GuidEqual (EFI_GUID EFI_ACPI_20_TABLE_GUID,
                                       CompileTime::GuidFromText ("8868E871-E4F1-11D3-BC22-0080C73C8881")),
               "ACPI 2.0 table GUID");

//
// No table that this code reads comes near this size (an XSDT of this size
// would list 8,000 tables); a larger Length is taken as corruption rather than
// followed into memory that is not the table's.
//
#define MAXIMUM_TABLE_LENGTH 0x10000U

#define PM_TIMER_24_BIT_MASK 0x00FFFFFFU
#define PM_TIMER_32_BIT_MASK 0xFFFFFFFFU

//
// The PM timer is one 32-bit register: its port and the three above it.
//
#define MAXIMUM_PM_TIMER_PORT 0xFFFCU

STATIC BOOLEAN
ChecksumIsZero (IN CONST VOID *Table, IN UINTN Length)
{
  CONST UINT8 *Bytes = (CONST UINT8 *)Table;
  UINT8 Sum = 0;

  for (UINTN Index = 0; Index < Length; Index++) {
    Sum = (UINT8)(Sum + Bytes[Index]);
  }

  return (BOOLEAN)(Sum == 0);
}

/**
  @return the system description table at Address when it carries Signature,
          a length between its header and MAXIMUM_TABLE_LENGTH, and a valid
          checksum; otherwise nullptr.
**/
STATIC CONST EFI_ACPI_DESCRIPTION_HEADER *
ValidTable (IN UINT64 Address, IN UINT32 Signature)
{
  CONST EFI_ACPI_DESCRIPTION_HEADER *Header;

  if (Address == 0) {
    return nullptr;
  }

  // ACPI tables are found by their physical address, which is the pointer here.
  Header = (CONST EFI_ACPI_DESCRIPTION_HEADER *)(UINTN)Address; // NOLINT(performance-no-int-to-ptr)
  if (Header->Signature != Signature) {
    return nullptr;
  }

  if (Header->Length < sizeof (EFI_ACPI_DESCRIPTION_HEADER) || Header->Length > MAXIMUM_TABLE_LENGTH) {
    return nullptr;
  }

  return ChecksumIsZero (Header, Header->Length) ? Header : nullptr;
}

/**
  Reads the PM timer out of a FADT that ValidTable accepted. The fields that
  a short (older) FADT lacks count as zero.
**/
STATIC EFI_STATUS
PmTimerFromFadt (IN CONST EFI_ACPI_DESCRIPTION_HEADER *Header, OUT ACPI_PM_TIMER *Timer)
{
  CONST EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE *Fadt = (CONST EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE *)Header;
  UINT32 Length = Header->Length;
  UINT32 Flags = 0;
  UINT64 Port = 0;

  if (Length < OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, PmTmrBlk) + sizeof (Fadt->PmTmrBlk)) {
    return EFI_NOT_FOUND;
  }

  if (Length >= OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, Flags) + sizeof (Fadt->Flags)) {
    Flags = Fadt->Flags;
  }

  //
  // The extended block supersedes PM_TMR_BLK when it is there; it is usable
  // here only in I/O space.
  //
  if (Length >= OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, XPmTmrBlk) + sizeof (Fadt->XPmTmrBlk) &&
      Fadt->XPmTmrBlk.AddressSpaceId == EFI_ACPI_2_0_SYSTEM_IO && Fadt->XPmTmrBlk.Address != 0 &&
      Fadt->XPmTmrBlk.Address <= MAXIMUM_PM_TIMER_PORT) {
    Port = Fadt->XPmTmrBlk.Address;
  } else {
    Port = Fadt->PmTmrBlk;
  }

  if (Port == 0 || Port > MAXIMUM_PM_TIMER_PORT) {
    return EFI_NOT_FOUND;
  }

  Timer->Port = (UINT16)Port;
  Timer->CounterMask = ((Flags & EFI_ACPI_2_0_TMR_VAL_EXT) != 0) ? PM_TIMER_32_BIT_MASK : PM_TIMER_24_BIT_MASK;
  return EFI_SUCCESS;
}

/**
  Looks for the FADT among the entries of an RSDT (EntrySize 4) or XSDT
  (EntrySize 8) and reads the PM timer from the first valid one.
**/
STATIC EFI_STATUS
PmTimerFromRootTable (IN CONST EFI_ACPI_DESCRIPTION_HEADER *Root, IN UINTN EntrySize, OUT ACPI_PM_TIMER *Timer)
{
  CONST UINT8 *Entries = (CONST UINT8 *)(Root + 1);
  UINTN EntryCount = (Root->Length - sizeof (EFI_ACPI_DESCRIPTION_HEADER)) / EntrySize;

  for (UINTN Index = 0; Index < EntryCount; Index++) {
    UINT64 Address = 0;

    //
    // XSDT entries are 64-bit values at 4-byte alignment: copy, do not load.
    //
    CopyMem (&Address, Entries + Index * EntrySize, EntrySize);
    CONST EFI_ACPI_DESCRIPTION_HEADER *Fadt = ValidTable (Address, EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE_SIGNATURE);
    if (Fadt != nullptr) {
      return PmTimerFromFadt (Fadt, Timer);
    }
  }

  return EFI_NOT_FOUND;
}

/**
  Follows one root system description pointer: its XSDT when it has one,
  else (or when the XSDT yields nothing) its RSDT.
**/
STATIC EFI_STATUS
PmTimerFromRsdp (IN CONST VOID *Pointer, OUT ACPI_PM_TIMER *Timer)
{
  CONST EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER *Rsdp =
    (CONST EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER *)Pointer;
  CONST EFI_ACPI_DESCRIPTION_HEADER *Root;

  if (Rsdp == nullptr || Rsdp->Signature != EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER_SIGNATURE) {
    return EFI_NOT_FOUND;
  }

  if (!ChecksumIsZero (Rsdp, sizeof (EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_POINTER))) {
    return EFI_NOT_FOUND;
  }

  //
  // Revision 0 is the 20-byte ACPI 1.0 structure, which ends before Length.
  //
  if (Rsdp->Revision >= EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER_REVISION) {
    if (Rsdp->Length < sizeof (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER) || Rsdp->Length > MAXIMUM_TABLE_LENGTH ||
        !ChecksumIsZero (Rsdp, Rsdp->Length)) {
      return EFI_NOT_FOUND;
    }

    Root = ValidTable (Rsdp->XsdtAddress, EFI_ACPI_2_0_EXTENDED_SYSTEM_DESCRIPTION_TABLE_SIGNATURE);
    if (Root != nullptr && !EFI_ERROR (PmTimerFromRootTable (Root, sizeof (UINT64), Timer))) {
      return EFI_SUCCESS;
    }
  }

  Root = ValidTable (Rsdp->RsdtAddress, EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_TABLE_SIGNATURE);
  if (Root != nullptr) {
    return PmTimerFromRootTable (Root, sizeof (UINT32), Timer);
  }

  return EFI_NOT_FOUND;
}

EFI_STATUS
FindAcpiPmTimer (OUT ACPI_PM_TIMER *Timer)
{
  CONST EFI_GUID *RootPointerGuids[] = {&gEfiAcpi20TableGuid, &mAcpi10TableGuid};

  if (gST == nullptr || gST->ConfigurationTable == nullptr) {
    return EFI_NOT_FOUND;
  }

  for (CONST EFI_GUID *Guid : RootPointerGuids) {
    for (UINTN Index = 0; Index < gST->NumberOfTableEntries; Index++) {
      CONST EFI_CONFIGURATION_TABLE *Entry = &gST->ConfigurationTable[Index];
      if (CompareGuid (&Entry->VendorGuid, Guid) && !EFI_ERROR (PmTimerFromRsdp (Entry->VendorTable, Timer))) {
        return EFI_SUCCESS;
      }
    }
  }

  return EFI_NOT_FOUND;
}
