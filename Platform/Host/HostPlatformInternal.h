/** @file
  Helpers shared by the parts of the host platform; not for tests.
**/
#ifndef HOST_PLATFORM_INTERNAL_H_
#define HOST_PLATFORM_INTERNAL_H_

#include <Uefi.h>

/** @return the UEFI CRC32 (IEEE 802.3, reflected) of Size bytes at Data. **/
UINT32
HostCrc32 (const VOID *Data, UINTN Size);

/** Points every slot of both tables at a function that records an unexpected call. **/
VOID HostPublishUnexpectedServices (EFI_BOOT_SERVICES &BootServices, EFI_RUNTIME_SERVICES &RuntimeServices);

/** Fills the CopyMem, SetMem and CalculateCrc32 slots. **/
VOID HostPublishMemoryServices (EFI_BOOT_SERVICES &BootServices);

#endif
