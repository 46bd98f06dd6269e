/** @file
  Prerequisite wait: one notification event registered for every protocol of
  a list; when the last of them is installed, the function runs once.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
#include <Library/MemoryAllocationLib.h>
}
#include <Library/PrerequisiteWaitLib.h>
#include <Library/UefiBootServicesTableLib.h>

/**
  Counts the protocols that are installed now; calls the function once all are.

  A protocol counts as installed when a by-protocol handle search with room for
  one handle finds it, or reports that one handle is not room enough: a
  protocol published on several handles is present all the same.
**/
STATIC
VOID EFIAPI
PrerequisiteWaitNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  PREREQ_WAIT *Wait = (PREREQ_WAIT *)Context;

  if ((Wait == nullptr) || (Wait->Signature != PREREQ_WAIT_SIGNATURE) || Wait->Done) {
    return;
  }

  for (UINT32 Index = 0; Index < Wait->ProtocolCount; Index++) {
    EFI_HANDLE Handle;
    UINTN BufferSize;
    EFI_STATUS Status;

    if (Wait->FoundFlags[Index] != 0) {
      continue;
    }

    BufferSize = sizeof (Handle);
    Status = gBS->LocateHandle (ByProtocol, &Wait->Guids[Index], nullptr, &BufferSize, &Handle);
    if (!EFI_ERROR (Status) || (Status == EFI_BUFFER_TOO_SMALL)) {
      Wait->FoundFlags[Index] = 1;
      Wait->FoundCount++;
    }
  }

  if (Wait->FoundCount == Wait->ProtocolCount) {
    //
    // Done before the call: whatever the function installs must not run it again.
    //
    Wait->Done = TRUE;
    Wait->Function (Wait->Context1, Wait->Context2);
  }
}

STATIC
VOID
FreeWait (IN PREREQ_WAIT *Wait)
{
  if (Wait->Guids != nullptr) {
    FreePool (Wait->Guids);
  }

  FreePool (Wait);
}

PREREQ_WAIT *EFIAPI
RegisterPrerequisiteWait (
  IN PREREQ_WAIT *Previous OPTIONAL, IN PREREQ_WAIT_FUNCTION Function, IN VOID *Context1, IN VOID *Context2, ...)
{
  VA_LIST Marker;
  UINT32 Count;
  PREREQ_WAIT *Wait;
  EFI_STATUS Status;

  if ((Previous != nullptr) || (Function == nullptr)) {
    return nullptr;
  }

  Count = 0;
  VA_START (Marker, Context2);
  // The analyzer does not model the Microsoft va_list of EFIAPI functions.
  // NOLINTNEXTLINE(performance-no-int-to-ptr,clang-analyzer-valist.Uninitialized)
  while (VA_ARG (Marker, EFI_GUID *) != nullptr) {
    Count++;
  }

  VA_END (Marker);
  if (Count == 0) {
    return nullptr;
  }

  Wait = (PREREQ_WAIT *)AllocateZeroPool (sizeof (PREREQ_WAIT));
  if (Wait == nullptr) {
    return nullptr;
  }

  //
  // One block: the GUID copies, then one found flag per GUID.
  //
  Wait->Guids = (EFI_GUID *)AllocateZeroPool (Count * (sizeof (EFI_GUID) + 1));
  if (Wait->Guids == nullptr) {
    FreeWait (Wait);
    return nullptr;
  }

  Wait->Signature = PREREQ_WAIT_SIGNATURE;
  Wait->Done = FALSE;
  Wait->Function = Function;
  Wait->Context1 = Context1;
  Wait->Context2 = Context2;
  Wait->ProtocolCount = Count;
  Wait->FoundCount = 0;
  Wait->FoundFlags = (UINT8 *)(Wait->Guids + Count);

  VA_START (Marker, Context2);
  for (UINT32 Index = 0; Index < Count; Index++) {
    CopyGuid (&Wait->Guids[Index], VA_ARG (Marker, EFI_GUID *)); // NOLINT(performance-no-int-to-ptr)
  }

  VA_END (Marker);

  Status = gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, PrerequisiteWaitNotify, Wait, &Wait->Event);
  if (EFI_ERROR (Status)) {
    FreeWait (Wait);
    return nullptr;
  }

  for (UINT32 Index = 0; Index < Count; Index++) {
    Status = gBS->RegisterProtocolNotify (&Wait->Guids[Index], Wait->Event, &Wait->Registration);
    if (EFI_ERROR (Status)) {
      gBS->CloseEvent (Wait->Event);
      FreeWait (Wait);
      return nullptr;
    }
  }

  //
  // Protocols that are installed already are seen at once.
  //
  gBS->SignalEvent (Wait->Event);
  return Wait;
}

VOID EFIAPI
CancelPrerequisiteWait (IN PREREQ_WAIT *Wait)
{
  if ((Wait == nullptr) || (Wait->Signature != PREREQ_WAIT_SIGNATURE)) {
    return;
  }

  gBS->CloseEvent (Wait->Event);
  Wait->Signature = 0;
  FreeWait (Wait);
}
