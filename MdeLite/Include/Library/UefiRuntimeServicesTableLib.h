/** @file
  The runtime services table of the running image.
**/
#ifndef MDE_LITE_UEFI_RUNTIME_SERVICES_TABLE_LIB_H_
#define MDE_LITE_UEFI_RUNTIME_SERVICES_TABLE_LIB_H_

#include <Uefi.h>

extern EFI_RUNTIME_SERVICES *gRT;

#endif
