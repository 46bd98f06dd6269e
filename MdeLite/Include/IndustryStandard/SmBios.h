/** @file
  SMBIOS structure header and the system information record (type 1).
**/
#ifndef MDE_LITE_SMBIOS_STANDARD_H_
#define MDE_LITE_SMBIOS_STANDARD_H_

#include <Base.h>

#define SMBIOS_HANDLE_PI_RESERVED 0xFFFE
#define SMBIOS_TYPE_SYSTEM_INFORMATION 1

typedef UINT8 SMBIOS_TYPE;
typedef UINT16 SMBIOS_HANDLE;
typedef UINT8 SMBIOS_TABLE_STRING;

#pragma pack(1)
typedef struct {
  SMBIOS_TYPE Type;
  UINT8 Length;
  SMBIOS_HANDLE Handle;
} SMBIOS_STRUCTURE;

typedef struct {
  SMBIOS_STRUCTURE Hdr;
  SMBIOS_TABLE_STRING Manufacturer;
  SMBIOS_TABLE_STRING ProductName;
  SMBIOS_TABLE_STRING Version;
  SMBIOS_TABLE_STRING SerialNumber;
  GUID Uuid;
  UINT8 WakeUpType;
  SMBIOS_TABLE_STRING SKUNumber;
  SMBIOS_TABLE_STRING Family;
} SMBIOS_TABLE_TYPE1;
#pragma pack()

STATIC_ASSERT (OFFSET_OF (SMBIOS_TABLE_TYPE1, SerialNumber) == 7, "serial-number string number at byte 7");
STATIC_ASSERT (sizeof (SMBIOS_TABLE_TYPE1) == 27, "type 1 formatted area");

#endif
