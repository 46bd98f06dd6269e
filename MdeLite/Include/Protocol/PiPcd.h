/** @file
  The PI platform configuration database protocol (EFI_PCD_PROTOCOL).
**/
#ifndef MDE_LITE_PI_PCD_H_
#define MDE_LITE_PI_PCD_H_

#include <Uefi.h>

#define EFI_PCD_PROTOCOL_GUID                                                                                          \
  {                                                                                                                    \
    0x13a3f0f6, 0x264a, 0x3ef0,                                                                                        \
    {                                                                                                                  \
      0xf2, 0xe0, 0xde, 0xc5, 0x12, 0x34, 0x2f, 0x34                                                                   \
    }                                                                                                                  \
  }

typedef VOID (EFIAPI *EFI_PCD_PROTOCOL_SET_SKU) (IN UINTN SkuId);
typedef UINT8 (EFIAPI *EFI_PCD_PROTOCOL_GET_8) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);
typedef UINT16 (EFIAPI *EFI_PCD_PROTOCOL_GET_16) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);
typedef UINT32 (EFIAPI *EFI_PCD_PROTOCOL_GET_32) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);
typedef UINT64 (EFIAPI *EFI_PCD_PROTOCOL_GET_64) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);
typedef VOID *(EFIAPI *EFI_PCD_PROTOCOL_GET_POINTER) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);
typedef BOOLEAN (EFIAPI *EFI_PCD_PROTOCOL_GET_BOOLEAN) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);
typedef UINTN (EFIAPI *EFI_PCD_PROTOCOL_GET_SIZE) (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber);

typedef struct {
  EFI_PCD_PROTOCOL_SET_SKU SetSku;
  EFI_PCD_PROTOCOL_GET_8 Get8;
  EFI_PCD_PROTOCOL_GET_16 Get16;
  EFI_PCD_PROTOCOL_GET_32 Get32;
  EFI_PCD_PROTOCOL_GET_64 Get64;
  EFI_PCD_PROTOCOL_GET_POINTER GetPtr;
  EFI_PCD_PROTOCOL_GET_BOOLEAN GetBool;
  EFI_PCD_PROTOCOL_GET_SIZE GetSize;
  VOID *Set8;
  VOID *Set16;
  VOID *Set32;
  VOID *Set64;
  VOID *SetPtr;
  VOID *SetBool;
  VOID *CallbackOnSet;
  VOID *CancelCallback;
  VOID *GetNextToken;
  VOID *GetNextTokenSpace;
} EFI_PCD_PROTOCOL;

STATIC_ASSERT (OFFSET_OF (EFI_PCD_PROTOCOL, GetBool) == 48, "PCD protocol layout");

extern EFI_GUID gEfiPcdProtocolGuid;

#endif
