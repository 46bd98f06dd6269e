/** @file
  _ModuleEntryPoint of an application image: an application is unloaded when
  its entry point returns, so its libraries are always torn down.
**/
extern "C" {
#include <Library/UefiApplicationEntryPoint.h>
}

EFI_STATUS
EFIAPI
_ModuleEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  EFI_STATUS Status;

  ProcessLibraryConstructorList (ImageHandle, SystemTable);
  Status = ProcessModuleEntryPointList (ImageHandle, SystemTable);
  ProcessLibraryDestructorList (ImageHandle, SystemTable);
  return Status;
}
