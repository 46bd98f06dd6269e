/** @file
  The running image's UEFI tables, set by the libraries' constructors before
  the module's entry point runs.
**/
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

EFI_HANDLE gImageHandle = nullptr;
EFI_SYSTEM_TABLE *gST = nullptr;
EFI_BOOT_SERVICES *gBS = nullptr;
EFI_RUNTIME_SERVICES *gRT = nullptr;

/**
  Constructor of the boot-services table library.
  @retval EFI_SUCCESS  Always.
**/
extern "C" EFI_STATUS EFIAPI
UefiBootServicesTableLibConstructor (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  gImageHandle = ImageHandle;
  gST = SystemTable;
  gBS = SystemTable->BootServices;
  return EFI_SUCCESS;
}

/**
  Constructor of the runtime-services table library.
  @retval EFI_SUCCESS  Always.
**/
extern "C" EFI_STATUS EFIAPI
UefiRuntimeServicesTableLibConstructor (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  gRT = SystemTable->RuntimeServices;
  return EFI_SUCCESS;
}
