/** @file
  The platform around the UI driver, as one boot-service driver: the page
  engine and UI framework stand-ins (drawing on the Graphics Output Protocol,
  events from the keyboard and the clock), and the services the UI driver
  hands over to. Configured from UEFI variables (DemoConfiguration.h). The
  firmware's own SMBIOS, boot logo, variable and PCD services are used as they
  are; the PCD protocol only gets an answer for the UI driver's token.
**/
#include "DemoConfiguration.h"
#include "PcdTokenAnswer.h"
#include "ServiceScreens.h"

#include <FirmwareCommon/SerialLog.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <StandIns/DemoLogo.h>
#include <StandIns/PageEngineStandIn.h>
#include <StandIns/ServiceStandIns.h>
#include <StandIns/StandInFirmwareEvents.h>
#include <StandIns/StandInRender.h>
#include <StandIns/UiFrameworkStandIn.h>

typedef EFI_STATUS (EFIAPI *INSTALL_STAND_IN) (IN OUT EFI_HANDLE *Handle);

typedef struct {
  CONST CHAR8 *Name;
  INSTALL_STAND_IN Install;
} STAND_IN_PART;

STATIC CONST STAND_IN_PART mParts[] = {
  {"page engine", InstallPageEngineStandIn},
  {"UI framework", InstallUiFrameworkStandIn},
  {"settings", InstallSettingsStandIn},
  {"password service", InstallServiceRequestStandIn},
  {"boot menu", InstallBootMenuStandIn},
  {"Setup state", InstallSetupStateStandIn},
  {"diagnostics", InstallDiagnosticsStandIn},
  {"personality module", InstallPersonalityModuleStandIn},
  {"module registry", InstallModuleRegistryStandIn},
};

extern "C" EFI_STATUS EFIAPI
_ModuleEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  EFI_HANDLE Handle = nullptr;
  CONST VOID *Logo;
  UINTN LogoSize;
  BOOLEAN UiModeZero;
  EFI_STATUS Status;

  gImageHandle = ImageHandle;
  gST = SystemTable;
  gBS = SystemTable->BootServices;
  gRT = SystemTable->RuntimeServices;

  //
  // The configuration is in place before the first protocol appears: the UI
  // driver may start the moment the page engine and the framework are there.
  //
  UiModeZero = LoadDemoConfiguration ();
  Logo = DemoLogoBmp (&LogoSize);
  StandInSetPersonalityLogo (Logo, LogoSize, (UINT32)LogoSize);
  Status = AnswerUiModePcd (UiModeZero);
  if (EFI_ERROR (Status)) {
    SerialLogLine ("KESTUI-PLATFORM PCD answer not installed: %r", Status);
  }

  StandInStartRendering ();
  StandInUseFirmwareEvents ();
  WatchServiceScreens ();

  //
  // The page engine and the UI framework first: the UI driver waits for both.
  //
  for (CONST STAND_IN_PART &Part : mParts) {
    Status = Part.Install (&Handle);
    if (EFI_ERROR (Status)) {
      SerialLogLine ("KESTUI-PLATFORM %a not installed: %r", Part.Name, Status);
      return Status;
    }
  }

  SerialLogLine ("KESTUI-PLATFORM ready");
  return EFI_SUCCESS;
}
