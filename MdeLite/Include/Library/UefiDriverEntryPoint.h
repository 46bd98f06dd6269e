/** @file
  The entry of a driver image: _ModuleEntryPoint runs the libraries'
  constructors, then the module's own entry point. The three Process...
  functions come from the module's build (each module names its entry point).
**/
#ifndef MDE_LITE_UEFI_DRIVER_ENTRY_POINT_H_
#define MDE_LITE_UEFI_DRIVER_ENTRY_POINT_H_

#include <Uefi.h>

/**
  The image's entry: constructors, the module's entry point, and the
  destructors when that entry point fails (the image is unloaded then).

  @return the status of the module's entry point.
**/
EFI_STATUS
EFIAPI
_ModuleEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable);

/** Runs the constructors of the libraries the module links, in dependency order. **/
VOID EFIAPI ProcessLibraryConstructorList (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable);

/** Runs the destructors of the libraries the module links, in reverse order. **/
VOID EFIAPI ProcessLibraryDestructorList (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable);

/** @return the status of the module's own entry point. **/
EFI_STATUS EFIAPI ProcessModuleEntryPointList (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable);

#endif
