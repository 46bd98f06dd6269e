/** @file
  The screen side of the renderer: the Graphics Output Protocol, the back
  buffer in pool, and one Blt of the whole back buffer per redraw, so the
  screen never shows a page half drawn.
**/
#include <Library/UefiBootServicesTableLib.h>

#include "RenderInternal.h"

///
/// Screens larger than this are drawn only in their top-left part; it bounds
/// the back buffer.
///
#define RENDER_MAX_SIDE 4096U

typedef struct {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *Gop; ///< null while rendering is off
  RENDER_CANVAS Canvas;
} RENDER_DEVICE;

STATIC RENDER_DEVICE mDevice;

EFI_STATUS
EFIAPI
StandInStartRendering (VOID)
{
  EFI_GRAPHICS_OUTPUT_PROTOCOL *Gop = nullptr;
  EFI_HII_FONT_PROTOCOL *Font = nullptr;
  EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *Info;
  UINTN Width;
  UINTN Height;

  if (mDevice.Gop != nullptr) {
    return EFI_ALREADY_STARTED;
  }

  if ((gBS == nullptr) || EFI_ERROR (gBS->LocateProtocol (&gEfiGraphicsOutputProtocolGuid, nullptr, (VOID **)&Gop)) ||
      (Gop == nullptr) || (Gop->Blt == nullptr) || (Gop->Mode == nullptr) || (Gop->Mode->Info == nullptr)) {
    return EFI_NOT_FOUND;
  }

  Info = Gop->Mode->Info;
  Width = (Info->HorizontalResolution > RENDER_MAX_SIDE) ? RENDER_MAX_SIDE : Info->HorizontalResolution;
  Height = (Info->VerticalResolution > RENDER_MAX_SIDE) ? RENDER_MAX_SIDE : Info->VerticalResolution;
  if ((Width == 0) || (Height == 0)) {
    return EFI_NOT_FOUND;
  }

  mDevice.Canvas.Pixels =
    (EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)AllocatePool (Width * Height * sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL));
  if (mDevice.Canvas.Pixels == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  //
  // Without the HII font the pages are still drawn, only without texts.
  //
  if (EFI_ERROR (gBS->LocateProtocol (&gEfiHiiFontProtocolGuid, nullptr, (VOID **)&Font))) {
    Font = nullptr;
  }

  mDevice.Canvas.Width = Width;
  mDevice.Canvas.Height = Height;
  mDevice.Canvas.Font = Font;
  mDevice.Gop = Gop;
  StandInRenderActivePage ();
  return EFI_SUCCESS;
}

VOID EFIAPI
StandInStopRendering (VOID)
{
  mDevice.Gop = nullptr;
  StandInFree (mDevice.Canvas.Pixels);
  mDevice.Canvas.Width = 0;
  mDevice.Canvas.Height = 0;
  mDevice.Canvas.Font = nullptr;
}

VOID EFIAPI
StandInRenderActivePage (VOID)
{
  STAND_IN_PAGE *Page;

  if (mDevice.Gop == nullptr) {
    return;
  }

  Page = StandInLookUpLivePage (gStandInFramework.State.ActivePage);
  if (Page == nullptr) {
    return;
  }

  if (Page->IsPrompt) {
    RenderPromptPage (&mDevice.Canvas, Page);
  } else {
    RenderPage (&mDevice.Canvas, Page);
  }

  RenderPresent ();
  RenderLogPage (Page);
}

RENDER_CANVAS *
RenderActiveCanvas (VOID)
{
  return (mDevice.Gop == nullptr) ? nullptr : &mDevice.Canvas;
}

VOID
RenderPresent (VOID)
{
  if (mDevice.Gop == nullptr) {
    return;
  }

  mDevice.Gop->Blt (mDevice.Gop, mDevice.Canvas.Pixels, EfiBltBufferToVideo, 0, 0, 0, 0, mDevice.Canvas.Width,
                    mDevice.Canvas.Height, mDevice.Canvas.Width * sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL));
}
