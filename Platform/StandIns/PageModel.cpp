/** @file
  The page model: pages and controls, their handles, and their release.

  A handle is decoded into indexes, so that every look-up takes constant time
  and a value that was never handed out (or belongs to another page) is
  refused rather than searched for.
**/
#include "StandInInternal.h"

STAND_IN_PAGE_MODEL gStandInModel;

#define CONTROL_INDEX_BITS 12U
#define CONTROL_INDEX_MASK ((1U << CONTROL_INDEX_BITS) - 1U)

STATIC_ASSERT (STAND_IN_MAX_CONTROLS <= CONTROL_INDEX_MASK, "control index fits its field");
STATIC_ASSERT (((UINTN)STAND_IN_MAX_PAGES << CONTROL_INDEX_BITS) < 0x01000000U, "control handles stay apart");

//
// A page's serial number counts every page made since load, over reinstalls
// too, so that no handle is ever handed out twice.
//
STATIC
UINTN
PageSerial (IN CONST STAND_IN_PAGE *Page)
{
  return Page->Handle - STAND_IN_PAGE_HANDLE_BASE;
}

STAND_IN_PAGE *
StandInLookUpPage (IN UINTN Handle)
{
  UINTN Serial;

  if (Handle <= STAND_IN_PAGE_HANDLE_BASE) {
    return nullptr;
  }

  Serial = Handle - STAND_IN_PAGE_HANDLE_BASE;
  if ((Serial <= gStandInModel.SerialOffset) || (Serial - gStandInModel.SerialOffset > gStandInModel.PageCount)) {
    return nullptr;
  }

  return gStandInModel.Pages[Serial - gStandInModel.SerialOffset - 1];
}

STAND_IN_PAGE *
StandInLookUpLivePage (IN UINTN Handle)
{
  STAND_IN_PAGE *Page = StandInLookUpPage (Handle);

  return ((Page == nullptr) || Page->Destroyed) ? nullptr : Page;
}

STAND_IN_CONTROL *
StandInLookUpControl (IN STAND_IN_PAGE *Page, IN UINTN Control)
{
  UINTN Relative;
  UINTN Index;
  STAND_IN_CONTROL *Found;

  if (Page == nullptr) {
    return nullptr;
  }

  if (Control == Page->Handle) {
    return &Page->Self;
  }

  //
  // The prompt's fixed ids are its first six controls.
  //
  if (Page->IsPrompt && (Control >= PROMPT_CONTROL_TEXT_1) && (Control <= PROMPT_CONTROL_SUBMIT)) {
    Index = Control - PROMPT_CONTROL_TEXT_1;
    return (Index < Page->ControlCount) ? Page->Controls[Index] : nullptr;
  }

  if (Control <= STAND_IN_CONTROL_HANDLE_BASE) {
    return nullptr;
  }

  Relative = Control - STAND_IN_CONTROL_HANDLE_BASE;
  Index = Relative & CONTROL_INDEX_MASK;
  if (((Relative >> CONTROL_INDEX_BITS) != PageSerial (Page)) || (Index == 0) || (Index > Page->ControlCount)) {
    return nullptr;
  }

  Found = Page->Controls[Index - 1];
  return (Found->Handle == Control) ? Found : nullptr;
}

STAND_IN_CONTROL *
StandInLookUpControlAnywhere (IN UINTN Handle)
{
  if (Handle <= STAND_IN_CONTROL_HANDLE_BASE) {
    return nullptr;
  }

  return StandInLookUpControl (
    StandInLookUpLivePage (STAND_IN_PAGE_HANDLE_BASE + ((Handle - STAND_IN_CONTROL_HANDLE_BASE) >> CONTROL_INDEX_BITS)),
    Handle);
}

STAND_IN_PAGE *
StandInLatestPromptPage (VOID)
{
  for (UINTN Index = gStandInModel.PageCount; Index > 0; Index--) {
    STAND_IN_PAGE *Page = gStandInModel.Pages[Index - 1];

    if (Page->IsPrompt && !Page->Destroyed) {
      return Page;
    }
  }

  return nullptr;
}

EFI_STATUS
StandInNewPage (IN UINTN PageId, IN EFI_HII_HANDLE HiiHandle, IN UINTN ThemeId, OUT STAND_IN_PAGE **Page)
{
  STAND_IN_PAGE *NewPage;

  if (gStandInModel.SerialOffset + gStandInModel.PageCount >= STAND_IN_MAX_PAGES) {
    return EFI_OUT_OF_RESOURCES;
  }

  if (EFI_ERROR (StandInGrow (gStandInModel.Pages, gStandInModel.PageCapacity, gStandInModel.PageCount))) {
    return EFI_OUT_OF_RESOURCES;
  }

  NewPage = (STAND_IN_PAGE *)AllocateZeroPool (sizeof (STAND_IN_PAGE));
  if (NewPage == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  NewPage->Handle = STAND_IN_PAGE_HANDLE_BASE + gStandInModel.SerialOffset + gStandInModel.PageCount + 1;
  NewPage->PageId = PageId;
  NewPage->HiiHandle = HiiHandle;
  NewPage->ThemeId = ThemeId;
  NewPage->Self.Handle = NewPage->Handle;
  NewPage->Self.Kind = StandInControlPage;
  NewPage->Self.HiiHandle = HiiHandle;
  NewPage->Self.Argument = ThemeId;

  gStandInModel.Pages[gStandInModel.PageCount++] = NewPage;
  gStandInModel.LiveCount++;
  *Page = NewPage;
  return EFI_SUCCESS;
}

EFI_STATUS
StandInNewControl (IN STAND_IN_PAGE *Page,
                   IN UINTN Handle,
                   IN STAND_IN_CONTROL_KIND Kind,
                   IN UINTN Container,
                   OUT STAND_IN_CONTROL **Control)
{
  STAND_IN_CONTROL *NewControl;

  if (Page->ControlCount >= STAND_IN_MAX_CONTROLS) {
    return EFI_OUT_OF_RESOURCES;
  }

  if (EFI_ERROR (StandInGrow (Page->Controls, Page->ControlCapacity, Page->ControlCount))) {
    return EFI_OUT_OF_RESOURCES;
  }

  NewControl = (STAND_IN_CONTROL *)AllocateZeroPool (sizeof (STAND_IN_CONTROL));
  if (NewControl == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  if (Handle == 0) {
    Handle = STAND_IN_CONTROL_HANDLE_BASE + (PageSerial (Page) << CONTROL_INDEX_BITS) + Page->ControlCount + 1;
  }

  NewControl->Handle = Handle;
  NewControl->Kind = Kind;
  NewControl->Container = Container;
  Page->Controls[Page->ControlCount++] = NewControl;
  *Control = NewControl;
  return EFI_SUCCESS;
}

VOID
StandInDestroyPage (IN STAND_IN_PAGE *Page)
{
  if (Page->Destroyed) {
    return;
  }

  Page->Destroyed = TRUE;
  gStandInModel.LiveCount--;
  if (gStandInFramework.State.ActivePage == Page->Handle) {
    gStandInFramework.State.ActivePage = 0;
  }
}

STATIC
VOID
ReleasePage (IN STAND_IN_PAGE *Page)
{
  for (UINTN Index = 0; Index < Page->ControlCount; Index++) {
    StandInReleaseControl (Page->Controls[Index]);
    StandInFree (Page->Controls[Index]);
  }

  StandInFree (Page->Controls);
  StandInReleaseControl (&Page->Self);
  StandInFree (Page->Prompt.Title);
  StandInFree (Page->Prompt.Message);
  StandInFree (Page->Prompt.Caption);
  FreePool (Page);
}

VOID
StandInReleasePages (VOID)
{
  for (UINTN Index = 0; Index < gStandInModel.PageCount; Index++) {
    StandInDestroyPage (gStandInModel.Pages[Index]);
    ReleasePage (gStandInModel.Pages[Index]);
  }

  StandInFree (gStandInModel.Pages);
  gStandInModel.SerialOffset += gStandInModel.PageCount;
  gStandInModel.PageCount = 0;
  gStandInModel.PageCapacity = 0;
  gStandInModel.LiveCount = 0;
}
