/** @file
  Configuration-table GUID of the ACPI 2.0+ root pointer.
**/
#ifndef MDE_LITE_ACPI_GUID_H_
#define MDE_LITE_ACPI_GUID_H_

#include <Uefi.h>

#define EFI_ACPI_20_TABLE_GUID                                                                                         \
  {                                                                                                                    \
    0x8868e871, 0xe4f1, 0x11d3,                                                                                        \
    {                                                                                                                  \
      0xbc, 0x22, 0x00, 0x80, 0xc7, 0x3c, 0x88, 0x81                                                                   \
    }                                                                                                                  \
  }

extern EFI_GUID gEfiAcpi20TableGuid;

#endif
