/** @file
  PAGE_ENGINE_PROTOCOL of the stand-in: page and control creation, page
  destruction, installation and removal. The prompt page is in PromptPage.cpp.
**/
#include <Library/UefiBootServicesTableLib.h>

#include "StandInInternal.h"

STATIC
EFI_STATUS
EFIAPI
PageEngineCreatePage (OUT UINTN *Page,
                      IN UINTN PageId,
                      IN UINTN Reserved1,
                      IN UINTN Reserved2,
                      IN UINTN Reserved3,
                      IN EFI_HII_HANDLE HiiHandle,
                      IN UINT16 ThemeId)
{
  UINTN Arguments[] = {(UINTN)Page, PageId, Reserved1, Reserved2, Reserved3, (UINTN)HiiHandle, ThemeId};
  STAND_IN_PAGE *NewPage;
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpCreatePage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if (!gStandInModel.Installed) {
    return EFI_NOT_STARTED;
  }

  if (Page == nullptr) {
    return StandInReject (StandInOpCreatePage, EFI_INVALID_PARAMETER);
  }

  Status = StandInNewPage (PageId, HiiHandle, ThemeId, &NewPage);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  *Page = NewPage->Handle;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
PageEngineDestroyPage (IN UINTN Page)
{
  UINTN Arguments[] = {Page};
  STAND_IN_PAGE *Target;
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpDestroyPage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  Target = StandInLookUpLivePage (Page);
  if (Target == nullptr) {
    return StandInReject (StandInOpDestroyPage, EFI_INVALID_PARAMETER);
  }

  StandInDestroyPage (Target);
  return EFI_SUCCESS;
}

///
/// What a control-creating call asks for.
///
typedef struct {
  STAND_IN_OPERATION Operation;
  UINTN Page;
  UINTN Container;
  STAND_IN_CONTROL_KIND Kind;
  EFI_HII_HANDLE HiiHandle;
  UINTN Argument;
  UINTN Minimum;
  UINTN Maximum;
  UI_EVENT_HANDLER Handler;
  UINTN *Control;
} CONTROL_REQUEST;

STATIC
EFI_STATUS
CreateControl (IN CONST CONTROL_REQUEST *Request)
{
  STAND_IN_PAGE *Page;
  STAND_IN_CONTROL *NewControl;
  EFI_STATUS Status;

  if (!gStandInModel.Installed) {
    return EFI_NOT_STARTED;
  }

  //
  // Container 0 addresses the page itself; a control always sits in one.
  //
  Page = StandInLookUpLivePage (Request->Page);
  if ((Page == nullptr) || (Request->Container == 0) || (Request->Control == nullptr)) {
    return StandInReject (Request->Operation, EFI_INVALID_PARAMETER);
  }

  Status = StandInNewControl (Page, 0, Request->Kind, Request->Container, &NewControl);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  NewControl->HiiHandle = Request->HiiHandle;
  NewControl->Argument = Request->Argument;
  NewControl->Minimum = Request->Minimum;
  NewControl->Maximum = Request->Maximum;
  NewControl->Handler = Request->Handler;
  if ((Request->Kind == StandInControlText) && (Request->Argument != 0)) {
    NewControl->TextHiiHandle = Request->HiiHandle;
    NewControl->TextStringId = (EFI_STRING_ID)Request->Argument;
  }

  *Request->Control = NewControl->Handle;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
PageEngineCreateImageControl (IN UINTN Page,
                              IN UINTN Container,
                              IN EFI_HII_HANDLE HiiHandle,
                              IN UINT16 ThemeId,
                              IN UINTN Reserved1,
                              IN UINTN Reserved2,
                              IN UINTN Reserved3,
                              IN UI_EVENT_HANDLER Handler,
                              OUT UINTN *Control)
{
  UINTN Arguments[] = {Page,      Container, (UINTN)HiiHandle, ThemeId,       Reserved1,
                       Reserved2, Reserved3, (UINTN)Handler,   (UINTN)Control};
  CONTROL_REQUEST Request = {
    StandInOpCreateImageControl, Page, Container, StandInControlImage, HiiHandle, ThemeId, 0, 0, Handler, Control};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpCreateImageControl, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  return CreateControl (&Request);
}

STATIC
EFI_STATUS
EFIAPI
PageEngineCreateTextControl (IN UINTN Page,
                             IN UINTN Container,
                             IN EFI_HII_HANDLE HiiHandle,
                             IN EFI_STRING_ID StringId,
                             IN UINTN Reserved,
                             OUT UINTN *Control)
{
  UINTN Arguments[] = {Page, Container, (UINTN)HiiHandle, StringId, Reserved, (UINTN)Control};
  CONTROL_REQUEST Request = {
    StandInOpCreateTextControl, Page, Container, StandInControlText, HiiHandle, StringId, 0, 0, nullptr, Control};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpCreateTextControl, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  return CreateControl (&Request);
}

STATIC
EFI_STATUS
EFIAPI
PageEngineCreateProgressControl (IN UINTN Page,
                                 IN UINTN Container,
                                 IN EFI_HII_HANDLE HiiHandle,
                                 IN UINT16 ThemeId,
                                 IN UINTN Reserved1,
                                 IN UINTN Minimum,
                                 IN UINTN Maximum,
                                 IN UINTN Reserved2,
                                 IN UI_EVENT_HANDLER Handler,
                                 OUT UINTN *Control)
{
  UINTN Arguments[] = {Page,    Container, (UINTN)HiiHandle, ThemeId,        Reserved1,
                       Minimum, Maximum,   Reserved2,        (UINTN)Handler, (UINTN)Control};
  CONTROL_REQUEST Request = {StandInOpCreateProgressControl,
                             Page,
                             Container,
                             StandInControlProgress,
                             HiiHandle,
                             ThemeId,
                             Minimum,
                             Maximum,
                             Handler,
                             Control};
  EFI_STATUS Status;

  if (!StandInEnter (StandInOpCreateProgressControl, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  return CreateControl (&Request);
}

STATIC PAGE_ENGINE_PROTOCOL mPageEngine = {
  nullptr,
  nullptr,
  nullptr,
  PageEngineCreatePromptPage, // 3
  nullptr,
  nullptr,
  nullptr,
  PageEngineCreatePage,  // 7
  PageEngineDestroyPage, // 8
  nullptr,
  nullptr,
  nullptr,
  PageEngineCreateImageControl, // 12
  nullptr,
  nullptr,
  nullptr,
  nullptr,
  PageEngineCreateTextControl, // 17
  nullptr,
  nullptr,
  nullptr,
  nullptr,
  nullptr,
  nullptr,
  PageEngineCreateProgressControl, // 24
};

EFI_STATUS
EFIAPI
InstallPageEngineStandIn (IN OUT EFI_HANDLE *Handle)
{
  EFI_STATUS Status;

  if (Handle == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (gBS == nullptr) {
    return EFI_NOT_READY;
  }

  if (gStandInModel.Installed) {
    return EFI_ALREADY_STARTED;
  }

  //
  // Drivers waiting for the protocol are notified during the installation
  // and may call it at once: it must already work then.
  //
  gStandInModel.Installed = TRUE;
  Status = gBS->InstallProtocolInterface (Handle, &gPageEngineProtocolGuid, EFI_NATIVE_INTERFACE, &mPageEngine);
  if (EFI_ERROR (Status)) {
    gStandInModel.Installed = FALSE;
    return Status;
  }

  gStandInModel.Handle = *Handle;
  return EFI_SUCCESS;
}

EFI_STATUS
EFIAPI
UninstallPageEngineStandIn (IN EFI_HANDLE Handle)
{
  EFI_STATUS Status;

  if (!gStandInModel.Installed || (gBS == nullptr)) {
    return EFI_NOT_STARTED;
  }

  if (Handle != gStandInModel.Handle) {
    return EFI_INVALID_PARAMETER;
  }

  Status = gBS->UninstallProtocolInterface (Handle, &gPageEngineProtocolGuid, &mPageEngine);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  StandInReleasePages ();
  gStandInModel.Installed = FALSE;
  gStandInModel.Handle = nullptr;
  return EFI_SUCCESS;
}
