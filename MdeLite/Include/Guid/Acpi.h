/** @file
  Configuration-table GUIDs of the ACPI root pointer.
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

///
/// Configuration-table GUID of the ACPI 1.0 root pointer, which firmware that
/// predates ACPI 2.0 (or that offers both) publishes.
///
#define ACPI_10_TABLE_GUID                                                                                             \
  {                                                                                                                    \
    0xeb9d2d30, 0x2d88, 0x11d3,                                                                                        \
    {                                                                                                                  \
      0x9a, 0x16, 0x00, 0x90, 0x27, 0x3f, 0xc1, 0x4d                                                                   \
    }                                                                                                                  \
  }

extern EFI_GUID gEfiAcpi20TableGuid;

#endif
