/** @file
  Simulated events and task priority levels.

  The notification of an EVT_NOTIFY_SIGNAL event is queued at the event's TPL
  when the event is signalled, and runs as soon as the current TPL is below
  that level: signalling a TPL_CALLBACK event from TPL_APPLICATION runs its
  notification before SignalEvent returns. Notifications run at their event's
  TPL (RaiseTPL inside one sees it), highest level first, in signal order within
  a level. Signalling a member of an event group signals every member.
**/
#ifndef HOST_EVENTS_H_
#define HOST_EVENTS_H_

#include <array>
#include <deque>
#include <unordered_set>
#include <vector>

#include <Uefi.h>

class HostPlatform;

///
/// One event, as tests can inspect it. Its address is the EFI_EVENT.
///
struct HostEvent {
  UINT32 Type;
  EFI_TPL NotifyTpl;
  EFI_EVENT_NOTIFY NotifyFunction;
  VOID *NotifyContext;
  bool InGroup;
  EFI_GUID Group;
  bool Signaled;
  bool Queued;   ///< its notification waits for the TPL to drop
  bool Closed;   ///< closed events stay known, so that a stale EFI_EVENT is recognised
  bool Internal; ///< made by the platform itself (the console's events), not counted as open
};

class HostEvents {
public:
  explicit HostEvents (HostPlatform &Platform) : mPlatform (Platform)
  {}

  HostEvents (const HostEvents &) = delete;
  HostEvents &operator= (const HostEvents &) = delete;

  /** @return the current task priority level. **/
  EFI_TPL CurrentTpl () const;

  /** @return the record of an event made on this platform (closed ones too), or null. **/
  const HostEvent *Find (EFI_EVENT Event) const;

  /** @return whether Event was made on this platform and is not closed. **/
  bool IsOpen (EFI_EVENT Event) const;

  /** @return the events made through the tables and not closed. **/
  std::vector<EFI_EVENT> OpenEvents () const;

  /** Signals every event of Group, as the firmware does for its own groups. **/
  VOID SignalGroup (const EFI_GUID &Group);

  /** @return every group signal so far (by anyone), in order. **/
  const std::vector<EFI_GUID> &
  SignalledGroups () const
  {
    return mSignalledGroups;
  }

  //
  // Used by the platform.
  //

  EFI_STATUS Create (IN UINT32 Type,
                     IN EFI_TPL NotifyTpl,
                     IN EFI_EVENT_NOTIFY NotifyFunction,
                     IN CONST VOID *NotifyContext,
                     IN CONST EFI_GUID *EventGroup,
                     IN bool Internal,
                     OUT EFI_EVENT *Event);

  EFI_STATUS Signal (EFI_EVENT Event);
  EFI_TPL Raise (EFI_TPL NewTpl);
  VOID Restore (EFI_TPL OldTpl);

  /** @return the open event behind Event, or null. **/
  HostEvent *OpenEvent (EFI_EVENT Event);

  VOID Publish (EFI_BOOT_SERVICES &BootServices);

private:
  static EFI_TPL EFIAPI RaiseTplService (IN EFI_TPL NewTpl);
  static VOID EFIAPI RestoreTplService (IN EFI_TPL OldTpl);
  static EFI_STATUS EFIAPI CreateEventService (IN UINT32 Type,
                                               IN EFI_TPL NotifyTpl,
                                               IN EFI_EVENT_NOTIFY NotifyFunction,
                                               IN VOID *NotifyContext,
                                               OUT EFI_EVENT *Event);
  static EFI_STATUS EFIAPI CreateEventExService (IN UINT32 Type,
                                                 IN EFI_TPL NotifyTpl,
                                                 IN EFI_EVENT_NOTIFY NotifyFunction,
                                                 IN CONST VOID *NotifyContext,
                                                 IN CONST EFI_GUID *EventGroup,
                                                 OUT EFI_EVENT *Event);
  static EFI_STATUS EFIAPI SignalEventService (IN EFI_EVENT Event);
  static EFI_STATUS EFIAPI CloseEventService (IN EFI_EVENT Event);
  static EFI_STATUS EFIAPI CheckEventService (IN EFI_EVENT Event);

  EFI_STATUS Close (EFI_EVENT Event);
  EFI_STATUS Check (EFI_EVENT Event);
  VOID Mark (HostEvent &Event);
  VOID Queue (HostEvent &Event);
  VOID Unqueue (HostEvent &Event);
  VOID Dispatch (EFI_TPL Floor);

  HostPlatform &mPlatform;
  EFI_TPL mTpl = TPL_APPLICATION;
  std::deque<HostEvent> mEvents; ///< every event ever made; stable addresses
  std::unordered_set<const VOID *> mKnown;
  std::array<std::deque<HostEvent *>, TPL_HIGH_LEVEL + 1> mQueues;
  std::vector<EFI_GUID> mSignalledGroups;
};

#endif
