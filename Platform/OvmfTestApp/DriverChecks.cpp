/** @file
  Drives the UI driver through its life in real firmware: started before the
  page engine exists, it must wait; once the page engine is installed its two
  protocols and its strings appear; after unload all of them are gone.
**/
#include "DriverChecks.h"

#include "StringChecks.h"
#include "TestReport.h"
#include <FirmwareCommon/OwnVolumeFiles.h>

#include <Library/CompileTimeLib.h>
extern "C" {
#include <Library/MemoryAllocationLib.h>
#include <Library/PrintLib.h>
}
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/FlashUpdatePage.h>
#include <Protocol/UiDriver.h>
#include <StandIns/PageEngineStandIn.h>

STATIC constexpr auto mDriverPath = CompileTime::MakeWideString (u"\\UserInterface.efi");

//
// The operations at the start of each protocol record; every one must be set.
//
#define UI_DRIVER_OPERATIONS 9
#define FLASH_PAGE_OPERATIONS 4

EFI_HANDLE
LoadAndStartDriver (VOID)
{
  EFI_HANDLE Driver = nullptr;
  VOID *Image = nullptr;
  UINTN Size = 0;
  EFI_STATUS Status;

  Status = ReadFileFromOwnVolume (mDriverPath.Text, &Image, &Size);
  if (!CheckStatus ("driver image read from boot volume", Status, EFI_SUCCESS)) {
    return nullptr;
  }

  Status = gBS->LoadImage (FALSE, gImageHandle, nullptr, Image, Size, &Driver);
  FreePool (Image);
  if (!CheckStatus ("driver image loaded", Status, EFI_SUCCESS)) {
    return nullptr;
  }

  //
  // A driver whose entry fails is unloaded by the firmware at once, so its
  // handle is of no further use.
  //
  Status = gBS->StartImage (Driver, nullptr, nullptr);
  if (!CheckStatus ("driver entry returned success", Status, EFI_SUCCESS)) {
    return nullptr;
  }

  return Driver;
}

/**
  Checks whether Protocol is on the driver's image handle; when it should be,
  its first Operations function pointers must all be set.
**/
STATIC
VOID
CheckProtocolOnDriver (IN EFI_HANDLE Driver,
                       IN EFI_GUID *Protocol,
                       IN CONST CHAR8 *Name,
                       IN UINTN Operations,
                       IN BOOLEAN Expected,
                       IN CONST CHAR8 *When)
{
  VOID **Interface = nullptr;
  CHAR8 What[64];
  EFI_STATUS Status;

  AsciiSPrint (What, sizeof (What), "%a %a %a", Name, Expected ? "installed" : "absent", When);
  Status = gBS->HandleProtocol (Driver, Protocol, (VOID **)&Interface);
  if (!Expected) {
    CheckStatus (What, Status, EFI_UNSUPPORTED);
    return;
  }

  if (EFI_ERROR (Status) || (Interface == nullptr)) {
    ReportCheck (FALSE, What, "%r, interface %p", Status, Interface);
    return;
  }

  for (UINTN Index = 0; Index < Operations; Index++) {
    if (Interface[Index] == nullptr) {
      ReportCheck (FALSE, What, "operation %lu is null", Index);
      return;
    }
  }

  ReportCheck (TRUE, What, nullptr);
}

/**
  Checks the driver's two protocols on its image handle.
**/
STATIC
VOID
CheckDriverProtocols (IN EFI_HANDLE Driver, IN BOOLEAN Expected, IN CONST CHAR8 *When)
{
  CheckProtocolOnDriver (Driver, &gUiDriverProtocolGuid, "UI driver protocol", UI_DRIVER_OPERATIONS, Expected, When);
  CheckProtocolOnDriver (Driver, &gFlashUpdatePageProtocolGuid, "flash page protocol", FLASH_PAGE_OPERATIONS, Expected,
                         When);
}

/**
  Checks that no handle in the system carries Protocol any more.
**/
STATIC
VOID
CheckProtocolGone (IN EFI_GUID *Protocol, IN CONST CHAR8 *What)
{
  VOID *Interface = nullptr;

  CheckStatus (What, gBS->LocateProtocol (Protocol, nullptr, &Interface), EFI_NOT_FOUND);
}

VOID
RunDriverChecks (VOID)
{
  EFI_HANDLE Driver;
  EFI_HANDLE PageEngine = nullptr;

  Driver = LoadAndStartDriver ();
  if (Driver == nullptr) {
    return;
  }

  CheckDriverProtocols (Driver, FALSE, "before page engine");
  CheckDriverStringsAbsent ("before page engine");

  if (CheckStatus ("page engine stand-in installed", InstallPageEngineStandIn (&PageEngine), EFI_SUCCESS)) {
    CheckDriverProtocols (Driver, TRUE, "after page engine");
    CheckDriverStrings (Driver);
  }

  if (!CheckStatus ("driver unloaded", gBS->UnloadImage (Driver), EFI_SUCCESS)) {
    return;
  }

  CheckProtocolGone (&gUiDriverProtocolGuid, "UI driver protocol gone after unload");
  CheckProtocolGone (&gFlashUpdatePageProtocolGuid, "flash page protocol gone after unload");
  CheckDriverStringsAbsent ("after unload");
}
