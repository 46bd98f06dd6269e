/** @file
  Module identification records and the list that hands them to the module
  registry.
**/
#ifndef KEST_MODULE_INFO_LIB_H_
#define KEST_MODULE_INFO_LIB_H_

#include <Uefi.h>

#define MODULE_INFO_RECORD_GUID                                                                                        \
  {                                                                                                                    \
    0x059ef06e, 0xc652, 0x4a45,                                                                                        \
    {                                                                                                                  \
      0x9f, 0xbe, 0x59, 0x75, 0xe3, 0x69, 0x46, 0x1c                                                                   \
    }                                                                                                                  \
  }

#define MODULE_INFO_COMMON_GUID                                                                                        \
  {                                                                                                                    \
    0x7aa80cf5, 0x9185, 0x5271,                                                                                        \
    {                                                                                                                  \
      0xb4, 0x30, 0xd8, 0xbd, 0xfc, 0xaa, 0x9b, 0x90                                                                   \
    }                                                                                                                  \
  }

//
// Entry types of a record: UINT8 type, UINT16 length, then the value.
//
#define MODULE_INFO_TYPE_UINT32 0x01
#define MODULE_INFO_TYPE_UINT16_A 0x03
#define MODULE_INFO_TYPE_UINT16_B 0x04
#define MODULE_INFO_TYPE_STRING 0x06
#define MODULE_INFO_TYPE_COMPONENT_GUID 0x08
#define MODULE_INFO_TYPE_COMMON_GUID 0x0A
#define MODULE_INFO_TYPE_END 0xFF

#define MODULE_KIND_LIBRARY 1
#define MODULE_KIND_DRIVER 2

///
/// One list entry, exactly 37 bytes.
///
#pragma pack(1)
typedef struct {
  LIST_ENTRY Link;
  UINT8 Kind;
  EFI_HANDLE ImageHandle;
  UINT32 BlobLength;
  CONST UINT8 *Blob;
} MODULE_INFO_LIST_ENTRY;
#pragma pack()

STATIC_ASSERT (OFFSET_OF (MODULE_INFO_LIST_ENTRY, Kind) == 16, "module entry layout");
STATIC_ASSERT (OFFSET_OF (MODULE_INFO_LIST_ENTRY, ImageHandle) == 17, "module entry layout");
STATIC_ASSERT (OFFSET_OF (MODULE_INFO_LIST_ENTRY, BlobLength) == 25, "module entry layout");
STATIC_ASSERT (OFFSET_OF (MODULE_INFO_LIST_ENTRY, Blob) == 29, "module entry layout");
STATIC_ASSERT (sizeof (MODULE_INFO_LIST_ENTRY) == 37, "module entry is 37 bytes");

///
/// A record and its length in bytes.
///
typedef struct {
  CONST UINT8 *Bytes;
  UINT32 Length;
} MODULE_INFO_BLOB;

extern CONST MODULE_INFO_BLOB gUiDriverModuleInfo; ///< 85 bytes
extern CONST MODULE_INFO_BLOB gPrintLibModuleInfo; ///< 83 bytes
extern CONST MODULE_INFO_BLOB gTimerLibModuleInfo; ///< 83 bytes

/**
  Creates the module list: a 16-byte list head from boot-services pool.
  @return the head, or null when pool is exhausted.
**/
LIST_ENTRY *EFIAPI CreateModuleInfoList (VOID);

/**
  Adds a record to the list: libraries at the tail, the driver at the head.

  @retval EFI_SUCCESS            The entry was added.
  @retval EFI_INVALID_PARAMETER  ListHead or Blob is null.
  @retval EFI_OUT_OF_RESOURCES   No pool for the entry.
**/
EFI_STATUS
EFIAPI
AddModuleInfo (IN LIST_ENTRY *ListHead, IN UINT8 Kind, IN EFI_HANDLE ImageHandle, IN CONST MODULE_INFO_BLOB *Blob);

/**
  Hands the list to the module registry now, or, when the registry is not
  installed yet, as soon as it is.
**/
VOID EFIAPI RegisterModuleInfoList (IN LIST_ENTRY *ListHead);

/**
  Takes the list back from the registry, if the registry can be located.
**/
VOID EFIAPI UnregisterModuleInfoList (IN LIST_ENTRY *ListHead);

/**
  Releases the list and its entries, and closes a registry notification that is
  still waiting. Used when the image is unloaded.
**/
VOID EFIAPI DestroyModuleInfoList (IN LIST_ENTRY *ListHead);

#endif
