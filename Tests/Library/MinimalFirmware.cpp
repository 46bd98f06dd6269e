/** @file
  The minimal UEFI system table and boot services of the TSC tests.
**/
#include "MinimalFirmware.h"

#include <cstdlib>

extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>

MinimalFirmware *MinimalFirmware::mCurrent = nullptr;

MinimalFirmware::MinimalFirmware ()
{
  mBootServices.Hdr.Signature = EFI_BOOT_SERVICES_SIGNATURE;
  mBootServices.AllocatePool = &MinimalFirmware::AllocatePool;
  mBootServices.FreePool = &MinimalFirmware::FreePool;
  mBootServices.InstallConfigurationTable = &MinimalFirmware::InstallConfigurationTable;
  mSystemTable.Hdr.Signature = EFI_SYSTEM_TABLE_SIGNATURE;
  mSystemTable.BootServices = &mBootServices;
  mCurrent = this;
  Publish ();
  gST = &mSystemTable;
  gBS = &mBootServices;
}

MinimalFirmware::~MinimalFirmware ()
{
  for (auto &Entry : mPool) {
    std::free (const_cast<void *> (Entry.first));
  }

  gST = nullptr;
  gBS = nullptr;
  mCurrent = nullptr;
}

size_t
MinimalFirmware::PoolSize (const void *Buffer) const
{
  auto Found = mPool.find (Buffer);
  return Found == mPool.end () ? 0 : Found->second;
}

void *
MinimalFirmware::FindTable (const EFI_GUID &Guid) const
{
  for (const EFI_CONFIGURATION_TABLE &Entry : mTables) {
    if (CompareGuid (&Entry.VendorGuid, &Guid)) {
      return Entry.VendorTable;
    }
  }

  return nullptr;
}

void
MinimalFirmware::Publish ()
{
  mSystemTable.NumberOfTableEntries = mTables.size ();
  mSystemTable.ConfigurationTable = mTables.empty () ? nullptr : mTables.data ();
}

EFI_STATUS EFIAPI
MinimalFirmware::AllocatePool (EFI_MEMORY_TYPE Type, UINTN Size, VOID **Buffer)
{
  if (Buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (mCurrent->FailAllocations) {
    return EFI_OUT_OF_RESOURCES;
  }

  *Buffer = std::malloc (Size == 0 ? 1 : Size);
  mCurrent->mPool[*Buffer] = Size;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
MinimalFirmware::FreePool (VOID *Buffer)
{
  auto Found = mCurrent->mPool.find (Buffer);

  if (Found == mCurrent->mPool.end ()) {
    mCurrent->mBadFrees++;
    return EFI_INVALID_PARAMETER;
  }

  mCurrent->mPool.erase (Found);
  std::free (Buffer);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
MinimalFirmware::InstallConfigurationTable (EFI_GUID *Guid, VOID *Table)
{
  MinimalFirmware *Firmware = mCurrent;

  Firmware->mInstallCalls++;
  if (Guid == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (EFI_ERROR (Firmware->InstallResult)) {
    return Firmware->InstallResult;
  }

  for (auto Entry = Firmware->mTables.begin (); Entry != Firmware->mTables.end (); ++Entry) {
    if (CompareGuid (&Entry->VendorGuid, Guid)) {
      if (Table == nullptr) {
        Firmware->mTables.erase (Entry);
      } else {
        Entry->VendorTable = Table;
      }

      Firmware->Publish ();
      return EFI_SUCCESS;
    }
  }

  if (Table == nullptr) {
    return EFI_NOT_FOUND;
  }

  Firmware->mTables.push_back ({*Guid, Table});
  Firmware->Publish ();
  return EFI_SUCCESS;
}
