/** @file
  Entry, second stage and unload of the UI driver.

  The entry point runs at once whatever is installed. Everything that needs the
  page engine waits in the second stage, which runs either inside the entry
  point or, once, from the notification of the page engine's installation.
**/
#include "UserInterface.h"
#include "FlashUpdatePage.h"
#include "PasswordPage.h"
#include "UICommon.h"
#include "UiResources.h"
#include "WelcomePage.h"

#include <Library/ModuleInfoLib.h>
#include <Library/PrerequisiteWaitLib.h>
#include <Library/TrackedAllocationLib.h>
#include <Library/TscTimerLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/LoadedImage.h>

#define TRACKED_POOL_FILE "Drivers/UserInterface/UserInterface"

EFI_HII_STRING_PROTOCOL *gHiiString = nullptr;
EFI_HII_DATABASE_PROTOCOL *gHiiDatabase = nullptr;
EFI_HII_CONFIG_ROUTING_PROTOCOL *gHiiConfigRouting = nullptr;
EFI_HII_FONT_PROTOCOL *gHiiFont = nullptr;
EFI_HII_IMAGE_PROTOCOL *gHiiImage = nullptr;
UI_FRAMEWORK_PROTOCOL *gUiFramework = nullptr;
PAGE_ENGINE_PROTOCOL *gPageEngine = nullptr;
UI_DRIVER_PROTOCOL *gUiDriverProtocol = nullptr;
FLASH_UPDATE_PAGE_PROTOCOL *gFlashUpdatePageProtocol = nullptr;
EFI_HANDLE gDriverHandle = nullptr;
EFI_HII_HANDLE gHiiHandle = nullptr;

STATIC LIST_ENTRY *mModuleList = nullptr;
STATIC EFI_EVENT mUiFrameworkEvent = nullptr;
STATIC VOID *mUiFrameworkRegistration = nullptr;
STATIC PREREQ_WAIT *mPageEngineWait = nullptr;

/**
  Locates the UI framework again; runs whenever one is installed.
**/
STATIC
VOID EFIAPI
UiFrameworkNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&gUiFramework);
}

/**
  Keeps the UI framework pointer current: located now, or as soon as the
  framework is installed.
**/
STATIC
VOID
LocateUiFramework (VOID)
{
  if (!EFI_ERROR (gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&gUiFramework))) {
    return;
  }

  gUiFramework = nullptr;
  if (EFI_ERROR (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, UiFrameworkNotify, nullptr, &mUiFrameworkEvent))) {
    mUiFrameworkEvent = nullptr;
    return;
  }

  gBS->RegisterProtocolNotify (&gUiFrameworkProtocolGuid, mUiFrameworkEvent, &mUiFrameworkRegistration);
  gBS->SignalEvent (mUiFrameworkEvent);
}

EFI_STATUS
InitKestUIDrvInterfaces (VOID)
{
  EFI_STATUS Status;

  //
  // A record from an earlier attempt that failed before the installation is
  // used again rather than left behind in pool.
  //
  if (gUiDriverProtocol == nullptr) {
    Status = ALLOCATE_TRACKED_POOL (gUiDriverProtocol, sizeof (UI_DRIVER_PROTOCOL));
    if (EFI_ERROR (Status)) {
      return Status;
    }
  }

  gUiDriverProtocol->ShowWelcomePage = ShowWelcomePage;
  gUiDriverProtocol->UpdateWelcomeProgress = UpdateWelcomeProgress;
  gUiDriverProtocol->RefreshWelcomePage = RefreshWelcomePage;
  gUiDriverProtocol->LaunchSetup = LaunchSetup;
  gUiDriverProtocol->LaunchBootMenu = LaunchBootMenu;
  gUiDriverProtocol->FinishWelcomePage = FinishWelcomePage;
  gUiDriverProtocol->SetWelcomeLogoFlag = SetWelcomeLogoFlag;

  if (gFlashUpdatePageProtocol == nullptr) {
    InitFlashUpdatePageDriverInterfaces ();
  }

  gUiDriverProtocol->PromptPassword = PromptPassword;
  gUiDriverProtocol->IsPasswordInstalled = IsPasswordInstalled;
  return EFI_SUCCESS;
}

EFI_STATUS
InitUIPages (VOID)
{
  PAGE_ENGINE_PROTOCOL *PageEngine = nullptr;
  EFI_STATUS Status;

  Status = gBS->LocateProtocol (&gPageEngineProtocolGuid, nullptr, (VOID **)&PageEngine);
  if (EFI_ERROR (Status) || (PageEngine == nullptr)) {
    return EFI_ERROR (Status) ? Status : EFI_NOT_FOUND;
  }

  gPageEngine = PageEngine;
  gHiiHandle = RegisterUiStringPackages (gHiiDatabase, gDriverHandle);
  HandOverImagePackage (gUiFramework);
  return InitPasswordPage ();
}

EFI_STATUS
EFIAPI
PrereqReadyLoadUIDrv (IN EFI_HANDLE ImageHandle, IN VOID *SystemTable)
{
  EFI_STATUS Status;

  if (gPageEngine != nullptr) {
    return EFI_NOT_READY;
  }

  Status = InitKestUIDrvInterfaces ();
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Status = InitUIPages ();
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Status =
    gBS->InstallProtocolInterface (&ImageHandle, &gUiDriverProtocolGuid, EFI_NATIVE_INTERFACE, gUiDriverProtocol);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  //
  // Never publish a null interface: without its record the flash page stays away.
  //
  if (gFlashUpdatePageProtocol == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  Status = gBS->InstallProtocolInterface (&ImageHandle, &gFlashUpdatePageProtocolGuid, EFI_NATIVE_INTERFACE,
                                          gFlashUpdatePageProtocol);
  if (EFI_ERROR (Status)) {
    FREE_TRACKED_POOL (gFlashUpdatePageProtocol);
  }

  return Status;
}

/**
  Entry point of the UI driver (ENTRY_POINT of its INF), called by the
  _ModuleEntryPoint of the entry-point library once the libraries'
  constructors have run.

  @return EFI_SUCCESS whatever happens: a driver that cannot start yet waits
          for the page engine instead of failing its load.
**/
extern "C" EFI_STATUS EFIAPI
UserInterfaceEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable)
{
  EFI_LOADED_IMAGE_PROTOCOL *LoadedImage = nullptr;

  gImageHandle = ImageHandle;
  gST = SystemTable;
  gBS = SystemTable->BootServices;
  gRT = SystemTable->RuntimeServices;

  gBS->LocateProtocol (&gEfiHiiStringProtocolGuid, nullptr, (VOID **)&gHiiString);
  gBS->LocateProtocol (&gEfiHiiDatabaseProtocolGuid, nullptr, (VOID **)&gHiiDatabase);
  gBS->LocateProtocol (&gEfiHiiConfigRoutingProtocolGuid, nullptr, (VOID **)&gHiiConfigRouting);
  gBS->LocateProtocol (&gEfiHiiFontProtocolGuid, nullptr, (VOID **)&gHiiFont);
  gBS->LocateProtocol (&gEfiHiiImageProtocolGuid, nullptr, (VOID **)&gHiiImage);

  mModuleList = CreateModuleInfoList ();
  AddModuleInfo (mModuleList, MODULE_KIND_LIBRARY, ImageHandle, &gPrintLibModuleInfo);
  PublishTscFrequency ();
  AddModuleInfo (mModuleList, MODULE_KIND_LIBRARY, ImageHandle, &gTimerLibModuleInfo);

  LocateUiFramework ();

  if (!EFI_ERROR (gBS->HandleProtocol (ImageHandle, &gEfiLoadedImageProtocolGuid, (VOID **)&LoadedImage)) &&
      (LoadedImage != nullptr)) {
    LoadedImage->Unload = UnloadUserInterface;
  }

  AddModuleInfo (mModuleList, MODULE_KIND_DRIVER, ImageHandle, &gUiDriverModuleInfo);
  RegisterModuleInfoList (mModuleList);

  gDriverHandle = ImageHandle;
  PrereqReadyLoadUIDrv (ImageHandle, nullptr);
  if (gPageEngine == nullptr) {
    mPageEngineWait = RegisterPrerequisiteWait (nullptr, PrereqReadyLoadUIDrv, ImageHandle, SystemTable,
                                                &gPageEngineProtocolGuid, nullptr);
  }

  return EFI_SUCCESS;
}

/**
  Returns every variable of the driver to its value at load, so that nothing
  of this load survives the unload: a driver loaded again into the same memory
  (as a host test does) starts afresh.
**/
STATIC
VOID
ResetDriverState (VOID)
{
  ResetHotKeyState ();
  ResetWelcomePageState ();
  ResetBootActionState ();
  ResetPasswordPageState ();
  ResetFlashUpdatePageState ();

  gHiiString = nullptr;
  gHiiDatabase = nullptr;
  gHiiConfigRouting = nullptr;
  gHiiFont = nullptr;
  gHiiImage = nullptr;
  gUiFramework = nullptr;
  gPageEngine = nullptr;
  gDriverHandle = nullptr;
  gHiiHandle = nullptr;
  mUiFrameworkRegistration = nullptr;
}

/**
  Removes one of the driver's protocols and releases its record on success.
**/
STATIC
EFI_STATUS
UninstallDriverProtocol (IN EFI_HANDLE ImageHandle, IN EFI_GUID *Protocol, IN OUT VOID **Record)
{
  EFI_STATUS Status;

  Status = gBS->UninstallProtocolInterface (ImageHandle, Protocol, *Record);
  if (!EFI_ERROR (Status)) {
    FreeTrackedPool (Record, __func__, TRACKED_POOL_FILE, __LINE__);
  }

  return Status;
}

EFI_STATUS
EFIAPI
UnloadUserInterface (IN EFI_HANDLE ImageHandle)
{
  EFI_STATUS Status = EFI_SUCCESS;
  EFI_HANDLE *Handles = nullptr;
  UINTN HandleCount = 0;

  if (ImageHandle != nullptr) {
    Status = gBS->LocateHandleBuffer (AllHandles, nullptr, nullptr, &HandleCount, &Handles);
    if (EFI_ERROR (Status)) {
      return Status;
    }

    if (Handles != nullptr) {
      for (UINTN Index = 0; Index < HandleCount; Index++) {
        gBS->DisconnectController (Handles[Index], ImageHandle, nullptr);
      }

      gBS->FreePool (Handles);

      if (gFlashUpdatePageProtocol != nullptr) {
        Status =
          UninstallDriverProtocol (ImageHandle, &gFlashUpdatePageProtocolGuid, (VOID **)&gFlashUpdatePageProtocol);
      }

      if (gUiDriverProtocol != nullptr) {
        Status = UninstallDriverProtocol (ImageHandle, &gUiDriverProtocolGuid, (VOID **)&gUiDriverProtocol);
      }

      gST->ConOut->SetAttribute (gST->ConOut, EFI_TEXT_ATTR (EFI_LIGHTGRAY, EFI_BLACK));
    }
  }

  if (EFI_ERROR (Status)) {
    return Status;
  }

  UnregisterModuleInfoList (mModuleList);

  //
  // No key notification may reach the unloaded image.
  //
  UnregisterHotKeys ();

  //
  // The image goes away now: no notification may call into it afterwards.
  //
  if ((gHiiHandle != nullptr) && (gHiiDatabase != nullptr)) {
    gHiiDatabase->RemovePackageList (gHiiDatabase, gHiiHandle);
    gHiiHandle = nullptr;
  }

  DestroyModuleInfoList (mModuleList);
  mModuleList = nullptr;
  CancelPrerequisiteWait (mPageEngineWait);
  mPageEngineWait = nullptr;
  if (mUiFrameworkEvent != nullptr) {
    gBS->CloseEvent (mUiFrameworkEvent);
    mUiFrameworkEvent = nullptr;
  }

  //
  // While a protocol of the driver is still installed its callers may come
  // back, so the state stays for them.
  //
  if ((gUiDriverProtocol == nullptr) && (gFlashUpdatePageProtocol == nullptr)) {
    ResetDriverState ();
  } else {
    CleanUpPasswordPage ();
  }

  return Status;
}
