/** @file
  The simulated ResetSystem: recorded, and then it returns.
**/
#include "HostReset.h"

#include "HostPlatform.h"

VOID EFIAPI
HostReset::ResetSystemService (IN EFI_RESET_TYPE ResetType,
                               IN EFI_STATUS ResetStatus,
                               IN UINTN DataSize,
                               IN VOID *ResetData)
{
  HostPlatform &Platform = HostPlatform::Current ();
  HostResetCall Call = {ResetType, ResetStatus, {}};

  Platform.Calls ().Enter (HostService::ResetSystem);
  if ((ResetData != nullptr) && (DataSize != 0)) {
    const UINT8 *Bytes = static_cast<const UINT8 *> (ResetData);
    Call.Data.assign (Bytes, Bytes + DataSize);
  }

  Platform.Reset ().mCalls.push_back (Call);
}

VOID
HostReset::Publish (EFI_RUNTIME_SERVICES &RuntimeServices)
{
  RuntimeServices.ResetSystem = ResetSystemService;
}
