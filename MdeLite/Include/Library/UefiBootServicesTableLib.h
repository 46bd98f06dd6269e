/** @file
  The image handle, system table and boot services table of the running image.
**/
#ifndef MDE_LITE_UEFI_BOOT_SERVICES_TABLE_LIB_H_
#define MDE_LITE_UEFI_BOOT_SERVICES_TABLE_LIB_H_

#include <Uefi.h>

extern EFI_HANDLE gImageHandle;
extern EFI_SYSTEM_TABLE *gST;
extern EFI_BOOT_SERVICES *gBS;

#endif
