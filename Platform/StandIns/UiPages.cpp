/** @file
  The pages table of the UI framework stand-in: refresh and display counts,
  the active page, the event handler and the image packages. The event loop
  (slots 9 and 10) is in EventLoop.cpp.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#include <StandIns/StandInRender.h>

#include "StandInInternal.h"

STATIC
EFI_STATUS
EFIAPI
UiRefreshPage (IN UINTN Page)
{
  UINTN Arguments[] = {Page};
  STAND_IN_PAGE *Target;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpRefreshPage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  Target = StandInLookUpLivePage (Page);
  if (Target == nullptr) {
    return StandInReject (StandInOpRefreshPage, EFI_INVALID_PARAMETER);
  }

  Target->RefreshCount++;
  if (Page == gStandInFramework.State.ActivePage) {
    StandInRenderActivePage ();
  }

  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiGetActivePage (OUT UINTN *Page)
{
  UINTN Arguments[] = {(UINTN)Page};
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpGetActivePage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (Page == nullptr) {
    return StandInReject (StandInOpGetActivePage, EFI_INVALID_PARAMETER);
  }

  *Page = gStandInFramework.State.ActivePage;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiSetActivePage (IN UINTN Page)
{
  UINTN Arguments[] = {Page};
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSetActivePage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  //
  // 0 leaves no page active: it restores what GetActivePage gave when none was.
  //
  if ((Page != 0) && (StandInLookUpLivePage (Page) == nullptr)) {
    return StandInReject (StandInOpSetActivePage, EFI_INVALID_PARAMETER);
  }

  gStandInFramework.State.ActivePage = Page;
  StandInRenderActivePage ();
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiSetEventHandler (IN UI_EVENT_HANDLER Handler)
{
  UINTN Arguments[] = {(UINTN)Handler};
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpSetEventHandler, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  gStandInFramework.State.EventHandler = Handler;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiGetEventHandler (OUT UI_EVENT_HANDLER *Handler)
{
  UINTN Arguments[] = {(UINTN)Handler};
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpGetEventHandler, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (Handler == nullptr) {
    return StandInReject (StandInOpGetEventHandler, EFI_INVALID_PARAMETER);
  }

  *Handler = gStandInFramework.State.EventHandler;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiAddImagePackage (IN VOID *Package, IN UINTN Size, IN EFI_GUID *Guid, IN UINTN Reserved)
{
  UINTN Arguments[] = {(UINTN)Package, Size, (UINTN)Guid, Reserved};
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  UINTN Count = Framework->State.ImagePackageCount;
  STAND_IN_IMAGE_PACKAGE *Record;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpAddImagePackage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if ((Package == nullptr) || (Size == 0)) {
    return StandInReject (StandInOpAddImagePackage, EFI_INVALID_PARAMETER);
  }

  if (Count < STAND_IN_HISTORY_LIMIT) {
    if (EFI_ERROR (StandInGrow (Framework->Packages, Framework->PackageCapacity, Count))) {
      return EFI_OUT_OF_RESOURCES;
    }

    Record = &Framework->Packages[Count];
    Record->Package = Package;
    Record->Size = Size;
    Record->Reserved = Reserved;
    if (Guid != nullptr) {
      CopyGuid (&Record->Guid, Guid);
    } else {
      ZeroMem (&Record->Guid, sizeof (Record->Guid));
    }
  }

  Framework->State.ImagePackageCount++;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiDisplayPage (IN UINTN Page, IN UINTN Reserved)
{
  UINTN Arguments[] = {Page, Reserved};
  STAND_IN_PAGE *Target;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpDisplayPage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  Target = StandInLookUpLivePage (Page);
  if (Target == nullptr) {
    return StandInReject (StandInOpDisplayPage, EFI_INVALID_PARAMETER);
  }

  Target->DisplayCount++;
  gStandInFramework.State.ActivePage = Page;
  StandInRenderActivePage ();
  return EFI_SUCCESS;
}

UI_PAGES gStandInPagesTable = {
  nullptr,
  nullptr,
  UiRefreshPage, // 2
  nullptr,
  nullptr,
  UiGetActivePage,      // 5
  UiSetActivePage,      // 6
  UiSetEventHandler,    // 7
  UiGetEventHandler,    // 8
  StandInRunEventLoop,  // 9
  StandInExitEventLoop, // 10
  nullptr,
  UiAddImagePackage, // 12
  nullptr,
  nullptr,
  nullptr,
  nullptr,
  UiDisplayPage, // 17
};
