/** @file
  Searches of the simulated handle database: RegisterProtocolNotify,
  LocateHandle, LocateHandleBuffer and LocateProtocol.
**/
#include "HostHandles.h"
#include "HostPlatform.h"

HostHandles::Registration *
HostHandles::LiveRegistration (const VOID *Key) const
{
  auto Found = mLiveRegistrations.find (Key);
  return (Found == mLiveRegistrations.end ()) ? nullptr : Found->second;
}

HostHandles::InterfaceList::iterator
HostHandles::NextFor (Registration &Record)
{
  InterfaceList &List = Record.Protocol->Interfaces;
  return Record.AtHead ? List.begin () : std::next (Record.Last);
}

//
// Collects what a search finds without changing anything; ByRegisterNotify
// finds at most one handle, the next one of the registration.
//
EFI_STATUS
HostHandles::Search (EFI_LOCATE_SEARCH_TYPE SearchType,
                     const EFI_GUID *Protocol,
                     VOID *SearchKey,
                     std::vector<EFI_HANDLE> &Found) const
{
  switch (SearchType) {
    case ::AllHandles:
      for (const auto &Record : mHandles) {
        if (mLiveHandles.count (Record.get ()) != 0) {
          Found.push_back (Record.get ());
        }
      }

      return EFI_SUCCESS;

    case ByProtocol:
      if (Protocol == nullptr) {
        return EFI_INVALID_PARAMETER;
      }

      if (const ProtocolEntry *Entry = FindEntry (*Protocol)) {
        for (const InterfaceRecord &Installed : Entry->Interfaces) {
          Found.push_back (Installed.Handle);
        }
      }

      return EFI_SUCCESS;

    case ByRegisterNotify:
      if (Registration *Record = LiveRegistration (SearchKey)) {
        auto Next = NextFor (*Record);
        if (Next != Record->Protocol->Interfaces.end ()) {
          Found.push_back (Next->Handle);
        }

        return EFI_SUCCESS;
      }

      return EFI_INVALID_PARAMETER;

    default:
      return EFI_INVALID_PARAMETER;
  }
}

EFI_STATUS
HostHandles::Locate (
  EFI_LOCATE_SEARCH_TYPE SearchType, const EFI_GUID *Protocol, VOID *SearchKey, UINTN *BufferSize, EFI_HANDLE *Buffer)
{
  std::vector<EFI_HANDLE> Found;

  if (BufferSize == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  EFI_STATUS Status = Search (SearchType, Protocol, SearchKey, Found);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (Found.empty ()) {
    return EFI_NOT_FOUND;
  }

  UINTN Needed = Found.size () * sizeof (EFI_HANDLE);
  if (*BufferSize < Needed) {
    *BufferSize = Needed;
    return EFI_BUFFER_TOO_SMALL;
  }

  if (Buffer == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  std::copy (Found.begin (), Found.end (), Buffer);
  *BufferSize = Needed;
  if (SearchType == ByRegisterNotify) {
    Registration *Record = LiveRegistration (SearchKey);
    Record->Last = NextFor (*Record);
    Record->AtHead = false;
  }

  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostHandles::RegisterProtocolNotifyService (IN EFI_GUID *Protocol, IN EFI_EVENT Event, OUT VOID **Registration)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostHandles &Handles = Platform.Handles ();

  if (auto Failure = Platform.Calls ().Enter (HostService::RegisterProtocolNotify, Protocol)) {
    return *Failure;
  }

  if ((Protocol == nullptr) || (Registration == nullptr) || !Platform.Events ().IsOpen (Event)) {
    return EFI_INVALID_PARAMETER;
  }

  ProtocolEntry &Entry = Handles.Entry (*Protocol);
  Handles.mRegistrations.push_back (HostHandles::Registration{&Entry, Event, true, {}});
  HostHandles::Registration *Record = &Handles.mRegistrations.back ();
  Entry.Registrations.push_back (Record);
  Handles.mLiveRegistrations[Record] = Record;
  *Registration = Record;
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostHandles::LocateHandleService (IN EFI_LOCATE_SEARCH_TYPE SearchType,
                                  IN EFI_GUID *Protocol,
                                  IN VOID *SearchKey,
                                  IN OUT UINTN *BufferSize,
                                  OUT EFI_HANDLE *Buffer)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::LocateHandle, Protocol)) {
    return *Failure;
  }

  return Platform.Handles ().Locate (SearchType, Protocol, SearchKey, BufferSize, Buffer);
}

EFI_STATUS EFIAPI
HostHandles::LocateHandleBufferService (IN EFI_LOCATE_SEARCH_TYPE SearchType,
                                        IN EFI_GUID *Protocol,
                                        IN VOID *SearchKey,
                                        OUT UINTN *NoHandles,
                                        OUT EFI_HANDLE **Buffer)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostHandles &Handles = Platform.Handles ();

  if (auto Failure = Platform.Calls ().Enter (HostService::LocateHandleBuffer, Protocol)) {
    return *Failure;
  }

  if ((NoHandles == nullptr) || (Buffer == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  *NoHandles = 0;
  *Buffer = nullptr;

  std::vector<EFI_HANDLE> Found;
  EFI_STATUS Status = Handles.Search (SearchType, Protocol, SearchKey, Found);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  if (Found.empty ()) {
    return EFI_NOT_FOUND;
  }

  VOID *Allocated = nullptr;
  if (EFI_ERROR (
        Platform.Pool ().AllocateForCaller (EfiBootServicesData, Found.size () * sizeof (EFI_HANDLE), &Allocated))) {
    return EFI_OUT_OF_RESOURCES;
  }

  UINTN Size = Found.size () * sizeof (EFI_HANDLE);
  Status = Handles.Locate (SearchType, Protocol, SearchKey, &Size, static_cast<EFI_HANDLE *> (Allocated));
  *Buffer = static_cast<EFI_HANDLE *> (Allocated);
  *NoHandles = Size / sizeof (EFI_HANDLE);
  return Status;
}

EFI_STATUS EFIAPI
HostHandles::LocateProtocolService (IN EFI_GUID *Protocol, IN VOID *Registration, OUT VOID **Interface)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostHandles &Handles = Platform.Handles ();

  if (auto Failure = Platform.Calls ().Enter (HostService::LocateProtocol, Protocol)) {
    return *Failure;
  }

  if (Interface == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  *Interface = nullptr;
  if (Protocol == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (Registration == nullptr) {
    const ProtocolEntry *Entry = Handles.FindEntry (*Protocol);
    if ((Entry == nullptr) || Entry->Interfaces.empty ()) {
      return EFI_NOT_FOUND;
    }

    *Interface = Entry->Interfaces.front ().Interface;
    return EFI_SUCCESS;
  }

  //
  // A registration for another protocol would hand out an interface of the
  // wrong type: refuse it rather than return one.
  //
  HostHandles::Registration *Record = Handles.LiveRegistration (Registration);
  if ((Record == nullptr) || !HostGuidEqual (Record->Protocol->Guid, *Protocol)) {
    return EFI_INVALID_PARAMETER;
  }

  auto Next = NextFor (*Record);
  if (Next == Record->Protocol->Interfaces.end ()) {
    return EFI_NOT_FOUND;
  }

  *Interface = Next->Interface;
  Record->Last = Next;
  Record->AtHead = false;
  return EFI_SUCCESS;
}
