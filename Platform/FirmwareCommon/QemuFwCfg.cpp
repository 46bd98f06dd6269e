/** @file
  QEMU's configuration device through its I/O ports: a 16-bit selector, then
  the selected item's bytes one at a time from the data port. Item 0 holds
  "QEMU"; item 0x19 the file directory: a big-endian count, then per file a
  big-endian size and selector and a name of up to 56 bytes.
**/
#include "QemuFwCfg.h"

extern "C" {
#include <Library/BaseLib.h>
#include <Library/IoLib.h>
#include <Library/MemoryAllocationLib.h>
}

#define FW_CFG_SELECTOR_PORT 0x510
#define FW_CFG_DATA_PORT 0x511
#define FW_CFG_SIGNATURE_ITEM 0x0000
#define FW_CFG_FILE_DIRECTORY_ITEM 0x0019
#define FW_CFG_FILE_NAME_LENGTH 56

STATIC
VOID
SelectItem (IN UINT16 Item)
{
  IoWrite16 (FW_CFG_SELECTOR_PORT, Item);
}

STATIC
VOID
ReadBytes (OUT UINT8 *Buffer, IN UINTN Size)
{
  for (UINTN Index = 0; Index < Size; Index++) {
    Buffer[Index] = IoRead8 (FW_CFG_DATA_PORT);
  }
}

STATIC
UINT32
ReadBigEndian (IN UINTN Size)
{
  UINT8 Bytes[4] = {};
  UINT32 Value = 0;

  ReadBytes (Bytes, Size);
  for (UINTN Index = 0; Index < Size; Index++) {
    Value = (Value << 8) | Bytes[Index];
  }

  return Value;
}

/**
  @return TRUE when the directory entry's name (up to 56 bytes, null-padded) is Name.
**/
STATIC
BOOLEAN
NameMatches (IN CONST CHAR8 *EntryName, IN CONST CHAR8 *Name)
{
  UINTN Length = AsciiStrLen (Name);

  if (Length >= FW_CFG_FILE_NAME_LENGTH) {
    return FALSE;
  }

  for (UINTN Index = 0; Index <= Length; Index++) {
    if (EntryName[Index] != Name[Index]) {
      return FALSE;
    }
  }

  return TRUE;
}

EFI_STATUS
ReadQemuConfigFile (IN CONST CHAR8 *Name, OUT VOID **Buffer, OUT UINTN *Size)
{
  UINT8 Signature[4];
  UINT32 Count;

  *Buffer = nullptr;
  *Size = 0;
  SelectItem (FW_CFG_SIGNATURE_ITEM);
  ReadBytes (Signature, sizeof (Signature));
  if ((Signature[0] != 'Q') || (Signature[1] != 'E') || (Signature[2] != 'M') || (Signature[3] != 'U')) {
    return EFI_UNSUPPORTED;
  }

  SelectItem (FW_CFG_FILE_DIRECTORY_ITEM);
  Count = ReadBigEndian (sizeof (UINT32));
  for (UINT32 Index = 0; Index < Count; Index++) {
    CHAR8 EntryName[FW_CFG_FILE_NAME_LENGTH];
    UINT32 FileSize = ReadBigEndian (sizeof (UINT32));
    UINT16 Item = (UINT16)ReadBigEndian (sizeof (UINT16));

    ReadBigEndian (sizeof (UINT16));
    ReadBytes ((UINT8 *)EntryName, sizeof (EntryName));
    if (!NameMatches (EntryName, Name)) {
      continue;
    }

    if ((FileSize == 0) || (FileSize > QEMU_CONFIG_FILE_MAX_SIZE)) {
      return EFI_BAD_BUFFER_SIZE;
    }

    *Buffer = AllocatePool (FileSize);
    if (*Buffer == nullptr) {
      return EFI_OUT_OF_RESOURCES;
    }

    SelectItem (Item);
    ReadBytes ((UINT8 *)*Buffer, FileSize);
    *Size = FileSize;
    return EFI_SUCCESS;
  }

  return EFI_NOT_FOUND;
}
