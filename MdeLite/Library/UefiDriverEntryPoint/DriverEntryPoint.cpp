/** @file
  _ModuleEntryPoint of a driver image. A driver whose entry point fails is
  unloaded by the firmware, so its libraries are torn down first.
**/
extern "C" {
#include <Library/UefiDriverEntryPoint.h>
}

EFI_STATUS
EFIAPI
_ModuleEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  EFI_STATUS Status;

  ProcessLibraryConstructorList (ImageHandle, SystemTable);
  Status = ProcessModuleEntryPointList (ImageHandle, SystemTable);
  if (EFI_ERROR (Status)) {
    ProcessLibraryDestructorList (ImageHandle, SystemTable);
  }

  return Status;
}
