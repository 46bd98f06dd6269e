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

/** Lists the handles of the package lists that hold a package of PackageType
    (PackageGuid only for EFI_HII_PACKAGE_TYPE_GUID); HandleBufferLength in bytes. **/
typedef EFI_STATUS (EFIAPI *EFI_HII_DATABASE_LIST_PACKS) (IN CONST EFI_HII_DATABASE_PROTOCOL *This,
                                                          IN UINT8 PackageType,
                                                          IN CONST EFI_GUID *PackageGuid OPTIONAL,
                                                          IN OUT UINTN *HandleBufferLength,
                                                          OUT EFI_HII_HANDLE *Handle);

/** Copies a package list (or all of them, with a null Handle) into Buffer; BufferSize in bytes. **/
typedef EFI_STATUS (EFIAPI *EFI_HII_DATABASE_EXPORT_PACKS) (IN CONST EFI_HII_DATABASE_PROTOCOL *This,
                                                            IN EFI_HII_HANDLE Handle OPTIONAL,
                                                            IN OUT UINTN *BufferSize,
                                                            OUT EFI_HII_PACKAGE_LIST_HEADER *Buffer);

/** Returns the driver handle that a package list was registered with. **/
typedef EFI_STATUS (EFIAPI *EFI_HII_DATABASE_GET_PACK_HANDLE) (IN CONST EFI_HII_DATABASE_PROTOCOL *This,
                                                               IN EFI_HII_HANDLE PackageListHandle,
                                                               OUT EFI_HANDLE *DriverHandle);

struct _EFI_HII_DATABASE_PROTOCOL {
  EFI_HII_DATABASE_NEW_PACK NewPackageList;
  EFI_HII_DATABASE_REMOVE_PACK RemovePackageList;
  VOID *UpdatePackageList;
  EFI_HII_DATABASE_LIST_PACKS ListPackageLists;
  EFI_HII_DATABASE_EXPORT_PACKS ExportPackageLists;
  VOID *RegisterPackageNotify;
  VOID *UnregisterPackageNotify;
  VOID *FindKeyboardLayouts;
  VOID *GetKeyboardLayout;
  VOID *SetKeyboardLayout;
  EFI_HII_DATABASE_GET_PACK_HANDLE GetPackageListHandle;
};

STATIC_ASSERT (OFFSET_OF (EFI_HII_DATABASE_PROTOCOL, ListPackageLists) == 0x18, "HII database layout");
STATIC_ASSERT (OFFSET_OF (EFI_HII_DATABASE_PROTOCOL, ExportPackageLists) == 0x20, "HII database layout");
STATIC_ASSERT (OFFSET_OF (EFI_HII_DATABASE_PROTOCOL, GetPackageListHandle) == 0x50, "HII database layout");

extern EFI_GUID gEfiHiiDatabaseProtocolGuid;

#endif
