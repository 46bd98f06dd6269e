/** @file
  Simulated handle database: installation, removal and lookup of protocols on
  handles, and DisconnectController.
**/
#include "HostHandles.h"

#include <gtest/gtest.h>

#include "HostPlatform.h"

//
// Database
//

HostHandles::HandleRecord *
HostHandles::LiveHandle (EFI_HANDLE Handle) const
{
  auto Found = mLiveHandles.find (Handle);
  return (Found == mLiveHandles.end ()) ? nullptr : Found->second;
}

HostHandles::ProtocolEntry &
HostHandles::Entry (const EFI_GUID &Guid)
{
  ProtocolEntry &Protocol = mProtocols[Guid];
  Protocol.Guid = Guid;
  return Protocol;
}

const HostHandles::ProtocolEntry *
HostHandles::FindEntry (const EFI_GUID &Guid) const
{
  auto Found = mProtocols.find (Guid);
  return (Found == mProtocols.end ()) ? nullptr : &Found->second;
}

HostHandles::HandleProtocol *
HostHandles::FindOnHandle (HandleRecord &Record, const EFI_GUID &Guid)
{
  for (HandleProtocol &Entry : Record.Protocols) {
    if (HostGuidEqual (Entry.Protocol->Guid, Guid)) {
      return &Entry;
    }
  }

  return nullptr;
}

//
// Takes an interface out of its protocol's list. A registration whose last
// returned interface it was steps back to the one before, so that it still
// returns every interface after it.
//
VOID
HostHandles::Unlink (ProtocolEntry &Protocol, InterfaceList::iterator Where)
{
  for (Registration *Record : Protocol.Registrations) {
    if (!Record->AtHead && (Record->Last == Where)) {
      if (Where == Protocol.Interfaces.begin ()) {
        Record->AtHead = true;
      } else {
        Record->Last = std::prev (Where);
      }
    }
  }

  Protocol.Interfaces.erase (Where);
}

VOID
HostHandles::Notify (ProtocolEntry &Protocol)
{
  //
  // A copy: a notification may register or close events of this protocol.
  //
  std::vector<EFI_EVENT> Events;
  for (const Registration *Record : Protocol.Registrations) {
    Events.push_back (Record->Event);
  }

  for (EFI_EVENT Event : Events) {
    mPlatform.Events ().Signal (Event);
  }
}

EFI_STATUS
HostHandles::Install (IN OUT EFI_HANDLE *Handle, IN CONST EFI_GUID *Protocol, IN VOID *Interface)
{
  if ((Handle == nullptr) || (Protocol == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  HandleRecord *Record = nullptr;
  if (*Handle != nullptr) {
    Record = LiveHandle (*Handle);
    if ((Record == nullptr) || (FindOnHandle (*Record, *Protocol) != nullptr)) {
      return EFI_INVALID_PARAMETER;
    }
  }

  //
  // Notifications wait until the database is consistent, as behind the DXE core's lock.
  //
  EFI_TPL OldTpl = mPlatform.Events ().Raise (TPL_NOTIFY);

  if (Record == nullptr) {
    mHandles.push_back (std::make_unique<HandleRecord> ());
    Record = mHandles.back ().get ();
    mLiveHandles[Record] = Record;
    *Handle = Record;
  }

  ProtocolEntry &Entry = this->Entry (*Protocol);
  Entry.Interfaces.push_back (InterfaceRecord{Record, Interface});
  Record->Protocols.push_back (HandleProtocol{&Entry, std::prev (Entry.Interfaces.end ())});
  Notify (Entry);

  mPlatform.Events ().Restore (OldTpl);
  return EFI_SUCCESS;
}

EFI_STATUS
HostHandles::Uninstall (IN EFI_HANDLE Handle, IN CONST EFI_GUID *Protocol, IN VOID *Interface)
{
  HandleRecord *Record = LiveHandle (Handle);

  if ((Record == nullptr) || (Protocol == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  HandleProtocol *Found = FindOnHandle (*Record, *Protocol);
  if ((Found == nullptr) || (Found->Where->Interface != Interface)) {
    return EFI_NOT_FOUND;
  }

  Unlink (*Found->Protocol, Found->Where);
  Record->Protocols.erase (Record->Protocols.begin () + (Found - Record->Protocols.data ()));
  if (Record->Protocols.empty ()) {
    mLiveHandles.erase (Record);
  }

  return EFI_SUCCESS;
}

EFI_STATUS
HostHandles::Reinstall (EFI_HANDLE Handle, const EFI_GUID *Protocol, VOID *OldInterface, VOID *NewInterface)
{
  HandleRecord *Record = LiveHandle (Handle);

  if ((Record == nullptr) || (Protocol == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  HandleProtocol *Found = FindOnHandle (*Record, *Protocol);
  if ((Found == nullptr) || (Found->Where->Interface != OldInterface)) {
    return EFI_NOT_FOUND;
  }

  //
  // The new interface goes to the end of the protocol's list, so that every
  // registration returns it again.
  //
  EFI_TPL OldTpl = mPlatform.Events ().Raise (TPL_NOTIFY);
  ProtocolEntry &Entry = *Found->Protocol;
  Unlink (Entry, Found->Where);
  Entry.Interfaces.push_back (InterfaceRecord{Record, NewInterface});
  Found->Where = std::prev (Entry.Interfaces.end ());
  Notify (Entry);
  mPlatform.Events ().Restore (OldTpl);
  return EFI_SUCCESS;
}

EFI_STATUS
HostHandles::Open (EFI_HANDLE Handle, const EFI_GUID *Protocol, VOID **Interface, UINT32 Attributes)
{
  if ((Protocol == nullptr) || ((Interface == nullptr) && (Attributes != EFI_OPEN_PROTOCOL_TEST_PROTOCOL))) {
    return EFI_INVALID_PARAMETER;
  }

  if ((Attributes != EFI_OPEN_PROTOCOL_BY_HANDLE_PROTOCOL) && (Attributes != EFI_OPEN_PROTOCOL_GET_PROTOCOL) &&
      (Attributes != EFI_OPEN_PROTOCOL_TEST_PROTOCOL)) {
    mPlatform.RecordError ("unexpected call: OpenProtocol with attributes " + std::to_string (Attributes) +
                           " is not simulated");
    return EFI_UNSUPPORTED;
  }

  if (Interface != nullptr) {
    *Interface = nullptr;
  }

  HandleRecord *Record = LiveHandle (Handle);
  if (Record == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  const HandleProtocol *Found = FindOnHandle (*Record, *Protocol);
  if (Found == nullptr) {
    return EFI_UNSUPPORTED;
  }

  if (Attributes != EFI_OPEN_PROTOCOL_TEST_PROTOCOL) {
    *Interface = Found->Where->Interface;
  }

  return EFI_SUCCESS;
}

VOID
HostHandles::ForgetEvent (EFI_EVENT Event)
{
  for (auto &Entry : mProtocols) {
    auto &List = Entry.second.Registrations;
    for (auto Record = List.begin (); Record != List.end ();) {
      if ((*Record)->Event == Event) {
        mLiveRegistrations.erase (*Record);
        Record = List.erase (Record);
      } else {
        ++Record;
      }
    }
  }
}

//
// Tests
//

EFI_HANDLE
HostHandles::InstallProtocol (const EFI_GUID &Guid, VOID *Interface, EFI_HANDLE Handle)
{
  EFI_STATUS Status = Install (&Handle, &Guid, Interface);

  if (EFI_ERROR (Status)) {
    ADD_FAILURE () << "InstallProtocol " << HostGuidText (Guid) << " failed: 0x" << std::hex << Status;
    return nullptr;
  }

  return Handle;
}

EFI_STATUS
HostHandles::UninstallProtocol (EFI_HANDLE Handle, const EFI_GUID &Guid, VOID *Interface)
{
  return Uninstall (Handle, &Guid, Interface);
}

bool
HostHandles::IsHandle (EFI_HANDLE Handle) const
{
  return LiveHandle (Handle) != nullptr;
}

bool
HostHandles::HasProtocol (EFI_HANDLE Handle, const EFI_GUID &Guid) const
{
  HandleRecord *Record = LiveHandle (Handle);
  return (Record != nullptr) && (FindOnHandle (*Record, Guid) != nullptr);
}

VOID *
HostHandles::Interface (EFI_HANDLE Handle, const EFI_GUID &Guid) const
{
  HandleRecord *Record = LiveHandle (Handle);
  const HandleProtocol *Found = (Record == nullptr) ? nullptr : FindOnHandle (*Record, Guid);
  return (Found == nullptr) ? nullptr : Found->Where->Interface;
}

std::vector<EFI_HANDLE>
HostHandles::HandlesWith (const EFI_GUID &Guid) const
{
  std::vector<EFI_HANDLE> Found;

  (VOID) Search (ByProtocol, &Guid, nullptr, Found);
  return Found;
}

std::vector<EFI_HANDLE>
HostHandles::AllHandles () const
{
  std::vector<EFI_HANDLE> Found;

  (VOID) Search (::AllHandles, nullptr, nullptr, Found);
  return Found;
}

UINTN
HostHandles::RegistrationCount (const EFI_GUID &Guid) const
{
  const ProtocolEntry *Protocol = FindEntry (Guid);
  return (Protocol == nullptr) ? 0 : Protocol->Registrations.size ();
}

//
// Services
//

EFI_STATUS EFIAPI
HostHandles::InstallProtocolInterfaceService (IN OUT EFI_HANDLE *Handle,
                                              IN EFI_GUID *Protocol,
                                              IN EFI_INTERFACE_TYPE InterfaceType,
                                              IN VOID *Interface)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::InstallProtocolInterface, Protocol)) {
    return *Failure;
  }

  if (InterfaceType != EFI_NATIVE_INTERFACE) {
    return EFI_INVALID_PARAMETER;
  }

  return Platform.Handles ().Install (Handle, Protocol, Interface);
}

EFI_STATUS EFIAPI
HostHandles::ReinstallProtocolInterfaceService (IN EFI_HANDLE Handle,
                                                IN EFI_GUID *Protocol,
                                                IN VOID *OldInterface,
                                                IN VOID *NewInterface)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::ReinstallProtocolInterface, Protocol)) {
    return *Failure;
  }

  return Platform.Handles ().Reinstall (Handle, Protocol, OldInterface, NewInterface);
}

EFI_STATUS EFIAPI
HostHandles::UninstallProtocolInterfaceService (IN EFI_HANDLE Handle, IN EFI_GUID *Protocol, IN VOID *Interface)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::UninstallProtocolInterface, Protocol)) {
    return *Failure;
  }

  return Platform.Handles ().Uninstall (Handle, Protocol, Interface);
}

EFI_STATUS EFIAPI
HostHandles::HandleProtocolService (IN EFI_HANDLE Handle, IN EFI_GUID *Protocol, OUT VOID **Interface)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::HandleProtocol, Protocol)) {
    return *Failure;
  }

  return Platform.Handles ().Open (Handle, Protocol, Interface, EFI_OPEN_PROTOCOL_BY_HANDLE_PROTOCOL);
}

EFI_STATUS EFIAPI
HostHandles::OpenProtocolService (IN EFI_HANDLE Handle,
                                  IN EFI_GUID *Protocol,
                                  OUT VOID **Interface,
                                  IN EFI_HANDLE AgentHandle,
                                  IN EFI_HANDLE ControllerHandle,
                                  IN UINT32 Attributes)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::OpenProtocol, Protocol)) {
    return *Failure;
  }

  return Platform.Handles ().Open (Handle, Protocol, Interface, Attributes);
}

EFI_STATUS EFIAPI
HostHandles::ProtocolsPerHandleService (IN EFI_HANDLE Handle,
                                        OUT EFI_GUID ***ProtocolBuffer,
                                        OUT UINTN *ProtocolBufferCount)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::ProtocolsPerHandle)) {
    return *Failure;
  }

  const HandleRecord *Record = Platform.Handles ().LiveHandle (Handle);
  if ((Record == nullptr) || (ProtocolBuffer == nullptr) || (ProtocolBufferCount == nullptr)) {
    return EFI_INVALID_PARAMETER;
  }

  VOID *Buffer = nullptr;
  EFI_STATUS Status =
    Platform.Pool ().AllocateForCaller (EfiBootServicesData, Record->Protocols.size () * sizeof (EFI_GUID *), &Buffer);
  if (EFI_ERROR (Status)) {
    return EFI_OUT_OF_RESOURCES;
  }

  EFI_GUID **Guids = static_cast<EFI_GUID **> (Buffer);
  for (UINTN Index = 0; Index < Record->Protocols.size (); Index++) {
    Guids[Index] = &Record->Protocols[Index].Protocol->Guid;
  }

  *ProtocolBuffer = Guids;
  *ProtocolBufferCount = Record->Protocols.size ();
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostHandles::DisconnectControllerService (IN EFI_HANDLE ControllerHandle,
                                          IN EFI_HANDLE DriverImageHandle,
                                          IN EFI_HANDLE ChildHandle)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostHandles &Handles = Platform.Handles ();
  EFI_STATUS Status = EFI_SUCCESS;

  //
  // No driver model is simulated: a valid call has nothing to stop and succeeds,
  // unless a test injected another result. Every call is recorded.
  //
  if (auto Failure = Platform.Calls ().Enter (HostService::DisconnectController)) {
    Status = *Failure;
  } else if (!Handles.IsHandle (ControllerHandle) ||
             ((DriverImageHandle != nullptr) && !Handles.IsHandle (DriverImageHandle)) ||
             ((ChildHandle != nullptr) && !Handles.IsHandle (ChildHandle))) {
    Status = EFI_INVALID_PARAMETER;
  }

  Handles.mDisconnects.push_back (HostDisconnect{ControllerHandle, DriverImageHandle, ChildHandle, Status});
  return Status;
}

VOID
HostHandles::Publish (EFI_BOOT_SERVICES &BootServices)
{
  BootServices.InstallProtocolInterface = InstallProtocolInterfaceService;
  BootServices.ReinstallProtocolInterface = ReinstallProtocolInterfaceService;
  BootServices.UninstallProtocolInterface = UninstallProtocolInterfaceService;
  BootServices.HandleProtocol = HandleProtocolService;
  BootServices.OpenProtocol = OpenProtocolService;
  BootServices.ProtocolsPerHandle = ProtocolsPerHandleService;
  BootServices.DisconnectController = DisconnectControllerService;
  BootServices.RegisterProtocolNotify = RegisterProtocolNotifyService;
  BootServices.LocateHandle = LocateHandleService;
  BootServices.LocateHandleBuffer = LocateHandleBufferService;
  BootServices.LocateProtocol = LocateProtocolService;
  BootServices.InstallMultipleProtocolInterfaces = InstallMultipleProtocolInterfacesService;
  BootServices.UninstallMultipleProtocolInterfaces = UninstallMultipleProtocolInterfacesService;
}
