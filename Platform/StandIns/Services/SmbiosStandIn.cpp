/** @file
  EFI_SMBIOS_PROTOCOL of the stand-in: GetNext over a copy of the structures
  that a test sets.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/Smbios.h>

#include "ServiceStandInInternal.h"

///
/// A structure takes at least its 4-byte header.
///
#define MAX_STRUCTURES (STAND_IN_MAX_SMBIOS_BYTES / sizeof (SMBIOS_STRUCTURE) + 1)

STATIC STAND_IN_SERVICE_SLOT mSmbiosSlot;

///
/// The copy, and two zero bytes behind it that end the strings of a last
/// structure that lacks its double zero.
///
STATIC UINT8 mTable[STAND_IN_MAX_SMBIOS_BYTES + 2];
STATIC UINTN mStructureOffsets[MAX_STRUCTURES];
STATIC UINTN mStructureCount;
STATIC BOOLEAN mIgnoreType;

STATIC
EFI_STATUS
EFIAPI
SmbiosGetNext (IN CONST EFI_SMBIOS_PROTOCOL *This,
               IN OUT EFI_SMBIOS_HANDLE *SmbiosHandle,
               IN EFI_SMBIOS_TYPE *Type OPTIONAL,
               OUT EFI_SMBIOS_TABLE_HEADER **Record,
               OUT EFI_HANDLE *ProducerHandle OPTIONAL);

STATIC EFI_SMBIOS_PROTOCOL mSmbios = {nullptr, nullptr, nullptr, SmbiosGetNext, 3, 0};

STATIC
EFI_STATUS
EFIAPI
SmbiosGetNext (IN CONST EFI_SMBIOS_PROTOCOL *This,
               IN OUT EFI_SMBIOS_HANDLE *SmbiosHandle,
               IN EFI_SMBIOS_TYPE *Type OPTIONAL,
               OUT EFI_SMBIOS_TABLE_HEADER **Record,
               OUT EFI_HANDLE *ProducerHandle OPTIONAL)
{
  UINTN Arguments[] = {(UINTN)This, (UINTN)SmbiosHandle, (UINTN)Type, (UINTN)Record, (UINTN)ProducerHandle};
  UINTN Next;
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpSmbiosGetNext, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mSmbiosSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  if ((This != &mSmbios) || (SmbiosHandle == nullptr) || (Record == nullptr)) {
    return StandInReject (StandInOpSmbiosGetNext, EFI_INVALID_PARAMETER);
  }

  //
  // Handle N is the N-th structure, so the search goes on at index N; an
  // unknown handle has no next structure.
  //
  if (*SmbiosHandle == SMBIOS_HANDLE_PI_RESERVED) {
    Next = 0;
  } else if ((*SmbiosHandle != 0) && (*SmbiosHandle <= mStructureCount)) {
    Next = *SmbiosHandle;
  } else {
    Next = mStructureCount;
  }

  for (; Next < mStructureCount; Next++) {
    EFI_SMBIOS_TABLE_HEADER *Structure = (EFI_SMBIOS_TABLE_HEADER *)&mTable[mStructureOffsets[Next]];

    if ((Type == nullptr) || mIgnoreType || (Structure->Type == *Type)) {
      *SmbiosHandle = (EFI_SMBIOS_HANDLE)(Next + 1);
      *Record = Structure;
      if (ProducerHandle != nullptr) {
        *ProducerHandle = mSmbiosSlot.Handle;
      }

      return EFI_SUCCESS;
    }
  }

  *SmbiosHandle = SMBIOS_HANDLE_PI_RESERVED;
  return EFI_NOT_FOUND;
}

EFI_STATUS
EFIAPI
InstallSmbiosStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mSmbiosSlot, &gEfiSmbiosProtocolGuid, &mSmbios, Handle);
}

EFI_STATUS
EFIAPI
UninstallSmbiosStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mSmbiosSlot, &gEfiSmbiosProtocolGuid, &mSmbios, Handle);
}

EFI_STATUS
StandInSetSmbiosTable (IN CONST VOID *Table OPTIONAL, IN UINTN Size)
{
  UINTN Offset;

  if ((Size > STAND_IN_MAX_SMBIOS_BYTES) || ((Table == nullptr) && (Size != 0))) {
    return EFI_INVALID_PARAMETER;
  }

  ZeroMem (mTable, sizeof (mTable));
  if (Size != 0) {
    CopyMem (mTable, Table, Size);
  }

  //
  // Cut the copy into structures: the formatted area must lie in the copy;
  // the strings run to a double zero, at the latest the two zero bytes
  // behind the copy. A structure whose header or formatted area does not
  // fit ends the table.
  //
  mStructureCount = 0;
  Offset = 0;
  while ((Offset + sizeof (SMBIOS_STRUCTURE) <= Size) && (mStructureCount < MAX_STRUCTURES)) {
    UINTN Length = mTable[Offset + OFFSET_OF (SMBIOS_STRUCTURE, Length)];
    UINTN End;
    UINT16 Handle;

    if ((Length < sizeof (SMBIOS_STRUCTURE)) || (Length > Size - Offset)) {
      break;
    }

    End = Offset + Length;
    while ((mTable[End] != 0) || (mTable[End + 1] != 0)) {
      End++;
    }

    mStructureOffsets[mStructureCount] = Offset;
    mStructureCount++;
    Handle = (UINT16)mStructureCount;
    CopyMem (&mTable[Offset + OFFSET_OF (SMBIOS_STRUCTURE, Handle)], &Handle, sizeof (Handle));
    Offset = End + 2;
  }

  return EFI_SUCCESS;
}

VOID
StandInSmbiosIgnoreType (IN BOOLEAN Ignore)
{
  mIgnoreType = (Ignore != FALSE) ? TRUE : FALSE;
}

VOID
StandInResetSmbios (VOID)
{
  StandInSetSmbiosTable (nullptr, 0);
  mIgnoreType = FALSE;
}
