/** @file
  The little of UEFI that the TSC publication uses: a system table with
  configuration tables, and boot services with pool (counted, and able to run
  dry) and InstallConfigurationTable (able to fail). It sets gST and gBS for
  its lifetime.
**/
#ifndef KEST_TESTS_MINIMAL_FIRMWARE_H_
#define KEST_TESTS_MINIMAL_FIRMWARE_H_

#include <cstddef>
#include <map>
#include <vector>

#include <Uefi.h>

class MinimalFirmware {
public:
  MinimalFirmware ();
  ~MinimalFirmware ();
  MinimalFirmware (const MinimalFirmware &) = delete;
  MinimalFirmware &operator= (const MinimalFirmware &) = delete;

  /// Pool buffers allocated and not freed.
  size_t
  OutstandingPool () const
  {
    return mPool.size ();
  }

  /// Size of the outstanding pool buffer at Buffer, or 0 when there is none.
  size_t PoolSize (const void *Buffer) const;

  /// FreePool calls with a pointer that pool did not hand out.
  size_t
  BadFrees () const
  {
    return mBadFrees;
  }

  /// @return the table installed under Guid, or nullptr.
  void *FindTable (const EFI_GUID &Guid) const;

  size_t
  TableCount () const
  {
    return mTables.size ();
  }

  /// InstallConfigurationTable calls so far.
  size_t
  InstallCalls () const
  {
    return mInstallCalls;
  }

  bool FailAllocations = false;
  EFI_STATUS InstallResult = EFI_SUCCESS; // a failure here is returned, and nothing changes

private:
  static EFI_STATUS EFIAPI AllocatePool (EFI_MEMORY_TYPE Type, UINTN Size, VOID **Buffer);
  static EFI_STATUS EFIAPI FreePool (VOID *Buffer);
  static EFI_STATUS EFIAPI InstallConfigurationTable (EFI_GUID *Guid, VOID *Table);
  void Publish ();

  static MinimalFirmware *mCurrent;

  EFI_SYSTEM_TABLE mSystemTable = {};
  EFI_BOOT_SERVICES mBootServices = {};
  std::vector<EFI_CONFIGURATION_TABLE> mTables;
  std::map<const void *, size_t> mPool;
  size_t mBadFrees = 0;
  size_t mInstallCalls = 0;
};

#endif
