/** @file
  Calls through the simulated tables: how many each service has received, the
  highest TPL it may be called at, and failures that a test injects.

  Every simulated service enters through HostCalls::Enter, which counts the call,
  records an error when the caller's TPL is above the limit that UEFI sets for
  that service, and tells the service whether this call is to fail.
**/
#ifndef HOST_CALLS_H_
#define HOST_CALLS_H_

#include <array>
#include <optional>
#include <vector>

#include <Uefi.h>

class HostPlatform;

///
/// Every simulated service, named after its table slot or protocol member.
///
enum class HostService : UINT8 {
  // Boot services
  RaiseTPL,
  RestoreTPL,
  AllocatePool, ///< also counts the buffers that LocateHandleBuffer and ProtocolsPerHandle allocate
  FreePool,
  CreateEvent,
  CreateEventEx,
  SignalEvent,
  CloseEvent,
  CheckEvent,
  InstallProtocolInterface,
  ReinstallProtocolInterface,
  UninstallProtocolInterface,
  HandleProtocol,
  OpenProtocol,
  ProtocolsPerHandle,
  RegisterProtocolNotify,
  LocateHandle,
  LocateHandleBuffer,
  LocateProtocol,
  InstallMultipleProtocolInterfaces,
  UninstallMultipleProtocolInterfaces,
  InstallConfigurationTable,
  UnloadImage,
  DisconnectController,
  Stall,
  GetNextMonotonicCount,
  CalculateCrc32,
  CopyMem,
  SetMem,
  // Runtime services
  GetTime,
  GetVariable,
  SetVariable,
  ResetSystem,
  // Console input and output protocols
  ConInReset,
  ReadKeyStroke,
  ReadKeyStrokeEx,
  SetState,
  RegisterKeyNotify,
  UnregisterKeyNotify,
  ConOutReset,
  OutputString,
  TestString,
  QueryMode,
  SetMode,
  SetAttribute,
  ClearScreen,
  SetCursorPosition,
  EnableCursor,
  Count
};

/** @return the slot or member name of Service, e.g. "LocateProtocol". **/
const char *HostServiceName (HostService Service);

class HostCalls {
public:
  explicit HostCalls (HostPlatform &Platform) : mPlatform (Platform)
  {}

  /** @return how many calls Service has received so far, failed ones included. **/
  UINT64 Count (HostService Service) const;

  /**
    Makes the Nth call of Service from now (1: the next one) return Status at
    once, doing nothing else. With a Guid, only calls about that GUID count: the
    protocol (install, reinstall, uninstall, HandleProtocol, OpenProtocol,
    RegisterProtocolNotify, LocateHandle(Buffer), LocateProtocol), the event
    group (CreateEventEx), the vendor GUID (Get/SetVariable) or the table GUID
    (InstallConfigurationTable).
  **/
  void FailNth (HostService Service, EFI_STATUS Status, UINT64 Nth = 1, const EFI_GUID *Guid = nullptr);

  /** Lets Successes more calls of Service through, then fails every later one with Status. **/
  void FailAllAfter (HostService Service, EFI_STATUS Status, UINT64 Successes = 0, const EFI_GUID *Guid = nullptr);

  /** Forgets every injected failure of Service. **/
  void StopFailing (HostService Service);

  /**
    The entry of every simulated service (used by the platform itself): counts
    the call, checks the caller's TPL, and returns the status to fail with when
    an injected failure applies to this call.
  **/
  std::optional<EFI_STATUS> Enter (HostService Service, const EFI_GUID *Guid = nullptr);

private:
  struct Failure {
    HostService Service;
    EFI_STATUS Status;
    bool HasGuid;
    EFI_GUID Guid;
    UINT64 Skip; ///< matching calls still to let through
    bool Once;   ///< fails one call, then is spent
  };

  void AddFailure (HostService Service, EFI_STATUS Status, UINT64 Skip, bool Once, const EFI_GUID *Guid);

  HostPlatform &mPlatform;
  std::array<UINT64, (size_t)HostService::Count> mCounts{};
  std::vector<Failure> mFailures;
};

#endif
