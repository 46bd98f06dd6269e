/** @file
  MODULE_REGISTRY_PROTOCOL of the stand-in: keeps the list head that a module
  registers and counts its records, as a platform's module inventory would.
**/
extern "C" {
#include <Library/BaseLib.h>
}
#include <Protocol/ModuleRegistry.h>

#include "ServiceStandInInternal.h"

//
// A list longer than this is taken as broken (a loop) and not counted further.
//
#define STAND_IN_MAX_MODULE_RECORDS 4096

STATIC STAND_IN_SERVICE_SLOT mRegistrySlot;
STATIC STAND_IN_MODULE_REGISTRY mRegistryState;

STATIC
UINTN
CountRecords (IN LIST_ENTRY *ListHead)
{
  UINTN Count = 0;

  for (LIST_ENTRY *Link = ListHead->ForwardLink; (Link != nullptr) && (Link != ListHead); Link = Link->ForwardLink) {
    if (++Count == STAND_IN_MAX_MODULE_RECORDS) {
      break;
    }
  }

  return Count;
}

STATIC
EFI_STATUS
EFIAPI
RegistryRegister (IN MODULE_REGISTRY_PROTOCOL *Registry, IN LIST_ENTRY *ListHead)
{
  (VOID) Registry;
  if (ListHead == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  mRegistryState.Registrations++;
  mRegistryState.ListHead = ListHead;
  mRegistryState.RecordCount = CountRecords (ListHead);
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
RegistryUnregister (IN MODULE_REGISTRY_PROTOCOL *Registry, IN LIST_ENTRY *ListHead)
{
  (VOID) Registry;
  if ((ListHead == nullptr) || (ListHead != mRegistryState.ListHead)) {
    return EFI_NOT_FOUND;
  }

  mRegistryState.Unregistrations++;
  mRegistryState.ListHead = nullptr;
  mRegistryState.RecordCount = 0;
  return EFI_SUCCESS;
}

STATIC MODULE_REGISTRY_PROTOCOL mRegistry = {1, RegistryRegister, RegistryUnregister};

EFI_STATUS
EFIAPI
InstallModuleRegistryStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mRegistrySlot, &gModuleRegistryProtocolGuid, &mRegistry, Handle);
}

EFI_STATUS
EFIAPI
UninstallModuleRegistryStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mRegistrySlot, &gModuleRegistryProtocolGuid, &mRegistry, Handle);
}

VOID
StandInGetModuleRegistry (OUT STAND_IN_MODULE_REGISTRY *State)
{
  *State = mRegistryState;
}
