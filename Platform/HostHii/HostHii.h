/** @file
  A host HII database for tests: EFI_HII_DATABASE_PROTOCOL (NewPackageList,
  RemovePackageList) and EFI_HII_STRING_PROTOCOL (GetString) installed through
  gBS on a handle of their own, as the firmware's HII driver would publish them.

  Package lists come from the code under test: each is checked against its own
  length before it is copied, and nothing is read beyond it. The copies live in
  host memory, outside the simulated pool, so that pool accounting sees only
  the code under test.
**/
#ifndef HOST_HII_H_
#define HOST_HII_H_

#include <Protocol/HiiDatabase.h>
#include <Protocol/HiiString.h>
#include <Uefi.h>

/**
  Installs both protocols on a new handle through gBS, with an empty database.

  @retval EFI_SUCCESS          Installed.
  @retval EFI_NOT_READY        gBS is not set.
  @retval EFI_ALREADY_STARTED  Installed already.
  @return the status of a failed installation (nothing stays installed).
**/
EFI_STATUS
InstallHostHii (VOID);

/**
  Uninstalls both protocols and forgets every package list, the call count
  and any failure set with HostHiiFailNewPackageList.

  @retval EFI_NOT_STARTED  Not installed.
  @return the status of the first failed uninstallation, else EFI_SUCCESS.
**/
EFI_STATUS
UninstallHostHii (VOID);

/** @return the database protocol record (also usable without installing it). **/
EFI_HII_DATABASE_PROTOCOL *HostHiiDatabase (VOID);

/** @return the string protocol record (also usable without installing it). **/
EFI_HII_STRING_PROTOCOL *HostHiiString (VOID);

/**
  Makes every later NewPackageList fail with Status, without registering
  anything; EFI_SUCCESS makes it work again.
**/
VOID HostHiiFailNewPackageList (IN EFI_STATUS Status);

/** @return how many times NewPackageList was called, failed calls included. **/
UINTN
HostHiiNewPackageListCallCount (VOID);

/** @return how many package lists are registered. **/
UINTN
HostHiiPackageListCount (VOID);

/** @return the registered copy of the package list of Handle, or null. **/
CONST EFI_HII_PACKAGE_LIST_HEADER *HostHiiPackageList (IN EFI_HII_HANDLE Handle);

/** @return the driver handle that the package list of Handle was registered with, or null. **/
EFI_HANDLE
HostHiiDriverHandle (IN EFI_HII_HANDLE Handle);

#endif
