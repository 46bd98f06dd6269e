/** @file
  Boot options read from their variables with every offset checked, found by
  file, and started by LoadImage and StartImage.

  EFI_LOAD_OPTION: UINT32 attributes, UINT16 length of the file path list, the
  description (UCS-2, null-terminated), the file path list, optional data.
**/
#include "LoadOptions.h"

#include "SerialLog.h"

extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
#include <Library/PrintLib.h>
}
#include <Guid/GlobalVariable.h>
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#define LOAD_OPTION_HEADER_SIZE 6 ///< UINT32 attributes, UINT16 file path list length
#define LOAD_OPTION_MAX_SIZE 0x4000

STATIC constexpr auto mBootOrderName = CompileTime::MakeWideString (u"BootOrder");

/**
  @return the size of the device path at Path, end node included, when its
          nodes stay inside Limit bytes and it ends with an end node; else 0.
**/
STATIC
UINTN
CheckedPathSize (IN CONST UINT8 *Path, IN UINTN Limit)
{
  UINTN Offset = 0;

  while (Offset + sizeof (EFI_DEVICE_PATH_PROTOCOL) <= Limit) {
    CONST UINT8 *Node = Path + Offset;
    UINTN Length = (UINTN)Node[2] | ((UINTN)Node[3] << 8);

    if ((Length < sizeof (EFI_DEVICE_PATH_PROTOCOL)) || (Length > Limit - Offset)) {
      return 0;
    }

    Offset += Length;
    if ((Node[0] == END_DEVICE_PATH_TYPE) && (Node[1] == END_ENTIRE_DEVICE_PATH_SUBTYPE)) {
      return Offset;
    }
  }

  return 0;
}

EFI_STATUS
ReadBootOption (IN UINT16 Number, OUT LOAD_OPTION *Option)
{
  CHAR16 Name[16];
  UINT8 *Data;
  UINTN Size = 0;
  UINTN PathListSize;
  UINTN Offset;
  EFI_STATUS Status;

  ZeroMem (Option, sizeof (*Option));
  UnicodeSPrint (Name, sizeof (Name), CompileTime::MakeWideString (u"Boot%04x").Text, Number);
  Status = gRT->GetVariable (Name, &gEfiGlobalVariableGuid, nullptr, &Size, nullptr);
  if (Status != EFI_BUFFER_TOO_SMALL) {
    return EFI_ERROR (Status) ? Status : EFI_COMPROMISED_DATA;
  }

  if ((Size < LOAD_OPTION_HEADER_SIZE + sizeof (CHAR16)) || (Size > LOAD_OPTION_MAX_SIZE)) {
    return EFI_COMPROMISED_DATA;
  }

  Data = (UINT8 *)AllocatePool (Size);
  if (Data == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = gRT->GetVariable (Name, &gEfiGlobalVariableGuid, nullptr, &Size, Data);
  if (EFI_ERROR (Status)) {
    FreePool (Data);
    return Status;
  }

  //
  // The description ends at the first null on a character boundary.
  //
  Offset = LOAD_OPTION_HEADER_SIZE;
  while ((Offset + sizeof (CHAR16) <= Size) && ((Data[Offset] | Data[Offset + 1]) != 0)) {
    Offset += sizeof (CHAR16);
  }

  PathListSize = (UINTN)Data[4] | ((UINTN)Data[5] << 8);
  if ((Offset + sizeof (CHAR16) > Size) || (PathListSize > Size - Offset - sizeof (CHAR16))) {
    FreePool (Data);
    return EFI_COMPROMISED_DATA;
  }

  Offset += sizeof (CHAR16);
  Option->FilePathSize = CheckedPathSize (Data + Offset, PathListSize);
  if (Option->FilePathSize == 0) {
    FreePool (Data);
    return EFI_COMPROMISED_DATA;
  }

  Option->Buffer = Data;
  Option->Number = Number;
  Option->Attributes = (UINT32)Data[0] | ((UINT32)Data[1] << 8) | ((UINT32)Data[2] << 16) | ((UINT32)Data[3] << 24);
  Option->Description = (CONST CHAR16 *)(Data + LOAD_OPTION_HEADER_SIZE);
  Option->FilePath = (EFI_DEVICE_PATH_PROTOCOL *)(Data + Offset);
  return EFI_SUCCESS;
}

VOID
FreeLoadOption (IN OUT LOAD_OPTION *Option)
{
  if (Option->Buffer != nullptr) {
    FreePool (Option->Buffer);
  }

  ZeroMem (Option, sizeof (*Option));
}

UINTN
ReadBootOrder (OUT UINT16 *Order, IN UINTN Capacity)
{
  UINTN Size = Capacity * sizeof (UINT16);

  if (EFI_ERROR (gRT->GetVariable ((CHAR16 *)mBootOrderName.Text, &gEfiGlobalVariableGuid, nullptr, &Size, Order))) {
    return 0;
  }

  return Size / sizeof (UINT16);
}

/**
  @return TRUE when the last node of Option's path names the firmware-volume file File.
**/
STATIC
BOOLEAN
StartsFile (IN CONST LOAD_OPTION *Option, IN CONST EFI_GUID *File)
{
  CONST UINT8 *Path = (CONST UINT8 *)Option->FilePath;
  CONST UINT8 *Last = nullptr;
  UINTN Offset = 0;

  //
  // CheckedPathSize has walked these nodes already: each one fits.
  //
  while (Path[Offset] != END_DEVICE_PATH_TYPE) {
    Last = Path + Offset;
    Offset += (UINTN)Path[Offset + 2] | ((UINTN)Path[Offset + 3] << 8);
  }

  return (Last != nullptr) && (Last[0] == MEDIA_DEVICE_PATH) && (Last[1] == MEDIA_PIWG_FW_FILE_DP) &&
         ((UINTN)(Path + Offset - Last) == sizeof (MEDIA_FW_VOL_FILEPATH_DEVICE_PATH)) &&
         CompareGuid (&((CONST MEDIA_FW_VOL_FILEPATH_DEVICE_PATH *)Last)->FvFileName, File);
}

EFI_STATUS
FindBootOptionOfFile (IN CONST EFI_GUID *File, OUT UINT16 *Number)
{
  UINT16 Order[64];
  UINTN Count = ReadBootOrder (Order, ARRAY_SIZE (Order));

  for (UINTN Index = 0; Index < Count; Index++) {
    LOAD_OPTION Option;
    BOOLEAN Found;

    if (EFI_ERROR (ReadBootOption (Order[Index], &Option))) {
      continue;
    }

    Found = StartsFile (&Option, File);
    FreeLoadOption (&Option);
    if (Found) {
      *Number = Order[Index];
      return EFI_SUCCESS;
    }
  }

  return EFI_NOT_FOUND;
}

EFI_STATUS
StartBootOption (IN UINT16 Number)
{
  LOAD_OPTION Option;
  EFI_HANDLE Image = nullptr;
  EFI_STATUS Status;

  Status = ReadBootOption (Number, &Option);
  if (EFI_ERROR (Status)) {
    SerialLogLine ("KESTUI-BOOT Boot%04x unreadable: %r", (UINT32)Number, Status);
    return Status;
  }

  Status = gBS->LoadImage (FALSE, gImageHandle, Option.FilePath, nullptr, 0, &Image);
  SerialLogLine ("KESTUI-BOOT Boot%04x \"%s\" loaded: %r", (UINT32)Number, Option.Description, Status);
  if (!EFI_ERROR (Status)) {
    Status = gBS->StartImage (Image, nullptr, nullptr);
    SerialLogLine ("KESTUI-BOOT Boot%04x \"%s\" returned: %r", (UINT32)Number, Option.Description, Status);
  }

  FreeLoadOption (&Option);
  return Status;
}
