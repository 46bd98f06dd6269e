/** @file
  The package lists of the host HII database, shared by its database and
  string protocols.
**/
#ifndef HOST_HII_STORE_H_
#define HOST_HII_STORE_H_

#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

#include <vector>

struct HOST_HII_PACKAGE_LIST {
  EFI_HANDLE DriverHandle;
  std::vector<UINT8> Bytes; ///< the whole list, header to end package
};

/** @return the package list registered under Handle, or null. **/
const HOST_HII_PACKAGE_LIST *HostHiiFindList (EFI_HII_HANDLE Handle);

/**
  Walks the packages of a checked list.

  @param[in]  List    The list.
  @param[in]  Offset  Offset of a package in the list; start with sizeof (EFI_HII_PACKAGE_LIST_HEADER).
  @param[out] Header  The package's header.

  @return false at the end package or at the end of the list.
**/
bool HostHiiPackageAt (const HOST_HII_PACKAGE_LIST &List, UINTN Offset, EFI_HII_PACKAGE_HEADER *Header);

/** Forgets every package list, the call count and any failure set for NewPackageList. **/
VOID HostHiiForgetPackageLists (VOID);

#endif
