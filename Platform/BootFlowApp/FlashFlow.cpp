/** @file
  A firmware update on the flash page through FLASH_UPDATE_PAGE_PROTOCOL, as
  a flash client drives it.
**/
#include "BootFlows.h"

#include <FirmwareCommon/SerialLog.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/FlashUpdatePage.h>
#include <Protocol/UiFramework.h>

#define FLASH_PERCENT_STEP 5
#define FLASH_HALFWAY 50
#define FLASH_HALFWAY_HOLD_MICROSECONDS 1500000
#define FLASH_RESULT_HOLD_MICROSECONDS 2000000

STATIC CHAR8 mWritingText[] = "Writing the firmware image";
STATIC CHAR8 mVerifyingText[] = "Verifying";

VOID
RunFlashFlow (IN CONST BOOT_CONFIG *Config)
{
  FLASH_UPDATE_PAGE_PROTOCOL *Page = nullptr;
  UI_FRAMEWORK_PROTOCOL *Framework = nullptr;

  if (EFI_ERROR (gBS->LocateProtocol (&gFlashUpdatePageProtocolGuid, nullptr, (VOID **)&Page)) ||
      EFI_ERROR (gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&Framework))) {
    SerialLogLine ("KESTUI-BOOT no flash page or UI framework");
    return;
  }

  for (UINTN Index = 0; Index < Config->OutcomeCount; Index++) {
    Page->Show ();
    Page->SetStatusText (mWritingText);
    for (UINTN Percent = 0; Percent <= 100; Percent += FLASH_PERCENT_STEP) {
      Page->SetProgress (Percent);
      if (Percent == FLASH_HALFWAY) {
        SerialLogLine ("KESTUI-BOOT flash halfway");
        gBS->Stall (FLASH_HALFWAY_HOLD_MICROSECONDS);
        Page->SetStatusText (mVerifyingText);
      } else {
        gBS->Stall (Config->StepMilliseconds * 1000);
      }
    }

    Page->ShowResult (Config->Outcomes[Index]);
    SerialLogLine ("KESTUI-BOOT flash outcome %u", Config->Outcomes[Index]);
    gBS->Stall (FLASH_RESULT_HOLD_MICROSECONDS);

    //
    // At 100 % the page closes at its first event.
    //
    Framework->Pages->RunEventLoop ();
  }

  SerialLogLine ("KESTUI-BOOT flash finished");
}
