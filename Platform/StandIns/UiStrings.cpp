/** @file
  The string table of the UI framework stand-in: GetString through the HII
  string protocol, with a copy per (HII handle, string id) that callers keep
  using and never free; the copies go at uninstall.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/HiiString.h>

#include "StandInInternal.h"

STATIC CONST CHAR8 mLanguage[] = "en-US";

///
/// Room for most strings at the first try; longer ones are asked for again.
///
#define FIRST_TRY_CHARACTERS 64

STATIC
STAND_IN_STRING *
FindCachedString (IN EFI_HII_HANDLE HiiHandle, IN EFI_STRING_ID StringId)
{
  for (UINTN Index = 0; Index < gStandInFramework.StringCount; Index++) {
    STAND_IN_STRING *Entry = &gStandInFramework.Strings[Index];

    if ((Entry->HiiHandle == HiiHandle) && (Entry->StringId == StringId)) {
      return Entry;
    }
  }

  return nullptr;
}

/**
  Reads a string from HII into a new pool buffer, terminated whatever HII wrote.
**/
STATIC
EFI_STATUS
ReadHiiString (IN EFI_HII_HANDLE HiiHandle, IN EFI_STRING_ID StringId, OUT CHAR16 **String)
{
  EFI_HII_STRING_PROTOCOL *HiiString = nullptr;
  CHAR16 FirstTry[FIRST_TRY_CHARACTERS];
  CHAR16 *Buffer;
  UINTN Size;
  EFI_STATUS Status;

  Status = gBS->LocateProtocol (&gEfiHiiStringProtocolGuid, nullptr, (VOID **)&HiiString);
  if (EFI_ERROR (Status) || (HiiString == nullptr) || (HiiString->GetString == nullptr)) {
    return EFI_ERROR (Status) ? Status : EFI_NOT_FOUND;
  }

  Size = sizeof (FirstTry);
  Status = HiiString->GetString (HiiString, mLanguage, HiiHandle, StringId, FirstTry, &Size, nullptr);
  if ((Status != EFI_BUFFER_TOO_SMALL) && EFI_ERROR (Status)) {
    return Status;
  }

  if (!EFI_ERROR (Status) && (Size > sizeof (FirstTry))) {
    Size = sizeof (FirstTry);
  }

  if ((Size < sizeof (CHAR16)) || (Size > STAND_IN_MAX_TEXT * sizeof (CHAR16))) {
    return EFI_NOT_FOUND;
  }

  Size &= ~(UINTN)1;
  Buffer = (CHAR16 *)AllocatePool (Size + sizeof (CHAR16));
  if (Buffer == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  if (Status == EFI_BUFFER_TOO_SMALL) {
    Status = HiiString->GetString (HiiString, mLanguage, HiiHandle, StringId, Buffer, &Size, nullptr);
    if (EFI_ERROR (Status)) {
      FreePool (Buffer);
      return Status;
    }
  } else {
    CopyMem (Buffer, FirstTry, Size);
  }

  Buffer[Size / sizeof (CHAR16)] = 0;
  *String = Buffer;
  return EFI_SUCCESS;
}

EFI_STATUS
StandInLookUpString (IN EFI_HII_HANDLE HiiHandle, IN EFI_STRING_ID StringId, OUT CHAR16 **String)
{
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  STAND_IN_STRING *Entry;
  CHAR16 *Copy;
  EFI_STATUS Status;

  Entry = FindCachedString (HiiHandle, StringId);
  if (Entry != nullptr) {
    *String = Entry->String;
    return EFI_SUCCESS;
  }

  Status = ReadHiiString (HiiHandle, StringId, &Copy);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (EFI_ERROR (StandInGrow (Framework->Strings, Framework->StringCapacity, Framework->StringCount))) {
    FreePool (Copy);
    return EFI_OUT_OF_RESOURCES;
  }

  Entry = &Framework->Strings[Framework->StringCount++];
  Entry->HiiHandle = HiiHandle;
  Entry->StringId = StringId;
  Entry->String = Copy;
  *String = Copy;
  return EFI_SUCCESS;
}

VOID
StandInReleaseStrings (VOID)
{
  for (UINTN Index = 0; Index < gStandInFramework.StringCount; Index++) {
    StandInFree (gStandInFramework.Strings[Index].String);
  }

  StandInFree (gStandInFramework.Strings);
  gStandInFramework.StringCount = 0;
  gStandInFramework.StringCapacity = 0;
}

STATIC
EFI_STATUS
EFIAPI
UiGetString (IN UINTN Reserved, IN EFI_HII_HANDLE HiiHandle, IN EFI_STRING_ID StringId, OUT CHAR16 **String)
{
  UINTN Arguments[] = {Reserved, (UINTN)HiiHandle, StringId, (UINTN)String};
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpGetString, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (String == nullptr) {
    return StandInReject (StandInOpGetString, EFI_INVALID_PARAMETER);
  }

  return StandInLookUpString (HiiHandle, StringId, String);
}

UI_STRING_TABLE gStandInStringTable = {UiGetString};
