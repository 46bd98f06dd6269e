/** @file
  The running image's UEFI tables. The entry point fills them in: there are no
  library constructors in this build, since nothing may run before the entry.
**/
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

EFI_HANDLE gImageHandle = nullptr;
EFI_SYSTEM_TABLE *gST = nullptr;
EFI_BOOT_SERVICES *gBS = nullptr;
EFI_RUNTIME_SERVICES *gRT = nullptr;
