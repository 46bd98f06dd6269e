/** @file
  What the service stand-ins share: installation on a handle, the records of
  the hand-over services, and the reset of each file's configuration.

  Everything here is static storage, zero at load; no service uses pool.
**/
#ifndef SERVICE_STAND_IN_INTERNAL_H_
#define SERVICE_STAND_IN_INTERNAL_H_

#include <Protocol/ServiceRequest.h>
#include <StandIns/ServiceStandIns.h>
#include <StandIns/StandInCalls.h>
#include <Uefi.h>

#include "../StandInInternal.h"

///
/// Where one service is installed.
///
typedef struct {
  BOOLEAN Installed;
  EFI_HANDLE Handle;
} STAND_IN_SERVICE_SLOT;

/**
  Installs Interface under Guid on *Handle (a new handle when it is null).

  @retval EFI_SUCCESS            Installed; Slot records the handle.
  @retval EFI_INVALID_PARAMETER  Handle is null.
  @retval EFI_NOT_READY          gBS is not set.
  @retval EFI_ALREADY_STARTED    The service is installed already.
  @return the status of a failed InstallProtocolInterface.
**/
EFI_STATUS
StandInInstallService (IN OUT STAND_IN_SERVICE_SLOT *Slot,
                       IN EFI_GUID *Guid,
                       IN VOID *Interface,
                       IN OUT EFI_HANDLE *Handle);

/**
  Removes Interface from Handle.

  @retval EFI_SUCCESS            Uninstalled.
  @retval EFI_NOT_STARTED        Not installed.
  @retval EFI_INVALID_PARAMETER  Handle is not the handle it was installed on.
  @return the status of a failed UninstallProtocolInterface.
**/
EFI_STATUS
StandInUninstallService (IN OUT STAND_IN_SERVICE_SLOT *Slot,
                         IN EFI_GUID *Guid,
                         IN VOID *Interface,
                         IN EFI_HANDLE Handle);

/** @return the pointer that an address carried in a request block stands for. **/
inline VOID *
StandInAddressToPointer (IN UINT64 Address)
{
  return (VOID *)(UINTN)Address; // NOLINT(performance-no-int-to-ptr)
}

/**
  Handles a request of the password family (PasswordServiceStandIn.cpp) and
  fills the password fields of its record.

  @param[in,out] Request  The request block; its Status receives the verdict.
  @param[out]    Record   The record of the call.

  @retval EFI_SUCCESS            Handled; the verdict is in Request->Status.
  @retval EFI_INVALID_PARAMETER  A malformed block (see ServiceStandIns.h); also in Request->Status.
  @retval EFI_UNSUPPORTED        A request code that the service does not know; also in Request->Status.
**/
EFI_STATUS
StandInPasswordRequest (IN OUT PASSWORD_REQUEST *Request, OUT STAND_IN_SERVICE_REQUEST *Record);

///
/// What the boot menu, Setup state and diagnostics stand-ins received
/// (ServiceStandInState.cpp).
///
extern STAND_IN_SERVICE_STATE gStandInServiceState;

//
// Each file forgets its own configuration and records; StandInResetServices
// calls them all.
//
VOID StandInResetSettings (VOID);
VOID StandInResetServiceRequests (VOID);
VOID StandInResetPasswordService (VOID);
VOID StandInResetDiagnostics (VOID);
VOID StandInResetPcd (VOID);
VOID StandInResetBootLogo (VOID);
VOID StandInResetSmbios (VOID);
VOID StandInResetPersonalityModule (VOID);

#endif
