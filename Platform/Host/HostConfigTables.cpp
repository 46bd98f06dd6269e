/** @file
  Simulated configuration tables.
**/
#include "HostConfigTables.h"

#include "HostGuid.h"
#include "HostPlatform.h"

VOID *
HostConfigTables::Find (const EFI_GUID &Guid) const
{
  for (const EFI_CONFIGURATION_TABLE &Entry : mTables) {
    if (HostGuidEqual (Entry.VendorGuid, Guid)) {
      return Entry.VendorTable;
    }
  }

  return nullptr;
}

UINTN
HostConfigTables::Count () const
{
  return mTables.size ();
}

EFI_STATUS
HostConfigTables::Install (const EFI_GUID &Guid, VOID *Table)
{
  //
  // A new array for every change, as the firmware reallocates its own.
  //
  std::vector<EFI_CONFIGURATION_TABLE> Next;
  bool Found = false;

  Next.reserve (mTables.size () + 1);
  for (const EFI_CONFIGURATION_TABLE &Entry : mTables) {
    if (!HostGuidEqual (Entry.VendorGuid, Guid)) {
      Next.push_back (Entry);
    } else {
      Found = true;
      if (Table != nullptr) {
        Next.push_back (EFI_CONFIGURATION_TABLE{Guid, Table});
      }
    }
  }

  if (!Found) {
    if (Table == nullptr) {
      return EFI_NOT_FOUND;
    }

    Next.push_back (EFI_CONFIGURATION_TABLE{Guid, Table});
  }

  mTables = std::move (Next);
  EFI_SYSTEM_TABLE *SystemTable = mPlatform.SystemTable ();
  SystemTable->NumberOfTableEntries = mTables.size ();
  SystemTable->ConfigurationTable = mTables.empty () ? nullptr : mTables.data ();
  mPlatform.UpdateSystemTableCrc ();
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostConfigTables::InstallConfigurationTableService (IN EFI_GUID *Guid, IN VOID *Table)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::InstallConfigurationTable, Guid)) {
    return *Failure;
  }

  if (Guid == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  return Platform.ConfigTables ().Install (*Guid, Table);
}

VOID
HostConfigTables::Publish (EFI_BOOT_SERVICES &BootServices)
{
  BootServices.InstallConfigurationTable = InstallConfigurationTableService;
}
