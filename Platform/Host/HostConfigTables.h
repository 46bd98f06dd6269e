/** @file
  Simulated configuration tables: InstallConfigurationTable adds, replaces and
  (with a null table) removes entries, and keeps the system table's
  ConfigurationTable and NumberOfTableEntries (and its CRC) current. Like the
  firmware's, the array moves when it changes: a copy of the old pointer dangles.
**/
#ifndef HOST_CONFIG_TABLES_H_
#define HOST_CONFIG_TABLES_H_

#include <vector>

#include <Uefi.h>

class HostPlatform;

class HostConfigTables {
public:
  explicit HostConfigTables (HostPlatform &Platform) : mPlatform (Platform)
  {}

  HostConfigTables (const HostConfigTables &) = delete;
  HostConfigTables &operator= (const HostConfigTables &) = delete;

  /** @return the table installed for Guid, or null. **/
  VOID *Find (const EFI_GUID &Guid) const;

  /** @return how many tables are installed. **/
  UINTN Count () const;

  //
  // Used by the platform.
  //

  VOID Publish (EFI_BOOT_SERVICES &BootServices);

private:
  static EFI_STATUS EFIAPI InstallConfigurationTableService (IN EFI_GUID *Guid, IN VOID *Table);

  EFI_STATUS Install (const EFI_GUID &Guid, VOID *Table);

  HostPlatform &mPlatform;
  std::vector<EFI_CONFIGURATION_TABLE> mTables; ///< a fresh array after every change
};

#endif
