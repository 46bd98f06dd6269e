/** @file
  Every table slot starts out pointing at a function of its own type that
  records an unexpected call and returns EFI_UNSUPPORTED; the parts of the
  platform then fill the slots that they simulate. Code that calls anything
  else fails its test instead of running into a null pointer.
**/
#include <string>

#include "HostPlatform.h"
#include "HostPlatformInternal.h"

namespace {

VOID
RecordUnexpected (const char *Slot)
{
  HostPlatform::Current ().RecordError (std::string ("unexpected call: ") + Slot + " is not simulated");
}

template <typename FUNCTION, typename NAME> struct Unexpected;

//
// EFI_TPL and EFI_STATUS are both UINTN: this covers every slot that returns a value.
//
template <typename NAME, typename... ARGS> struct Unexpected<UINTN (EFIAPI *) (ARGS...), NAME> {
  static UINTN EFIAPI
  Call (ARGS...)
  {
    RecordUnexpected (NAME::Text ());
    return EFI_UNSUPPORTED;
  }
};

template <typename NAME, typename... ARGS> struct Unexpected<UINTN (EFIAPI *) (ARGS..., ...), NAME> {
  static UINTN EFIAPI
  Call (ARGS..., ...)
  {
    RecordUnexpected (NAME::Text ());
    return EFI_UNSUPPORTED;
  }
};

template <typename NAME, typename... ARGS> struct Unexpected<VOID (EFIAPI *) (ARGS...), NAME> {
  static VOID EFIAPI
  Call (ARGS...)
  {
    RecordUnexpected (NAME::Text ());
  }
};

} // namespace

//
// A local class names the slot: it is a distinct type per use, so every slot gets a function of its own.
//
#define HOST_UNEXPECTED(Table, Slot, Prefix)                                                                           \
  do {                                                                                                                 \
    struct SlotName {                                                                                                  \
      static const char *                                                                                              \
      Text ()                                                                                                          \
      {                                                                                                                \
        return Prefix #Slot;                                                                                           \
      }                                                                                                                \
    };                                                                                                                 \
    (Table).Slot = Unexpected<decltype (Table.Slot), SlotName>::Call;                                                  \
  } while (FALSE)

VOID
HostPublishUnexpectedServices (EFI_BOOT_SERVICES &Bs, EFI_RUNTIME_SERVICES &Rt)
{
  HOST_UNEXPECTED (Bs, RaiseTPL, "gBS->");
  HOST_UNEXPECTED (Bs, RestoreTPL, "gBS->");
  HOST_UNEXPECTED (Bs, AllocatePages, "gBS->");
  HOST_UNEXPECTED (Bs, FreePages, "gBS->");
  HOST_UNEXPECTED (Bs, GetMemoryMap, "gBS->");
  HOST_UNEXPECTED (Bs, AllocatePool, "gBS->");
  HOST_UNEXPECTED (Bs, FreePool, "gBS->");
  HOST_UNEXPECTED (Bs, CreateEvent, "gBS->");
  HOST_UNEXPECTED (Bs, SetTimer, "gBS->");
  HOST_UNEXPECTED (Bs, WaitForEvent, "gBS->");
  HOST_UNEXPECTED (Bs, SignalEvent, "gBS->");
  HOST_UNEXPECTED (Bs, CloseEvent, "gBS->");
  HOST_UNEXPECTED (Bs, CheckEvent, "gBS->");
  HOST_UNEXPECTED (Bs, InstallProtocolInterface, "gBS->");
  HOST_UNEXPECTED (Bs, ReinstallProtocolInterface, "gBS->");
  HOST_UNEXPECTED (Bs, UninstallProtocolInterface, "gBS->");
  HOST_UNEXPECTED (Bs, HandleProtocol, "gBS->");
  HOST_UNEXPECTED (Bs, RegisterProtocolNotify, "gBS->");
  HOST_UNEXPECTED (Bs, LocateHandle, "gBS->");
  HOST_UNEXPECTED (Bs, LocateDevicePath, "gBS->");
  HOST_UNEXPECTED (Bs, InstallConfigurationTable, "gBS->");
  HOST_UNEXPECTED (Bs, LoadImage, "gBS->");
  HOST_UNEXPECTED (Bs, StartImage, "gBS->");
  HOST_UNEXPECTED (Bs, Exit, "gBS->");
  HOST_UNEXPECTED (Bs, UnloadImage, "gBS->");
  HOST_UNEXPECTED (Bs, ExitBootServices, "gBS->");
  HOST_UNEXPECTED (Bs, GetNextMonotonicCount, "gBS->");
  HOST_UNEXPECTED (Bs, Stall, "gBS->");
  HOST_UNEXPECTED (Bs, SetWatchdogTimer, "gBS->");
  HOST_UNEXPECTED (Bs, ConnectController, "gBS->");
  HOST_UNEXPECTED (Bs, DisconnectController, "gBS->");
  HOST_UNEXPECTED (Bs, OpenProtocol, "gBS->");
  HOST_UNEXPECTED (Bs, CloseProtocol, "gBS->");
  HOST_UNEXPECTED (Bs, OpenProtocolInformation, "gBS->");
  HOST_UNEXPECTED (Bs, ProtocolsPerHandle, "gBS->");
  HOST_UNEXPECTED (Bs, LocateHandleBuffer, "gBS->");
  HOST_UNEXPECTED (Bs, LocateProtocol, "gBS->");
  HOST_UNEXPECTED (Bs, InstallMultipleProtocolInterfaces, "gBS->");
  HOST_UNEXPECTED (Bs, UninstallMultipleProtocolInterfaces, "gBS->");
  HOST_UNEXPECTED (Bs, CalculateCrc32, "gBS->");
  HOST_UNEXPECTED (Bs, CopyMem, "gBS->");
  HOST_UNEXPECTED (Bs, SetMem, "gBS->");
  HOST_UNEXPECTED (Bs, CreateEventEx, "gBS->");

  HOST_UNEXPECTED (Rt, GetTime, "gRT->");
  HOST_UNEXPECTED (Rt, SetTime, "gRT->");
  HOST_UNEXPECTED (Rt, GetWakeupTime, "gRT->");
  HOST_UNEXPECTED (Rt, SetWakeupTime, "gRT->");
  HOST_UNEXPECTED (Rt, SetVirtualAddressMap, "gRT->");
  HOST_UNEXPECTED (Rt, ConvertPointer, "gRT->");
  HOST_UNEXPECTED (Rt, GetVariable, "gRT->");
  HOST_UNEXPECTED (Rt, GetNextVariableName, "gRT->");
  HOST_UNEXPECTED (Rt, SetVariable, "gRT->");
  HOST_UNEXPECTED (Rt, GetNextHighMonotonicCount, "gRT->");
  HOST_UNEXPECTED (Rt, ResetSystem, "gRT->");
  HOST_UNEXPECTED (Rt, UpdateCapsule, "gRT->");
  HOST_UNEXPECTED (Rt, QueryCapsuleCapabilities, "gRT->");
  HOST_UNEXPECTED (Rt, QueryVariableInfo, "gRT->");
}
