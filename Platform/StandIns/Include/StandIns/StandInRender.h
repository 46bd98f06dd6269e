/** @file
  Drawing of the stand-ins' active page on the Graphics Output Protocol.

  Rendering is off until StandInStartRendering finds a GOP; then every accepted
  RefreshPage of the active page, SetActivePage and DisplayPage of the UI
  framework stand-in redraws the active page into a back buffer in pool and
  copies it to the screen with one Blt.

  Layout (the whole of it; the page engine's other layout tags are kept but not
  used for drawing):
  - The page is filled with the theme's background (BGCL of the page's theme
    string in the "tm-CL" language); texts default to its FGCL colour.
  - Controls are stacked top to bottom in creation order, RENDER_GAP pixels
    apart, the stack centred vertically. Each control is centred horizontally
    and takes the width and height percentages of 0x70720008 (4, w%, h%) of the
    screen when they were set; otherwise a text takes one line and 90% of the
    width, a progress bar 60% x 2%, an image 30% x 30%. A hidden control
    (0x70720001 V1 0) keeps its room, so nothing moves when it is shown.
  - A font size (V3 of 0x7374001D) of 22 or more draws the system font twice
    as large.
  - The prompt page is a centred box with title, message, caption and the
    password field, whose characters are shown as '*'.
**/
#ifndef STAND_IN_RENDER_H_
#define STAND_IN_RENDER_H_

#include <Uefi.h>

/**
  Finds the Graphics Output Protocol (and the HII font, without which texts are
  left out), makes the back buffer and draws the active page.

  @retval EFI_SUCCESS           Rendering is on.
  @retval EFI_ALREADY_STARTED   It was on already.
  @retval EFI_NOT_FOUND         No GOP, or a mode without a size: rendering stays off.
  @retval EFI_OUT_OF_RESOURCES  No pool for the back buffer: rendering stays off.
**/
EFI_STATUS
EFIAPI
StandInStartRendering (VOID);

/** Turns rendering off and releases the back buffer; the screen keeps what it shows. **/
VOID EFIAPI StandInStopRendering (VOID);

/** Draws the active page now; nothing when rendering is off or no page is active. **/
VOID EFIAPI StandInRenderActivePage (VOID);

/**
  Reads "BGCL=RRGGBB" and "FGCL=RRGGBB" items of a theme string ('|' between
  items, other items ignored). A colour that is missing or not six hex digits
  leaves its out value unchanged.

  @return TRUE when at least one colour was read.
**/
BOOLEAN
StandInParseThemeColours (IN CONST CHAR16 *Theme OPTIONAL, IN OUT UINT32 *Background, IN OUT UINT32 *Foreground);

#endif
