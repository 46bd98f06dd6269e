/** @file
  InstallMultipleProtocolInterfaces and UninstallMultipleProtocolInterfaces:
  all pairs or none.
**/
#include <vector>

#include "HostHandles.h"
#include "HostPlatform.h"

namespace {

struct PROTOCOL_PAIR {
  EFI_GUID *Guid;
  VOID *Interface;
};

//
// Reads (GUID pointer, interface) pairs up to the null GUID pointer.
//
std::vector<PROTOCOL_PAIR>
ReadPairs (VA_LIST &Args)
{
  std::vector<PROTOCOL_PAIR> Pairs;

  for (;;) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr,clang-analyzer-valist.Uninitialized)
    EFI_GUID *Guid = VA_ARG (Args, EFI_GUID *);
    if (Guid == nullptr) {
      return Pairs;
    }

    VOID *Interface = VA_ARG (Args, VOID *); // NOLINT(performance-no-int-to-ptr)
    Pairs.push_back (PROTOCOL_PAIR{Guid, Interface});
  }
}

} // namespace

EFI_STATUS EFIAPI
HostHandles::InstallMultipleProtocolInterfacesService (IN OUT EFI_HANDLE *Handle, ...)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostHandles &Handles = Platform.Handles ();

  if (auto Failure = Platform.Calls ().Enter (HostService::InstallMultipleProtocolInterfaces)) {
    return *Failure;
  }

  if (Handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  VA_LIST Args;
  VA_START (Args, Handle);
  std::vector<PROTOCOL_PAIR> Pairs = ReadPairs (Args);
  VA_END (Args);

  //
  // Notifications run once every pair is installed, or none is.
  //
  EFI_TPL OldTpl = Platform.Events ().Raise (TPL_NOTIFY);
  EFI_HANDLE Original = *Handle;
  EFI_STATUS Status = EFI_SUCCESS;
  UINTN Installed = 0;

  for (; Installed < Pairs.size (); Installed++) {
    Status = Handles.Install (Handle, Pairs[Installed].Guid, Pairs[Installed].Interface);
    if (EFI_ERROR (Status)) {
      break;
    }
  }

  if (EFI_ERROR (Status)) {
    while (Installed > 0) {
      Installed--;
      Handles.Uninstall (*Handle, Pairs[Installed].Guid, Pairs[Installed].Interface);
    }

    *Handle = Original;
  }

  Platform.Events ().Restore (OldTpl);
  return Status;
}

EFI_STATUS EFIAPI
HostHandles::UninstallMultipleProtocolInterfacesService (IN EFI_HANDLE Handle, ...)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostHandles &Handles = Platform.Handles ();

  if (auto Failure = Platform.Calls ().Enter (HostService::UninstallMultipleProtocolInterfaces)) {
    return *Failure;
  }

  VA_LIST Args;
  VA_START (Args, Handle);
  std::vector<PROTOCOL_PAIR> Pairs = ReadPairs (Args);
  VA_END (Args);

  //
  // Checked first, so that a failure leaves the handle as it was.
  //
  HandleRecord *Record = Handles.LiveHandle (Handle);
  if (Record == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  for (const PROTOCOL_PAIR &Pair : Pairs) {
    const HandleProtocol *Found = FindOnHandle (*Record, *Pair.Guid);
    if ((Found == nullptr) || (Found->Where->Interface != Pair.Interface)) {
      return EFI_INVALID_PARAMETER;
    }
  }

  for (const PROTOCOL_PAIR &Pair : Pairs) {
    Handles.Uninstall (Handle, Pair.Guid, Pair.Interface);
  }

  return EFI_SUCCESS;
}
