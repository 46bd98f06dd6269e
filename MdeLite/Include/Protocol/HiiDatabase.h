/** @file
  HII database protocol.
**/
#ifndef MDE_LITE_HII_DATABASE_H_
#define MDE_LITE_HII_DATABASE_H_

#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

#define EFI_HII_DATABASE_PROTOCOL_GUID                                                                                 \
  {                                                                                                                    \
    0xef9fc172, 0xa1b2, 0x4693,                                                                                        \
    {                                                                                                                  \
      0xb3, 0x27, 0x6d, 0x32, 0xfc, 0x41, 0x60, 0x42                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_HII_DATABASE_PROTOCOL EFI_HII_DATABASE_PROTOCOL;

typedef EFI_STATUS (EFIAPI *EFI_HII_DATABASE_NEW_PACK) (IN CONST EFI_HII_DATABASE_PROTOCOL *This,
                                                        IN CONST EFI_HII_PACKAGE_LIST_HEADER *PackageList,
                                                        IN EFI_HANDLE DriverHandle OPTIONAL,
                                                        OUT EFI_HII_HANDLE *Handle);

typedef EFI_STATUS (EFIAPI *EFI_HII_DATABASE_REMOVE_PACK) (IN CONST EFI_HII_DATABASE_PROTOCOL *This,
                                                           IN EFI_HII_HANDLE Handle);

struct _EFI_HII_DATABASE_PROTOCOL {
  EFI_HII_DATABASE_NEW_PACK NewPackageList;
  EFI_HII_DATABASE_REMOVE_PACK RemovePackageList;
  VOID *UpdatePackageList;
  VOID *ListPackageLists;
  VOID *ExportPackageLists;
  VOID *RegisterPackageNotify;
  VOID *UnregisterPackageNotify;
  VOID *FindKeyboardLayouts;
  VOID *GetKeyboardLayout;
  VOID *SetKeyboardLayout;
  VOID *GetPackageListHandle;
};

extern EFI_GUID gEfiHiiDatabaseProtocolGuid;

#endif
