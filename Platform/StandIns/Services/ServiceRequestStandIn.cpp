/** @file
  SERVICE_REQUEST_PROTOCOL of the stand-in: SubmitRequest hands the password
  family to the password service and records every call.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#include "ServiceStandInInternal.h"

STATIC STAND_IN_SERVICE_SLOT mServiceRequestSlot;
STATIC STAND_IN_SERVICE_REQUEST mRequests[STAND_IN_MAX_SERVICE_REQUESTS];
STATIC UINTN mRequestCount;

STATIC
EFI_STATUS
EFIAPI
ServiceSubmitRequest (IN EFI_GUID *RequestFamily, IN OUT VOID *Request)
{
  UINTN Arguments[] = {(UINTN)RequestFamily, (UINTN)Request};
  STAND_IN_SERVICE_REQUEST Record;
  BOOLEAN Acts;
  EFI_STATUS Status;

  Acts = StandInEnter (StandInOpSubmitRequest, Arguments, ARRAY_SIZE (Arguments), &Status);
  if (Acts && !mServiceRequestSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  if ((RequestFamily == nullptr) || (Request == nullptr)) {
    return Acts ? StandInReject (StandInOpSubmitRequest, EFI_INVALID_PARAMETER) : Status;
  }

  //
  // A call that a test makes fail is still recorded as it arrived, so that
  // the test sees what was sent and that the block was left alone.
  //
  ZeroMem (&Record, sizeof (Record));
  CopyGuid (&Record.Family, RequestFamily);
  if (CompareGuid (RequestFamily, &gPasswordRequestGuid)) {
    PASSWORD_REQUEST *Password = (PASSWORD_REQUEST *)Request;

    Record.Index = Password->Index;
    Record.Request = Password->Request;
    Record.PresetStatus = Password->Status;
    if (Acts) {
      Status = StandInPasswordRequest (Password, &Record);
      if (EFI_ERROR (Status)) {
        StandInReject (StandInOpSubmitRequest, Status);
      }
    }

    Record.ResultStatus = Password->Status;
  } else {
    Record.FirstByte = *(CONST UINT8 *)Request;
    if (Acts) {
      Status = EFI_UNSUPPORTED;
    }
  }

  Record.Returned = Status;
  if (mRequestCount < STAND_IN_MAX_SERVICE_REQUESTS) {
    CopyMem (&mRequests[mRequestCount], &Record, sizeof (Record));
  }

  mRequestCount++;
  return Status;
}

STATIC SERVICE_REQUEST_PROTOCOL mServiceRequest = {nullptr, nullptr, ServiceSubmitRequest};

EFI_STATUS
EFIAPI
InstallServiceRequestStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mServiceRequestSlot, &gServiceRequestProtocolGuid, &mServiceRequest, Handle);
}

EFI_STATUS
EFIAPI
UninstallServiceRequestStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mServiceRequestSlot, &gServiceRequestProtocolGuid, &mServiceRequest, Handle);
}

UINTN
StandInServiceRequestCount (VOID)
{
  return mRequestCount;
}

BOOLEAN
StandInGetServiceRequest (IN UINTN Index, OUT STAND_IN_SERVICE_REQUEST *Request)
{
  if ((Request == nullptr) || (Index >= mRequestCount) || (Index >= STAND_IN_MAX_SERVICE_REQUESTS)) {
    return FALSE;
  }

  CopyMem (Request, &mRequests[Index], sizeof (*Request));
  return TRUE;
}

VOID
StandInResetServiceRequests (VOID)
{
  ZeroMem (mRequests, sizeof (mRequests));
  mRequestCount = 0;
}
