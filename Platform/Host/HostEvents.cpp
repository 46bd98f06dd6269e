/** @file
  Simulated events and task priority levels.
**/
#include "HostEvents.h"

#include <algorithm>
#include <string>

#include "HostGuid.h"
#include "HostPlatform.h"

namespace {

//
// The event types that UEFI defines; EVT_RUNTIME may be added to any of them.
//
bool
IsValidType (UINT32 Type)
{
  static constexpr UINT32 mTypes[] = {0,
                                      EVT_TIMER,
                                      EVT_TIMER | EVT_NOTIFY_SIGNAL,
                                      EVT_TIMER | EVT_NOTIFY_WAIT,
                                      EVT_NOTIFY_SIGNAL,
                                      EVT_NOTIFY_WAIT,
                                      EVT_SIGNAL_EXIT_BOOT_SERVICES,
                                      EVT_SIGNAL_VIRTUAL_ADDRESS_CHANGE};

  for (UINT32 Valid : mTypes) {
    if ((Type == Valid) || (Type == (Valid | EVT_RUNTIME))) {
      return true;
    }
  }

  return false;
}

} // namespace

EFI_TPL
HostEvents::CurrentTpl () const
{
  return mTpl;
}

const HostEvent *
HostEvents::Find (EFI_EVENT Event) const
{
  return (mKnown.count (Event) != 0) ? static_cast<const HostEvent *> (Event) : nullptr;
}

bool
HostEvents::IsOpen (EFI_EVENT Event) const
{
  const HostEvent *Record = Find (Event);
  return (Record != nullptr) && !Record->Closed;
}

HostEvent *
HostEvents::OpenEvent (EFI_EVENT Event)
{
  return IsOpen (Event) ? static_cast<HostEvent *> (Event) : nullptr;
}

std::vector<EFI_EVENT>
HostEvents::OpenEvents () const
{
  std::vector<EFI_EVENT> Open;

  for (const HostEvent &Record : mEvents) {
    if (!Record.Closed && !Record.Internal) {
      Open.push_back (const_cast<HostEvent *> (&Record));
    }
  }

  return Open;
}

VOID
HostEvents::SignalGroup (const EFI_GUID &Group)
{
  EFI_TPL OldTpl = Raise (TPL_HIGH_LEVEL);

  mSignalledGroups.push_back (Group);
  for (HostEvent &Record : mEvents) {
    if (!Record.Closed && Record.InGroup && HostGuidEqual (Record.Group, Group)) {
      Mark (Record);
    }
  }

  Restore (OldTpl);
}

EFI_STATUS
HostEvents::Create (IN UINT32 Type,
                    IN EFI_TPL NotifyTpl,
                    IN EFI_EVENT_NOTIFY NotifyFunction,
                    IN CONST VOID *NotifyContext,
                    IN CONST EFI_GUID *EventGroup,
                    IN bool Internal,
                    OUT EFI_EVENT *Event)
{
  if ((Event == nullptr) || !IsValidType (Type)) {
    return EFI_INVALID_PARAMETER;
  }

  if ((Type & (EVT_NOTIFY_WAIT | EVT_NOTIFY_SIGNAL)) != 0) {
    if ((NotifyFunction == nullptr) || (NotifyTpl <= TPL_APPLICATION) || (NotifyTpl >= TPL_HIGH_LEVEL)) {
      return EFI_INVALID_PARAMETER;
    }
  }

  if ((EventGroup != nullptr) &&
      ((Type == EVT_SIGNAL_EXIT_BOOT_SERVICES) || (Type == EVT_SIGNAL_VIRTUAL_ADDRESS_CHANGE))) {
    return EFI_INVALID_PARAMETER;
  }

  HostEvent Record = {};
  Record.Type = Type;
  Record.NotifyTpl = NotifyTpl;
  Record.NotifyFunction = NotifyFunction;
  Record.NotifyContext = const_cast<VOID *> (NotifyContext);
  Record.InGroup = (EventGroup != nullptr);
  if (EventGroup != nullptr) {
    Record.Group = *EventGroup;
  }

  Record.Internal = Internal;
  mEvents.push_back (Record);
  mKnown.insert (&mEvents.back ());
  *Event = &mEvents.back ();
  return EFI_SUCCESS;
}

EFI_STATUS
HostEvents::Signal (EFI_EVENT Event)
{
  HostEvent *Record = OpenEvent (Event);

  if (Record == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (Record->InGroup) {
    SignalGroup (Record->Group);
    return EFI_SUCCESS;
  }

  EFI_TPL OldTpl = Raise (TPL_HIGH_LEVEL);
  Mark (*Record);
  Restore (OldTpl);
  return EFI_SUCCESS;
}

EFI_TPL
HostEvents::Raise (EFI_TPL NewTpl)
{
  EFI_TPL OldTpl = mTpl;

  if (NewTpl < mTpl) {
    mPlatform.RecordError ("RaiseTPL (" + std::to_string (NewTpl) + ") below the current TPL " + std::to_string (mTpl));
    return OldTpl;
  }

  if (NewTpl > TPL_HIGH_LEVEL) {
    mPlatform.RecordError ("RaiseTPL (" + std::to_string (NewTpl) + ") above TPL_HIGH_LEVEL");
    NewTpl = TPL_HIGH_LEVEL;
  }

  mTpl = NewTpl;
  return OldTpl;
}

VOID
HostEvents::Restore (EFI_TPL OldTpl)
{
  if (OldTpl > mTpl) {
    mPlatform.RecordError ("RestoreTPL (" + std::to_string (OldTpl) + ") above the current TPL " +
                           std::to_string (mTpl));
    return;
  }

  Dispatch (OldTpl);
  mTpl = OldTpl;
}

EFI_STATUS
HostEvents::Close (EFI_EVENT Event)
{
  HostEvent *Record = OpenEvent (Event);

  if (Record == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (Record->Internal) {
    mPlatform.RecordError ("CloseEvent: an event of the platform's console");
    return EFI_INVALID_PARAMETER;
  }

  Unqueue (*Record);
  Record->Signaled = false;
  Record->Closed = true;
  mPlatform.Handles ().ForgetEvent (Event);
  return EFI_SUCCESS;
}

EFI_STATUS
HostEvents::Check (EFI_EVENT Event)
{
  HostEvent *Record = OpenEvent (Event);

  if ((Record == nullptr) || ((Record->Type & EVT_NOTIFY_SIGNAL) != 0)) {
    return EFI_INVALID_PARAMETER;
  }

  //
  // A wait event's notification decides whether it is signalled: run it first.
  //
  if (!Record->Signaled && ((Record->Type & EVT_NOTIFY_WAIT) != 0)) {
    EFI_TPL OldTpl = Raise (TPL_HIGH_LEVEL);
    Queue (*Record);
    Restore (OldTpl);
  }

  if (!Record->Signaled) {
    return EFI_NOT_READY;
  }

  Record->Signaled = false;
  return EFI_SUCCESS;
}

VOID
HostEvents::Mark (HostEvent &Event)
{
  if (Event.Signaled) {
    return;
  }

  Event.Signaled = true;
  if ((Event.Type & EVT_NOTIFY_SIGNAL) != 0) {
    Queue (Event);
  }
}

VOID
HostEvents::Queue (HostEvent &Event)
{
  Unqueue (Event);
  mQueues[Event.NotifyTpl].push_back (&Event);
  Event.Queued = true;
}

VOID
HostEvents::Unqueue (HostEvent &Event)
{
  if (!Event.Queued) {
    return;
  }

  auto &Queue = mQueues[Event.NotifyTpl];
  Queue.erase (std::find (Queue.begin (), Queue.end (), &Event));
  Event.Queued = false;
}

VOID
HostEvents::Dispatch (EFI_TPL Floor)
{
  for (;;) {
    EFI_TPL Level = TPL_HIGH_LEVEL;
    while ((Level > Floor) && mQueues[Level].empty ()) {
      Level--;
    }

    if (Level <= Floor) {
      return;
    }

    HostEvent *Event = mQueues[Level].front ();
    mQueues[Level].pop_front ();
    Event->Queued = false;
    if ((Event->Type & EVT_NOTIFY_SIGNAL) != 0) {
      Event->Signaled = false;
    }

    mTpl = Level;
    Event->NotifyFunction (Event, Event->NotifyContext);
  }
}

EFI_TPL EFIAPI
HostEvents::RaiseTplService (IN EFI_TPL NewTpl)
{
  HostPlatform &Platform = HostPlatform::Current ();

  Platform.Calls ().Enter (HostService::RaiseTPL);
  return Platform.Events ().Raise (NewTpl);
}

VOID EFIAPI
HostEvents::RestoreTplService (IN EFI_TPL OldTpl)
{
  HostPlatform &Platform = HostPlatform::Current ();

  Platform.Calls ().Enter (HostService::RestoreTPL);
  Platform.Events ().Restore (OldTpl);
}

EFI_STATUS EFIAPI
HostEvents::CreateEventService (IN UINT32 Type,
                                IN EFI_TPL NotifyTpl,
                                IN EFI_EVENT_NOTIFY NotifyFunction,
                                IN VOID *NotifyContext,
                                OUT EFI_EVENT *Event)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::CreateEvent)) {
    return *Failure;
  }

  return Platform.Events ().Create (Type, NotifyTpl, NotifyFunction, NotifyContext, nullptr, false, Event);
}

EFI_STATUS EFIAPI
HostEvents::CreateEventExService (IN UINT32 Type,
                                  IN EFI_TPL NotifyTpl,
                                  IN EFI_EVENT_NOTIFY NotifyFunction,
                                  IN CONST VOID *NotifyContext,
                                  IN CONST EFI_GUID *EventGroup,
                                  OUT EFI_EVENT *Event)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::CreateEventEx, EventGroup)) {
    return *Failure;
  }

  return Platform.Events ().Create (Type, NotifyTpl, NotifyFunction, NotifyContext, EventGroup, false, Event);
}

EFI_STATUS EFIAPI
HostEvents::SignalEventService (IN EFI_EVENT Event)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::SignalEvent)) {
    return *Failure;
  }

  return Platform.Events ().Signal (Event);
}

EFI_STATUS EFIAPI
HostEvents::CloseEventService (IN EFI_EVENT Event)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::CloseEvent)) {
    return *Failure;
  }

  return Platform.Events ().Close (Event);
}

EFI_STATUS EFIAPI
HostEvents::CheckEventService (IN EFI_EVENT Event)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::CheckEvent)) {
    return *Failure;
  }

  return Platform.Events ().Check (Event);
}

VOID
HostEvents::Publish (EFI_BOOT_SERVICES &BootServices)
{
  BootServices.RaiseTPL = RaiseTplService;
  BootServices.RestoreTPL = RestoreTplService;
  BootServices.CreateEvent = CreateEventService;
  BootServices.CreateEventEx = CreateEventExService;
  BootServices.SignalEvent = SignalEventService;
  BootServices.CloseEvent = CloseEventService;
  BootServices.CheckEvent = CheckEventService;
}
