/** @file
  The list of module identification records and its hand-over to the module
  registry, which may be installed after this driver.
**/
extern "C" {
#include <Library/BaseLib.h>
#include <Library/MemoryAllocationLib.h>
}
#include <Library/ModuleInfoLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/ModuleRegistry.h>

STATIC EFI_EVENT mRegistryEvent = nullptr;
STATIC VOID *mRegistryRegistration = nullptr;

LIST_ENTRY *EFIAPI
CreateModuleInfoList (VOID)
{
  LIST_ENTRY *ListHead = (LIST_ENTRY *)AllocatePool (sizeof (LIST_ENTRY));

  if (ListHead != nullptr) {
    InitializeListHead (ListHead);
  }

  return ListHead;
}

EFI_STATUS
EFIAPI
AddModuleInfo (IN LIST_ENTRY *ListHead, IN UINT8 Kind, IN EFI_HANDLE ImageHandle, IN CONST MODULE_INFO_BLOB *Blob)
{
  MODULE_INFO_LIST_ENTRY *Entry;

  if ((ListHead == nullptr) || (Blob == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  Entry = (MODULE_INFO_LIST_ENTRY *)AllocatePool (sizeof (MODULE_INFO_LIST_ENTRY));
  if (Entry == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Entry->Kind = Kind;
  Entry->ImageHandle = ImageHandle;
  Entry->BlobLength = Blob->Length;
  Entry->Blob = Blob->Bytes;

  //
  // The registry reads the driver's own record first.
  //
  if (Kind == MODULE_KIND_DRIVER) {
    InsertHeadList (ListHead, &Entry->Link);
  } else {
    InsertTailList (ListHead, &Entry->Link);
  }

  return EFI_SUCCESS;
}

/**
  Hands the list over once the registry is installed, then closes its own event.
**/
STATIC
VOID EFIAPI
ModuleRegistryNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  MODULE_REGISTRY_PROTOCOL *Registry = nullptr;

  if (EFI_ERROR (gBS->LocateProtocol (&gModuleRegistryProtocolGuid, nullptr, (VOID **)&Registry)) ||
      (Registry == nullptr)) {
    return;
  }

  Registry->Register (Registry, (LIST_ENTRY *)Context);
  gBS->CloseEvent (Event);
  mRegistryEvent = nullptr;
}

VOID EFIAPI
RegisterModuleInfoList (IN LIST_ENTRY *ListHead)
{
  MODULE_REGISTRY_PROTOCOL *Registry = nullptr;

  if (ListHead == nullptr) {
    return;
  }

  if (!EFI_ERROR (gBS->LocateProtocol (&gModuleRegistryProtocolGuid, nullptr, (VOID **)&Registry)) &&
      (Registry != nullptr)) {
    Registry->Register (Registry, ListHead);
    return;
  }

  if (EFI_ERROR (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, ModuleRegistryNotify, ListHead, &mRegistryEvent))) {
    mRegistryEvent = nullptr;
    return;
  }

  if (EFI_ERROR (gBS->RegisterProtocolNotify (&gModuleRegistryProtocolGuid, mRegistryEvent, &mRegistryRegistration))) {
    gBS->CloseEvent (mRegistryEvent);
    mRegistryEvent = nullptr;
  }
}

VOID EFIAPI
UnregisterModuleInfoList (IN LIST_ENTRY *ListHead)
{
  MODULE_REGISTRY_PROTOCOL *Registry = nullptr;

  if (ListHead == nullptr) {
    return;
  }

  if (!EFI_ERROR (gBS->LocateProtocol (&gModuleRegistryProtocolGuid, nullptr, (VOID **)&Registry)) &&
      (Registry != nullptr)) {
    Registry->Unregister (Registry, ListHead);
  }
}

VOID EFIAPI
DestroyModuleInfoList (IN LIST_ENTRY *ListHead)
{
  if (mRegistryEvent != nullptr) {
    gBS->CloseEvent (mRegistryEvent);
    mRegistryEvent = nullptr;
  }

  if (ListHead == nullptr) {
    return;
  }

  while (!IsListEmpty (ListHead)) {
    LIST_ENTRY *Link = ListHead->ForwardLink;

    RemoveEntryList (Link);
    FreePool (Link);
  }

  FreePool (ListHead);
}
