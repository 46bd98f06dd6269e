/** @file
  UI_FRAMEWORK_PROTOCOL of the stand-in: the three table pointers, the
  installation and the removal with the release of everything it holds.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/UefiBootServicesTableLib.h>

#include "StandInInternal.h"

STAND_IN_FRAMEWORK gStandInFramework;

STATIC UI_FRAMEWORK_PROTOCOL mFramework = {&gStandInServices, &gStandInAttributes, &gStandInPagesTable};

BOOLEAN
StandInEnterFramework (IN STAND_IN_OPERATION Operation,
                       IN CONST UINTN *Arguments,
                       IN UINTN ArgumentCount,
                       OUT EFI_STATUS *Status)
{
  if (!StandInEnter (Operation, Arguments, ArgumentCount, Status)) {
    return FALSE;
  }

  if (!gStandInFramework.Installed) {
    *Status = EFI_NOT_STARTED;
    return FALSE;
  }

  return TRUE;
}

EFI_STATUS
EFIAPI
InstallUiFrameworkStandIn (IN OUT EFI_HANDLE *Handle)
{
  EFI_STATUS Status;

  if (Handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (gBS == nullptr) {
    return EFI_NOT_READY;
  }

  if (gStandInFramework.Installed) {
    return EFI_ALREADY_STARTED;
  }

  //
  // Drivers waiting for the protocol are notified during the installation
  // and may call it at once: it must already work then.
  //
  gStandInFramework.Installed = TRUE;
  Status = gBS->InstallProtocolInterface (Handle, &gUiFrameworkProtocolGuid, EFI_NATIVE_INTERFACE, &mFramework);
  if (EFI_ERROR (Status)) {
    gStandInFramework.Installed = FALSE;
    return Status;
  }

  gStandInFramework.Handle = *Handle;
  return EFI_SUCCESS;
}

EFI_STATUS
EFIAPI
UninstallUiFrameworkStandIn (IN EFI_HANDLE Handle)
{
  EFI_STATUS Status;
  STAND_IN_EVENT_SOURCE Source;
  VOID *SourceContext;
  EFI_STATUS SessionStatus;

  if (!gStandInFramework.Installed || (gBS == nullptr)) {
    return EFI_NOT_STARTED;
  }

  if (Handle != gStandInFramework.Handle) {
    return EFI_INVALID_PARAMETER;
  }

  //
  // A running loop still uses the records that the removal would release.
  //
  if (gStandInFramework.State.LoopDepth != 0) {
    return EFI_ACCESS_DENIED;
  }

  Status = gBS->UninstallProtocolInterface (Handle, &gUiFrameworkProtocolGuid, &mFramework);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  StandInReleaseStrings ();
  StandInReleaseImages ();
  StandInReleaseDeliveries ();
  StandInFree (gStandInFramework.Modes);
  StandInFree (gStandInFramework.Packages);

  //
  // The embedder's settings outlive an installation; the rest starts afresh.
  //
  Source = gStandInFramework.Source;
  SourceContext = gStandInFramework.SourceContext;
  SessionStatus = gStandInFramework.SessionStatus;
  ZeroMem (&gStandInFramework, sizeof (gStandInFramework));
  gStandInFramework.Source = Source;
  gStandInFramework.SourceContext = SourceContext;
  gStandInFramework.SessionStatus = SessionStatus;
  return EFI_SUCCESS;
}
