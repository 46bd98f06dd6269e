/** @file
  The ACPI structures that firmware code reads to find the power-management
  timer: the root system description pointer, the common header of the system
  description tables and the fixed ACPI description table (FADT).

  Written from ACPI 2.0 and 6.x with the names that EDK II's MdePkg uses. The
  structures are byte-packed as in the tables themselves; the offsets are
  checked below against the fixed offsets that ACPI defines.
**/
#ifndef MDE_LITE_INDUSTRY_STANDARD_ACPI_H_
#define MDE_LITE_INDUSTRY_STANDARD_ACPI_H_

#include <Base.h>

#pragma pack(1)

///
/// Common header of every system description table (RSDT, XSDT, FADT, ...).
///
typedef struct {
  UINT32 Signature;
  UINT32 Length; // of the whole table, this header included
  UINT8 Revision;
  UINT8 Checksum;
  UINT8 OemId[6];
  UINT64 OemTableId;
  UINT32 OemRevision;
  UINT32 CreatorId;
  UINT32 CreatorRevision;
} EFI_ACPI_DESCRIPTION_HEADER;

///
/// Root system description pointer of ACPI 1.0 (revision 0): 20 bytes.
///
typedef struct {
  UINT64 Signature;
  UINT8 Checksum; // the 20 bytes sum to zero
  UINT8 OemId[6];
  UINT8 Reserved; // the revision in later versions; 0 here
  UINT32 RsdtAddress;
} EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_POINTER;

///
/// Root system description pointer of ACPI 2.0 and later (revision 2).
///
typedef struct {
  UINT64 Signature;
  UINT8 Checksum; // the first 20 bytes sum to zero
  UINT8 OemId[6];
  UINT8 Revision;
  UINT32 RsdtAddress;
  UINT32 Length; // of the whole structure
  UINT64 XsdtAddress;
  UINT8 ExtendedChecksum; // all Length bytes sum to zero
  UINT8 Reserved[3];
} EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER;

///
/// Generic address structure: a register in memory, I/O or configuration space.
///
typedef struct {
  UINT8 AddressSpaceId;
  UINT8 RegisterBitWidth;
  UINT8 RegisterBitOffset;
  UINT8 AccessSize;
  UINT64 Address;
} EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE;

typedef EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE EFI_ACPI_3_0_GENERIC_ADDRESS_STRUCTURE;

///
/// Fixed ACPI description table as of ACPI 2.0 (244 bytes). An ACPI 1.0 FADT
/// ends after Flags (116 bytes); later revisions append fields after XGpe1Blk.
/// Only the fields up to the table's Length exist.
///
typedef struct {
  EFI_ACPI_DESCRIPTION_HEADER Header;
  UINT32 FirmwareCtrl;
  UINT32 Dsdt;
  UINT8 Reserved0;
  UINT8 PreferredPmProfile;
  UINT16 SciInt;
  UINT32 SmiCmd;
  UINT8 AcpiEnable;
  UINT8 AcpiDisable;
  UINT8 S4BiosReq;
  UINT8 PstateCnt;
  UINT32 Pm1aEvtBlk;
  UINT32 Pm1bEvtBlk;
  UINT32 Pm1aCntBlk;
  UINT32 Pm1bCntBlk;
  UINT32 Pm2CntBlk;
  UINT32 PmTmrBlk;
  UINT32 Gpe0Blk;
  UINT32 Gpe1Blk;
  UINT8 Pm1EvtLen;
  UINT8 Pm1CntLen;
  UINT8 Pm2CntLen;
  UINT8 PmTmrLen;
  UINT8 Gpe0BlkLen;
  UINT8 Gpe1BlkLen;
  UINT8 Gpe1Base;
  UINT8 CstCnt;
  UINT16 PLvl2Lat;
  UINT16 PLvl3Lat;
  UINT16 FlushSize;
  UINT16 FlushStride;
  UINT8 DutyOffset;
  UINT8 DutyWidth;
  UINT8 DayAlrm;
  UINT8 MonAlrm;
  UINT8 Century;
  UINT16 IaPcBootArch;
  UINT8 Reserved1;
  UINT32 Flags;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE ResetReg;
  UINT8 ResetValue;
  UINT8 Reserved2[3];
  UINT64 XFirmwareCtrl;
  UINT64 XDsdt;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XPm1aEvtBlk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XPm1bEvtBlk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XPm1aCntBlk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XPm1bCntBlk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XPm2CntBlk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XPmTmrBlk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XGpe0Blk;
  EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE XGpe1Blk;
} EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE;

#pragma pack()

#define EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_POINTER_SIGNATURE SIGNATURE_64 ('R', 'S', 'D', ' ', 'P', 'T', 'R', ' ')
#define EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER_SIGNATURE SIGNATURE_64 ('R', 'S', 'D', ' ', 'P', 'T', 'R', ' ')
#define EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER_REVISION 0x02
#define EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_TABLE_SIGNATURE SIGNATURE_32 ('R', 'S', 'D', 'T')
#define EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_TABLE_SIGNATURE SIGNATURE_32 ('R', 'S', 'D', 'T')
#define EFI_ACPI_2_0_EXTENDED_SYSTEM_DESCRIPTION_TABLE_SIGNATURE SIGNATURE_32 ('X', 'S', 'D', 'T')
#define EFI_ACPI_1_0_FIXED_ACPI_DESCRIPTION_TABLE_SIGNATURE SIGNATURE_32 ('F', 'A', 'C', 'P')
#define EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE_SIGNATURE SIGNATURE_32 ('F', 'A', 'C', 'P')

///
/// FADT Flags: the PM timer counts 32 bits rather than 24.
///
#define EFI_ACPI_2_0_TMR_VAL_EXT BIT8

///
/// Address space identifiers of a generic address structure.
///
#define EFI_ACPI_2_0_SYSTEM_MEMORY 0
#define EFI_ACPI_2_0_SYSTEM_IO 1

STATIC_ASSERT (sizeof (EFI_ACPI_DESCRIPTION_HEADER) == 36, "ACPI table header");
STATIC_ASSERT (sizeof (EFI_ACPI_1_0_ROOT_SYSTEM_DESCRIPTION_POINTER) == 20, "ACPI 1.0 RSDP");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Revision) == 15, "RSDP revision");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, RsdtAddress) == 16, "RSDP RSDT address");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, Length) == 20, "RSDP length");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER, XsdtAddress) == 24, "RSDP XSDT address");
STATIC_ASSERT (sizeof (EFI_ACPI_2_0_ROOT_SYSTEM_DESCRIPTION_POINTER) == 36, "ACPI 2.0 RSDP");
STATIC_ASSERT (sizeof (EFI_ACPI_2_0_GENERIC_ADDRESS_STRUCTURE) == 12, "generic address structure");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, PmTmrBlk) == 76, "FADT PM_TMR_BLK");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, PmTmrLen) == 91, "FADT PM_TMR_LEN");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, IaPcBootArch) == 109, "FADT IAPC_BOOT_ARCH");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, Flags) == 112, "FADT Flags");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, ResetReg) == 116, "FADT RESET_REG");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, XFirmwareCtrl) == 132, "FADT X_FIRMWARE_CTRL");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, XPm1aEvtBlk) == 148, "FADT X_PM1a_EVT_BLK");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, XPmTmrBlk) == 208, "FADT X_PM_TMR_BLK");
STATIC_ASSERT (OFFSET_OF (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE, XGpe1Blk) == 232, "FADT X_GPE1_BLK");
STATIC_ASSERT (sizeof (EFI_ACPI_2_0_FIXED_ACPI_DESCRIPTION_TABLE) == 244, "ACPI 2.0 FADT");

#endif
