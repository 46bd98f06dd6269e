/** @file
  Simulated handle database: protocol installation, searches and protocol
  notifications, with the ordering and statuses of EDK II's DXE core.

  Each protocol keeps its interfaces in installation order (a reinstalled one
  moves to the end). A notification registration is a position in that list:
  LocateHandle (ByRegisterNotify) and LocateProtocol (Registration) return the
  next interface after it, one per call, and advance it only on success. A new
  registration starts at the beginning of the list, so protocols installed
  before it are returned too. Every install or reinstall of a protocol signals
  the events registered for it; their notifications run before the install
  returns when the caller's TPL is below theirs.

  Handles and registrations are never reused: a stale one is always rejected.
**/
#ifndef HOST_HANDLES_H_
#define HOST_HANDLES_H_

#include <deque>
#include <list>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include <Uefi.h>

#include "HostGuid.h"

class HostPlatform;

///
/// One DisconnectController call.
///
struct HostDisconnect {
  EFI_HANDLE ControllerHandle;
  EFI_HANDLE DriverImageHandle;
  EFI_HANDLE ChildHandle;
  EFI_STATUS Status; ///< what the call returned
};

class HostHandles {
public:
  explicit HostHandles (HostPlatform &Platform) : mPlatform (Platform)
  {}

  HostHandles (const HostHandles &) = delete;
  HostHandles &operator= (const HostHandles &) = delete;

  /**
    Installs Interface for Guid, as firmware or another driver would (not
    counted as a call, no injected failure; notifications run as for any
    install). A failure fails the test.

    @return the handle (new when Handle is null), or null on failure.
  **/
  EFI_HANDLE InstallProtocol (const EFI_GUID &Guid, VOID *Interface, EFI_HANDLE Handle = nullptr);

  /** Uninstalls Interface for Guid from Handle, as firmware would. @return the status. **/
  EFI_STATUS UninstallProtocol (EFI_HANDLE Handle, const EFI_GUID &Guid, VOID *Interface);

  /** @return whether Handle exists (it has at least one protocol). **/
  bool IsHandle (EFI_HANDLE Handle) const;

  /** @return whether Handle carries Guid. **/
  bool HasProtocol (EFI_HANDLE Handle, const EFI_GUID &Guid) const;

  /** @return the interface of Guid on Handle, or null (also when it is installed as null). **/
  VOID *Interface (EFI_HANDLE Handle, const EFI_GUID &Guid) const;

  /** @return the handles that carry Guid, in the order LocateHandle returns them. **/
  std::vector<EFI_HANDLE> HandlesWith (const EFI_GUID &Guid) const;

  /** @return every handle, oldest first. **/
  std::vector<EFI_HANDLE> AllHandles () const;

  /** @return the live notification registrations for Guid (closing the event ends one). **/
  UINTN RegistrationCount (const EFI_GUID &Guid) const;

  /** @return every DisconnectController call, in order. **/
  const std::vector<HostDisconnect> &
  Disconnects () const
  {
    return mDisconnects;
  }

  //
  // Used by the platform.
  //

  EFI_STATUS Install (IN OUT EFI_HANDLE *Handle, IN CONST EFI_GUID *Protocol, IN VOID *Interface);
  EFI_STATUS Uninstall (IN EFI_HANDLE Handle, IN CONST EFI_GUID *Protocol, IN VOID *Interface);

  /** Ends the registrations of Event; called when it is closed. **/
  VOID ForgetEvent (EFI_EVENT Event);

  VOID Publish (EFI_BOOT_SERVICES &BootServices);

private:
  struct HandleRecord;
  struct ProtocolEntry;

  struct InterfaceRecord {
    HandleRecord *Handle;
    VOID *Interface;
  };

  using InterfaceList = std::list<InterfaceRecord>;

  struct Registration {
    ProtocolEntry *Protocol;
    EFI_EVENT Event;
    bool AtHead;                  ///< nothing returned yet: the next is the first of the list
    InterfaceList::iterator Last; ///< the interface returned last
  };

  struct ProtocolEntry {
    EFI_GUID Guid;
    InterfaceList Interfaces;
    std::vector<Registration *> Registrations;
  };

  struct HandleProtocol {
    ProtocolEntry *Protocol;
    InterfaceList::iterator Where;
  };

  struct HandleRecord {
    std::vector<HandleProtocol> Protocols; ///< never empty while the handle lives
  };

  // Services (HostHandles.cpp)
  static EFI_STATUS EFIAPI InstallProtocolInterfaceService (IN OUT EFI_HANDLE *Handle,
                                                            IN EFI_GUID *Protocol,
                                                            IN EFI_INTERFACE_TYPE InterfaceType,
                                                            IN VOID *Interface);
  static EFI_STATUS EFIAPI ReinstallProtocolInterfaceService (IN EFI_HANDLE Handle,
                                                              IN EFI_GUID *Protocol,
                                                              IN VOID *OldInterface,
                                                              IN VOID *NewInterface);
  static EFI_STATUS EFIAPI UninstallProtocolInterfaceService (IN EFI_HANDLE Handle,
                                                              IN EFI_GUID *Protocol,
                                                              IN VOID *Interface);
  static EFI_STATUS EFIAPI HandleProtocolService (IN EFI_HANDLE Handle, IN EFI_GUID *Protocol, OUT VOID **Interface);
  static EFI_STATUS EFIAPI OpenProtocolService (IN EFI_HANDLE Handle,
                                                IN EFI_GUID *Protocol,
                                                OUT VOID **Interface,
                                                IN EFI_HANDLE AgentHandle,
                                                IN EFI_HANDLE ControllerHandle,
                                                IN UINT32 Attributes);
  static EFI_STATUS EFIAPI ProtocolsPerHandleService (IN EFI_HANDLE Handle,
                                                      OUT EFI_GUID ***ProtocolBuffer,
                                                      OUT UINTN *ProtocolBufferCount);
  static EFI_STATUS EFIAPI DisconnectControllerService (IN EFI_HANDLE ControllerHandle,
                                                        IN EFI_HANDLE DriverImageHandle,
                                                        IN EFI_HANDLE ChildHandle);

  // Services (HostLocate.cpp)
  static EFI_STATUS EFIAPI RegisterProtocolNotifyService (IN EFI_GUID *Protocol,
                                                          IN EFI_EVENT Event,
                                                          OUT VOID **Registration);
  static EFI_STATUS EFIAPI LocateHandleService (IN EFI_LOCATE_SEARCH_TYPE SearchType,
                                                IN EFI_GUID *Protocol,
                                                IN VOID *SearchKey,
                                                IN OUT UINTN *BufferSize,
                                                OUT EFI_HANDLE *Buffer);
  static EFI_STATUS EFIAPI LocateHandleBufferService (IN EFI_LOCATE_SEARCH_TYPE SearchType,
                                                      IN EFI_GUID *Protocol,
                                                      IN VOID *SearchKey,
                                                      OUT UINTN *NoHandles,
                                                      OUT EFI_HANDLE **Buffer);
  static EFI_STATUS EFIAPI LocateProtocolService (IN EFI_GUID *Protocol, IN VOID *Registration, OUT VOID **Interface);

  // Services (HostMultipleProtocols.cpp)
  static EFI_STATUS EFIAPI InstallMultipleProtocolInterfacesService (IN OUT EFI_HANDLE *Handle, ...);
  static EFI_STATUS EFIAPI UninstallMultipleProtocolInterfacesService (IN EFI_HANDLE Handle, ...);

  // Database (HostHandles.cpp)
  HandleRecord *LiveHandle (EFI_HANDLE Handle) const;
  ProtocolEntry &Entry (const EFI_GUID &Guid);
  const ProtocolEntry *FindEntry (const EFI_GUID &Guid) const;
  static HandleProtocol *FindOnHandle (HandleRecord &Record, const EFI_GUID &Guid);
  VOID Unlink (ProtocolEntry &Protocol, InterfaceList::iterator Where);
  VOID Notify (ProtocolEntry &Protocol);
  EFI_STATUS Reinstall (EFI_HANDLE Handle, const EFI_GUID *Protocol, VOID *OldInterface, VOID *NewInterface);
  EFI_STATUS Open (EFI_HANDLE Handle, const EFI_GUID *Protocol, VOID **Interface, UINT32 Attributes);

  // Searches (HostLocate.cpp)
  Registration *LiveRegistration (const VOID *Key) const;
  static InterfaceList::iterator NextFor (Registration &Record);
  EFI_STATUS Search (EFI_LOCATE_SEARCH_TYPE SearchType,
                     const EFI_GUID *Protocol,
                     VOID *SearchKey,
                     std::vector<EFI_HANDLE> &Found) const;
  EFI_STATUS Locate (EFI_LOCATE_SEARCH_TYPE SearchType,
                     const EFI_GUID *Protocol,
                     VOID *SearchKey,
                     UINTN *BufferSize,
                     EFI_HANDLE *Buffer);

  HostPlatform &mPlatform;
  std::vector<std::unique_ptr<HandleRecord>> mHandles; ///< every handle ever made, oldest first
  std::unordered_map<const VOID *, HandleRecord *> mLiveHandles;
  std::map<EFI_GUID, ProtocolEntry, HostGuidLess> mProtocols;
  std::deque<Registration> mRegistrations; ///< every registration ever made; stable addresses
  std::unordered_map<const VOID *, Registration *> mLiveRegistrations;
  std::vector<HostDisconnect> mDisconnects;
};

#endif
