/** @file
  Finding a package list in the firmware's HII database by its list GUID.
**/
#ifndef OVMF_HII_LOOKUP_H_
#define OVMF_HII_LOOKUP_H_

#include <Protocol/HiiDatabase.h>

/**
  Searches every package list of the HII database for those whose list header
  carries ListGuid.

  @param[in]  Database  The firmware's HII database.
  @param[in]  ListGuid  The package-list GUID to look for.
  @param[out] Handle    HII handle of the first list found; null when none is.
  @param[out] Count     Number of lists that carry ListGuid.

  @retval EFI_SUCCESS           The database was searched; Count may be 0.
  @retval EFI_OUT_OF_RESOURCES  No pool for the handle list or an exported list.
  @return Any other error of ListPackageLists or ExportPackageLists.
**/
EFI_STATUS
FindPackageListByGuid (IN CONST EFI_HII_DATABASE_PROTOCOL *Database,
                       IN CONST EFI_GUID *ListGuid,
                       OUT EFI_HII_HANDLE *Handle,
                       OUT UINTN *Count);

#endif
