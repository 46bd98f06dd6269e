/** @file
  Registration of the driver's resources: the string packages go to the HII
  database as one package list, the logo's image package to the UI framework.
**/
#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
}
#include <Protocol/FlashUpdatePage.h>

#include "UiResources.h"

EFI_HII_HANDLE
RegisterPackageArray (IN EFI_HII_DATABASE_PROTOCOL *HiiDatabase,
                      IN EFI_HANDLE DriverHandle,
                      IN CONST VOID *PackageArray OPTIONAL)
{
  UINT32 ArrayLength = 0;
  UINTN PackagesSize;
  UINTN ListSize;
  UINT8 *List;
  EFI_HII_PACKAGE_LIST_HEADER ListHeader;
  EFI_HII_PACKAGE_HEADER EndPackage;
  EFI_HII_HANDLE HiiHandle = nullptr;
  EFI_STATUS Status;

  if ((HiiDatabase == nullptr) || (HiiDatabase->NewPackageList == nullptr) || (PackageArray == nullptr)) {
    return nullptr;
  }

  // The length counts itself; the packages follow it.
  CopyMem (&ArrayLength, PackageArray, sizeof (ArrayLength));
  if ((ArrayLength <= sizeof (ArrayLength)) ||
      (ArrayLength > MAX_UINT32 - sizeof (EFI_HII_PACKAGE_LIST_HEADER) - sizeof (EFI_HII_PACKAGE_HEADER))) {
    return nullptr;
  }

  PackagesSize = ArrayLength - sizeof (ArrayLength);
  ListSize = sizeof (EFI_HII_PACKAGE_LIST_HEADER) + PackagesSize + sizeof (EFI_HII_PACKAGE_HEADER);
  List = (UINT8 *)AllocateZeroPool (ListSize);
  if (List == nullptr) {
    return nullptr;
  }

  ListHeader.PackageListGuid = gFlashUpdatePageProtocolGuid;
  ListHeader.PackageLength = (UINT32)ListSize;
  EndPackage.Length = sizeof (EFI_HII_PACKAGE_HEADER);
  EndPackage.Type = EFI_HII_PACKAGE_END;

  CopyMem (List, &ListHeader, sizeof (ListHeader));
  CopyMem (List + sizeof (ListHeader), (CONST UINT8 *)PackageArray + sizeof (ArrayLength), PackagesSize);
  CopyMem (List + sizeof (ListHeader) + PackagesSize, &EndPackage, sizeof (EndPackage));

  Status = HiiDatabase->NewPackageList (HiiDatabase, (EFI_HII_PACKAGE_LIST_HEADER *)List, DriverHandle, &HiiHandle);
  FreePool (List);
  return EFI_ERROR (Status) ? nullptr : HiiHandle;
}

EFI_HII_HANDLE
RegisterUiStringPackages (IN EFI_HII_DATABASE_PROTOCOL *HiiDatabase, IN EFI_HANDLE DriverHandle)
{
  return RegisterPackageArray (HiiDatabase, DriverHandle, &UserInterfaceStrings);
}

VOID
HandOverImagePackage (IN UI_FRAMEWORK_PROTOCOL *Framework OPTIONAL)
{
  if ((Framework == nullptr) || (Framework->Pages == nullptr) || (Framework->Pages->AddImagePackage == nullptr)) {
    return;
  }

  // The framework only reads the package.
  Framework->Pages->AddImagePackage ((VOID *)&UserInterfaceImagePackage, sizeof (UserInterfaceImagePackage),
                                     &gUiDriverComponentGuid, 0);
}
