/** @file
  DIAGNOSTICS_LAUNCH_PROTOCOL of the stand-in: records what PrepareDiagnostics
  and StartDiagnostics receive. Diagnostics start only when prepared: each
  StartDiagnostics needs a successful PrepareDiagnostics since the last start.
**/
#include <Protocol/DiagnosticsLaunch.h>

#include "ServiceStandInInternal.h"

STATIC STAND_IN_SERVICE_SLOT mDiagnosticsSlot;
STATIC BOOLEAN mPrepared;

STATIC
EFI_STATUS
EFIAPI
DiagnosticsStart (
  IN DIAGNOSTICS_LAUNCH_PROTOCOL *This, IN UINTN Value1, IN UINTN Value2, OUT UINTN *Out1, OUT UINTN *Out2);

STATIC
EFI_STATUS
EFIAPI
DiagnosticsPrepare (
  IN DIAGNOSTICS_LAUNCH_PROTOCOL *This, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3, IN UINT16 *Target);

STATIC DIAGNOSTICS_LAUNCH_PROTOCOL mDiagnostics = {nullptr, DiagnosticsStart, nullptr, nullptr,
                                                   nullptr, nullptr,          nullptr, DiagnosticsPrepare};

STATIC
EFI_STATUS
EFIAPI
DiagnosticsPrepare (
  IN DIAGNOSTICS_LAUNCH_PROTOCOL *This, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3, IN UINT16 *Target)
{
  UINTN Arguments[] = {(UINTN)This, Value1, Value2, Value3, (UINTN)Target};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpPrepareDiagnostics, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mDiagnosticsSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  if (Target == nullptr) {
    return StandInReject (StandInOpPrepareDiagnostics, EFI_INVALID_PARAMETER);
  }

  gStandInServiceState.DiagnosticsPrepared++;
  gStandInServiceState.PrepareValues[0] = Value1;
  gStandInServiceState.PrepareValues[1] = Value2;
  gStandInServiceState.PrepareValues[2] = Value3;
  gStandInServiceState.PrepareTarget = *Target;
  gStandInServiceState.PrepareThisRight = (This == &mDiagnostics) ? TRUE : FALSE;
  mPrepared = TRUE;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
DiagnosticsStart (
  IN DIAGNOSTICS_LAUNCH_PROTOCOL *This, IN UINTN Value1, IN UINTN Value2, OUT UINTN *Out1, OUT UINTN *Out2)
{
  UINTN Arguments[] = {(UINTN)This, Value1, Value2, (UINTN)Out1, (UINTN)Out2};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpStartDiagnostics, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!mDiagnosticsSlot.Installed) {
    return EFI_NOT_STARTED;
  }

  if ((Out1 == nullptr) || (Out2 == nullptr)) {
    return StandInReject (StandInOpStartDiagnostics, EFI_INVALID_PARAMETER);
  }

  if (!mPrepared) {
    return StandInReject (StandInOpStartDiagnostics, EFI_NOT_READY);
  }

  mPrepared = FALSE;
  gStandInServiceState.DiagnosticsStarted++;
  gStandInServiceState.StartValues[0] = Value1;
  gStandInServiceState.StartValues[1] = Value2;
  gStandInServiceState.StartThisRight = (This == &mDiagnostics) ? TRUE : FALSE;
  *Out1 = 0;
  *Out2 = 0;
  return EFI_SUCCESS;
}

EFI_STATUS
EFIAPI
InstallDiagnosticsStandIn (IN OUT EFI_HANDLE *Handle)
{
  return StandInInstallService (&mDiagnosticsSlot, &gDiagnosticsLaunchProtocolGuid, &mDiagnostics, Handle);
}

EFI_STATUS
EFIAPI
UninstallDiagnosticsStandIn (IN EFI_HANDLE Handle)
{
  return StandInUninstallService (&mDiagnosticsSlot, &gDiagnosticsLaunchProtocolGuid, &mDiagnostics, Handle);
}

VOID
StandInResetDiagnostics (VOID)
{
  mPrepared = FALSE;
}
