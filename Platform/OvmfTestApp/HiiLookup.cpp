/** @file
  Package-list lookup through the HII database's own list and export
  operations, so that the test sees what the firmware stored, not what the
  driver meant to register.
**/
#include "HiiLookup.h"

extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
}

/**
  Returns the handles of all package lists in a new pool buffer (null and 0
  when the database holds none).
**/
STATIC
EFI_STATUS
ListAllPackageLists (IN CONST EFI_HII_DATABASE_PROTOCOL *Database, OUT EFI_HII_HANDLE **Handles, OUT UINTN *Count)
{
  UINTN Length = 0;
  EFI_STATUS Status;

  *Handles = nullptr;
  *Count = 0;

  Status = Database->ListPackageLists (Database, EFI_HII_PACKAGE_TYPE_ALL, nullptr, &Length, nullptr);
  if (Status == EFI_NOT_FOUND) {
    return EFI_SUCCESS;
  }

  if (Status != EFI_BUFFER_TOO_SMALL) {
    return EFI_ERROR (Status) ? Status : EFI_PROTOCOL_ERROR;
  }

  *Handles = (EFI_HII_HANDLE *)AllocatePool (Length);
  if (*Handles == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = Database->ListPackageLists (Database, EFI_HII_PACKAGE_TYPE_ALL, nullptr, &Length, *Handles);
  if (EFI_ERROR (Status)) {
    FreePool (*Handles);
    *Handles = nullptr;
    return Status;
  }

  *Count = Length / sizeof (EFI_HII_HANDLE);
  return EFI_SUCCESS;
}

/**
  Exports one package list into a reusable pool buffer, which grows when the
  list does not fit, and returns the GUID of its list header.
**/
STATIC
EFI_STATUS
ReadListGuid (IN CONST EFI_HII_DATABASE_PROTOCOL *Database,
              IN EFI_HII_HANDLE Handle,
              IN OUT VOID **Buffer,
              IN OUT UINTN *Capacity,
              OUT EFI_GUID *ListGuid)
{
  UINTN Size = *Capacity;
  EFI_STATUS Status;

  Status = Database->ExportPackageLists (Database, Handle, &Size, (EFI_HII_PACKAGE_LIST_HEADER *)*Buffer);
  if (Status == EFI_BUFFER_TOO_SMALL) {
    if (*Buffer != nullptr) {
      FreePool (*Buffer);
    }

    *Buffer = AllocatePool (Size);
    *Capacity = (*Buffer == nullptr) ? 0 : Size;
    if (*Buffer == nullptr) {
      return EFI_OUT_OF_RESOURCES;
    }

    Status = Database->ExportPackageLists (Database, Handle, &Size, (EFI_HII_PACKAGE_LIST_HEADER *)*Buffer);
  }

  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (Size < sizeof (EFI_HII_PACKAGE_LIST_HEADER)) {
    return EFI_PROTOCOL_ERROR;
  }

  // The header is packed; the GUID is its first member.
  CopyMem (ListGuid, *Buffer, sizeof (*ListGuid));
  return EFI_SUCCESS;
}

EFI_STATUS
FindPackageListByGuid (IN CONST EFI_HII_DATABASE_PROTOCOL *Database,
                       IN CONST EFI_GUID *ListGuid,
                       OUT EFI_HII_HANDLE *Handle,
                       OUT UINTN *Count)
{
  EFI_HII_HANDLE *Handles;
  UINTN HandleCount;
  VOID *Export = nullptr;
  UINTN ExportCapacity = 0;
  EFI_GUID FoundGuid;
  EFI_STATUS Status;

  *Handle = nullptr;
  *Count = 0;

  Status = ListAllPackageLists (Database, &Handles, &HandleCount);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  for (UINTN Index = 0; Index < HandleCount; Index++) {
    Status = ReadListGuid (Database, Handles[Index], &Export, &ExportCapacity, &FoundGuid);
    if (EFI_ERROR (Status)) {
      break;
    }

    if (CompareGuid (&FoundGuid, ListGuid)) {
      if (*Count == 0) {
        *Handle = Handles[Index];
      }

      (*Count)++;
    }
  }

  if (Export != nullptr) {
    FreePool (Export);
  }

  if (Handles != nullptr) {
    FreePool (Handles);
  }

  return Status;
}
