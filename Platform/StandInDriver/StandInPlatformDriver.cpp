/** @file
  The platform around the UI driver, as one boot-service driver: the page
  engine and UI framework stand-ins (drawing on the Graphics Output Protocol,
  events from the keyboard and the clock), and the services the UI driver
  hands over to. Configured from UEFI variables (DemoConfiguration.h), which
  the boot-flow application sets before it loads this driver; dispatched from
  a firmware's flash, the driver sets them itself from QEMU's configuration
  file. The firmware's own SMBIOS, boot logo, variable and PCD services are
  used as they are; the PCD protocol only gets an answer for the UI driver's
  token.
**/
#include "DemoConfiguration.h"
#include "PcdTokenAnswer.h"
#include "ServiceScreens.h"

#include <FirmwareCommon/BootConfig.h>
#include <FirmwareCommon/QemuFwCfg.h>
#include <FirmwareCommon/SerialLog.h>
extern "C" {
#include <Library/MemoryAllocationLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/GraphicsOutput.h>
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

//
// The page engine last: a UI driver that is already waiting for it runs its
// second stage the moment it appears, and finds the framework and the
// password service there then (dispatched from a flash, it may well start
// before this driver).
//
STATIC CONST STAND_IN_PART mParts[] = {
  {"UI framework", InstallUiFrameworkStandIn},
  {"settings", InstallSettingsStandIn},
  {"password service", InstallServiceRequestStandIn},
  {"boot menu", InstallBootMenuStandIn},
  {"Setup state", InstallSetupStateStandIn},
  {"diagnostics", InstallDiagnosticsStandIn},
  {"personality module", InstallPersonalityModuleStandIn},
  {"module registry", InstallModuleRegistryStandIn},
  {"page engine", InstallPageEngineStandIn},
};

STATIC EFI_EVENT mGraphicsEvent = nullptr;
STATIC VOID *mGraphicsRegistration = nullptr;

/**
  Starts drawing once a Graphics Output Protocol is there; closes its own
  event when it has.
**/
STATIC
VOID EFIAPI
GraphicsOutputNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  if (StandInStartRendering () != EFI_NOT_FOUND) {
    gBS->CloseEvent (Event);
    mGraphicsEvent = nullptr;
  }
}

/**
  Starts drawing now, or when the graphics output appears: dispatched from a
  flash, this driver starts before the boot manager connects the video.
**/
STATIC
VOID
StartRenderingWhenPossible (VOID)
{
  if (StandInStartRendering () != EFI_NOT_FOUND) {
    return;
  }

  if (!EFI_ERROR (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, GraphicsOutputNotify, nullptr, &mGraphicsEvent))) {
    gBS->RegisterProtocolNotify (&gEfiGraphicsOutputProtocolGuid, mGraphicsEvent, &mGraphicsRegistration);
  }
}

/**
  Publishes QEMU's demo configuration file as the variables, when there is one.
  Without a hand-over in it, this platform hands over to the firmware.
**/
STATIC
VOID
PublishQemuDemoConfiguration (VOID)
{
  BOOT_CONFIG Config;
  VOID *Text = nullptr;
  UINTN Size = 0;

  if (EFI_ERROR (ReadQemuConfigFile (QEMU_DEMO_CONFIG_FILE, &Text, &Size))) {
    return;
  }

  ParseBootConfig ((CONST CHAR8 *)Text, Size, &Config);
  FreePool (Text);
  if (Config.HandOver == BootHandOverUnset) {
    Config.HandOver = BootHandOverFirmware;
  }

  PublishBootConfig (&Config);
}

/**
  Entry point of the platform stand-in driver (ENTRY_POINT of its INF).
**/
extern "C" EFI_STATUS EFIAPI
KestPlatformEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  EFI_HANDLE Handle = nullptr;
  CONST VOID *Logo;
  UINTN LogoSize;
  BOOLEAN UiModeZero;
  EFI_STATUS Status;

  //
  // The configuration is in place before the first protocol appears: the UI
  // driver may start the moment the page engine and the framework are there.
  //
  PublishQemuDemoConfiguration ();
  UiModeZero = LoadDemoConfiguration ();
  Logo = DemoLogoBmp (&LogoSize);
  StandInSetPersonalityLogo (Logo, LogoSize, (UINT32)LogoSize);
  Status = AnswerUiModePcd (UiModeZero);
  if (EFI_ERROR (Status)) {
    SerialLogLine ("KESTUI-PLATFORM PCD answer not installed: %r", Status);
  }

  StartRenderingWhenPossible ();
  StandInUseFirmwareEvents ();
  WatchServiceScreens ();

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
