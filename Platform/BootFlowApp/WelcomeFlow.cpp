/** @file
  The welcome page through UI_DRIVER_PROTOCOL, as a platform's boot flow
  drives it.
**/
#include "BootFlows.h"

#include <FirmwareCommon/SerialLog.h>
#include <Library/CompileTimeLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/UiDriver.h>
#include <Protocol/UiFramework.h>

//
// The progress stops short of 100: at 100 the page would close at its next
// event, and the countdown is to run in the event loop.
//
#define LAST_PROGRESS 96

STATIC constexpr auto mProgressMessage = CompileTime::MakeWideString (u"Initialising devices");

VOID
RunWelcomeFlow (IN CONST BOOT_CONFIG *Config)
{
  UI_DRIVER_PROTOCOL *UiDriver = nullptr;
  UI_FRAMEWORK_PROTOCOL *Framework = nullptr;
  EFI_STATUS Status;

  if (EFI_ERROR (gBS->LocateProtocol (&gUiDriverProtocolGuid, nullptr, (VOID **)&UiDriver)) ||
      EFI_ERROR (gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&Framework))) {
    SerialLogLine ("KESTUI-BOOT no UI driver or UI framework");
    return;
  }

  UiDriver->ShowWelcomePage ();
  SerialLogLine ("KESTUI-BOOT welcome shown");
  for (UINTN Step = 0; Step < Config->Steps; Step++) {
    UiDriver->UpdateWelcomeProgress ((CHAR16 *)mProgressMessage.Text, (Step * LAST_PROGRESS) / Config->Steps);
    gBS->Stall (Config->StepMilliseconds * 1000);
  }

  SerialLogLine ("KESTUI-BOOT initialised");
  Status = Framework->Pages->RunEventLoop ();
  SerialLogLine ("KESTUI-BOOT event loop ended: %r", Status);
  UiDriver->FinishWelcomePage ();
  SerialLogLine ("KESTUI-BOOT welcome finished");
}
