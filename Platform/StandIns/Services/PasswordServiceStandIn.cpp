/** @file
  The password service behind the service-request stand-in: the records that
  tests set, and the answers to the requests of the password family.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#include "ServiceStandInInternal.h"

///
/// Bytes of a narrowed password as the driver hands it over.
///
#define NARROW_PASSWORD_SIZE 48

///
/// Values the service reports for the attributes that the driver stores and never reads.
///
#define INFO_VALUE_3 3
#define INFO_VALUE_5 5
#define INFO_VALUE_8 8
#define INFO_BLOCK_FILL 0x5A

STATIC STAND_IN_PASSWORD mPasswords[STAND_IN_MAX_PASSWORDS];
STATIC UINTN mPasswordCount;
STATIC BOOLEAN mCountOverridden;
STATIC UINT64 mCountOverride;
STATIC EFI_STATUS mCountOverrideStatus;

VOID
StandInSetPasswords (IN CONST STAND_IN_PASSWORD *Records OPTIONAL, IN UINTN Count)
{
  ZeroMem (mPasswords, sizeof (mPasswords));
  mPasswordCount = (Records == nullptr) ? 0 : ((Count < STAND_IN_MAX_PASSWORDS) ? Count : STAND_IN_MAX_PASSWORDS);
  if (mPasswordCount != 0) {
    CopyMem (mPasswords, Records, mPasswordCount * sizeof (mPasswords[0]));
  }

  mCountOverridden = FALSE;
}

VOID
StandInSetPasswordCount (IN UINT64 Count, IN EFI_STATUS Status)
{
  mCountOverridden = TRUE;
  mCountOverride = Count;
  mCountOverrideStatus = Status;
}

VOID
StandInResetPasswordService (VOID)
{
  StandInSetPasswords (nullptr, 0);
  mCountOverride = 0;
  mCountOverrideStatus = EFI_SUCCESS;
}

/** Stores a 64-bit attribute where the driver asked for it (the address need not be aligned). **/
STATIC
VOID
StoreValue (IN UINT64 Address, IN UINT64 Value)
{
  CopyMem (StandInAddressToPointer (Address), &Value, sizeof (Value));
}

/** @return the record that a request names, or null past the records. **/
STATIC
CONST STAND_IN_PASSWORD *
RecordOf (IN CONST PASSWORD_REQUEST *Request)
{
  return (Request->Index < mPasswordCount) ? &mPasswords[Request->Index] : nullptr;
}

STATIC
EFI_STATUS
GetCount (IN OUT PASSWORD_REQUEST *Request)
{
  //
  // The count carries Index 0 on the wire.
  //
  if ((Request->Data == 0) || (Request->Index != 0)) {
    return EFI_INVALID_PARAMETER;
  }

  StoreValue (Request->Data, mCountOverridden ? mCountOverride : mPasswordCount);
  Request->Status = mCountOverridden ? mCountOverrideStatus : EFI_SUCCESS;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
GetInfo (IN OUT PASSWORD_REQUEST *Request)
{
  PASSWORD_INFO_REQUEST *Info = (PASSWORD_INFO_REQUEST *)Request;
  CONST STAND_IN_PASSWORD *Password;
  UINT64 Addresses[9];

  //
  // The nine addresses travel behind the header, and Data names that place.
  //
  if (Request->Data != (UINT64)((UINTN)Request + OFFSET_OF (PASSWORD_INFO_REQUEST, Discarded))) {
    return EFI_INVALID_PARAMETER;
  }

  CopyMem (Addresses, StandInAddressToPointer (Request->Data), sizeof (Addresses));
  for (UINT64 Address : Addresses) {
    if (Address == 0) {
      return EFI_INVALID_PARAMETER;
    }
  }

  Password = RecordOf (Request);
  if (Password == nullptr) {
    Request->Status = EFI_NOT_FOUND;
    return EFI_SUCCESS;
  }

  //
  // A refused request leaves the driver's cells as they were.
  //
  if (!EFI_ERROR (Password->InfoStatus)) {
    ZeroMem (StandInAddressToPointer (Info->Discarded), PASSWORD_INFO_DISCARDED_SIZE);
    StoreValue (Info->Kind, Password->Kind);
    StoreValue (Info->NarrowChars, Password->NarrowChars);
    StoreValue (Info->InfoValue3, INFO_VALUE_3);
    StoreValue (Info->MaxAttempts, Password->MaxAttempts);
    StoreValue (Info->InfoValue5, INFO_VALUE_5);
    StoreValue (Info->MaxLength, Password->MaxLength);
    SetMem (StandInAddressToPointer (Info->InfoBlock7), PASSWORD_INFO_BLOCK_SIZE, INFO_BLOCK_FILL);
    StoreValue (Info->InfoValue8, INFO_VALUE_8);
  }

  Request->Status = Password->InfoStatus;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
GetState (IN OUT PASSWORD_REQUEST *Request)
{
  CONST STAND_IN_PASSWORD *Password;

  if (Request->Data == 0) {
    return EFI_INVALID_PARAMETER;
  }

  Password = RecordOf (Request);
  if (Password == nullptr) {
    Request->Status = EFI_NOT_FOUND;
    return EFI_SUCCESS;
  }

  if (!EFI_ERROR (Password->StateStatus)) {
    StoreValue (Request->Data, Password->State);
  }

  Request->Status = Password->StateStatus;
  return EFI_SUCCESS;
}

/** @return the Index-th character of a UCS-2 text that need not be aligned. **/
STATIC
CHAR16
WideCharAt (IN CONST UINT8 *Text, IN UINTN Index)
{
  CHAR16 Character;

  CopyMem (&Character, Text + Index * sizeof (CHAR16), sizeof (Character));
  return Character;
}

/**
  Compares a typed password with the accepted one, character by character up
  to the first difference, so that no more of either is read than both have.
**/
STATIC
BOOLEAN
NarrowMatches (IN CONST UINT8 *Typed, IN CONST CHAR16 *Accepted)
{
  for (UINTN Index = 0; Index < NARROW_PASSWORD_SIZE; Index++) {
    if (Typed[Index] != Accepted[Index]) {
      return FALSE;
    }

    if (Typed[Index] == 0) {
      return TRUE;
    }
  }

  return FALSE;
}

STATIC
BOOLEAN
WideMatches (IN CONST UINT8 *Typed, IN CONST CHAR16 *Accepted)
{
  for (UINTN Index = 0;; Index++) {
    CHAR16 Character = WideCharAt (Typed, Index);

    if (Character != Accepted[Index]) {
      return FALSE;
    }

    if (Character == 0) {
      return TRUE;
    }
  }
}

STATIC
EFI_STATUS
Check (IN OUT PASSWORD_REQUEST *Request, OUT STAND_IN_SERVICE_REQUEST *Record)
{
  CONST STAND_IN_PASSWORD *Password;
  CONST UINT8 *Typed;
  BOOLEAN Right;

  if (Request->Data == 0) {
    return EFI_INVALID_PARAMETER;
  }

  Password = RecordOf (Request);
  if (Password == nullptr) {
    Request->Status = EFI_NOT_FOUND;
    return EFI_SUCCESS;
  }

  Typed = (CONST UINT8 *)StandInAddressToPointer (Request->Data);
  if (Password->NarrowChars == 1) {
    Record->NarrowCheck = TRUE;
    CopyMem (Record->NarrowData, Typed, NARROW_PASSWORD_SIZE);
    Right = (Password->Password != nullptr) && NarrowMatches (Record->NarrowData, Password->Password);
  } else {
    for (UINTN Index = 0; Index + 1 < ARRAY_SIZE (Record->WideData); Index++) {
      Record->WideData[Index] = WideCharAt (Typed, Index);
      if (Record->WideData[Index] == 0) {
        break;
      }
    }

    Right = (Password->Password != nullptr) && WideMatches (Typed, Password->Password);
  }

  Request->Status = Right ? Password->CheckStatusRight : EFI_SECURITY_VIOLATION;
  return EFI_SUCCESS;
}

EFI_STATUS
StandInPasswordRequest (IN OUT PASSWORD_REQUEST *Request, OUT STAND_IN_SERVICE_REQUEST *Record)
{
  EFI_STATUS Status;

  switch (Request->Request) {
    case PasswordRequestGetCount:
      Status = GetCount (Request);
      break;

    case PasswordRequestGetInfo:
      Status = GetInfo (Request);
      break;

    case PasswordRequestGetState:
      Status = GetState (Request);
      break;

    case PasswordRequestCheck:
    case PasswordRequestCheckAlternate:
      Status = Check (Request, Record);
      break;

    default:
      Status = EFI_UNSUPPORTED;
      break;
  }

  if (EFI_ERROR (Status)) {
    Request->Status = Status;
  }

  return Status;
}
