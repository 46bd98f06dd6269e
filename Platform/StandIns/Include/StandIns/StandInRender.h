/** @file
  Drawing of the stand-ins' active page on the Graphics Output Protocol.

  Rendering is off until StandInStartRendering finds a GOP; then every accepted
  RefreshPage of the active page, SetActivePage and DisplayPage of the UI
  framework stand-in redraws the active page into a back buffer in pool and
  copies it to the screen with one Blt.

  Layout of an ordinary page (the whole of it; sizes and offsets are in
  percent of the screen, the other tags the page engine takes are kept but not
  used for drawing):
  - The page is filled with the theme's background (BGCL of the page's theme
    string in the "tm-CL" language); texts default to its FGCL colour, or to
    their own 0x73740011 colour (a field: 0x7374001F).
  - Size: 0x70720008 (4, w%, h%) when set; otherwise a text takes one line and
    90% of the width, a progress bar 60% x 2%, an image 30% x 30%. Margins
    0x7072000C (top%, left%, right%) are taken off inside that room.
  - Place: V1 of the last 0x73740000 written decides.
    - 0x100 (x%, y%): the room's top-left corner at that point of the screen
      (the logo's (30, 18) with its 40% width centres it in the upper part).
    - 1: the title, centred at 4% from the top.
    - 0x40 (side, control): below that control's room, 16 pixels apart;
      side 3 lines the left edges of the two drawn boxes up and starts the
      text's rows at the left, any other side centres it under the control.
    - 4: right of the page's first progress bar, vertically centred on it, the
      text's rows starting at the left (the bar's percentage).
    - anything else (0, 2, 0x0C, 0x20, ...): the control joins the block,
      which stacks these controls below everything placed above, images
      first, then texts, then progress bars (creation order within each),
      each centred, each followed by the controls placed below or beside it;
      the block as a whole is then centred in the room left below. A control placed from a control that is
      missing (or beside a bar on a page without one, or from a loop of
      controls placed from each other) joins the block.
  - Text: rows are wrapped at the box's width and centred in it; 0x73740001
    V1 4 or 5 puts them at the top of the box (a tall box hugs what is above
    it); rows that start at the left drop the text's leading and trailing
    blanks. A font size (V3 of 0x7374001D) of 22 or more draws the system font
    twice as large.
  - A hidden control (0x70720001 V1 0) keeps its room, so nothing moves when
    it is shown; what is placed below it stays where it is.
  - Rooms are cut at the screen's right edge; nothing is drawn outside it.
  The prompt page is a centred box with title, message and caption (1711 to
  1713), the password field (1714, its characters shown as '*', then a caret)
  and the cancel and submit buttons (1715, 1716) side by side below it; a
  hidden one of them is not drawn.
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

/**
  Draws a full-screen page of another platform service (Setup, boot menu,
  diagnostics) while rendering is on: a title bar with Title, the lines below
  it (Selected, when it is below LineCount, highlighted and kept in view;
  MAX_UINTN for none; lines that do not fit are left out) and a hint line at
  the bottom, on the pages' dark background. Null texts draw nothing. Then
  writes the draw log line of the screen under Name ("screen" when null).
**/
VOID EFIAPI StandInDrawScreen (
  IN CONST CHAR8 *Name, IN CONST CHAR16 *Title, IN CONST CHAR16 *CONST *Lines, IN UINTN LineCount, IN UINTN Selected);

//
// Draw log: after every redraw of a page or a screen, one ASCII line
//   KESTUI-DRAW <name> | <field> | <field> ...<CR><LF>
// of at most STAND_IN_DRAW_LOG_LIMIT bytes (CR LF included; a longer line is
// cut before them). <name> is "welcome" for a page of theme id 2, "flash" for
// theme id 8, "prompt" for a prompt page, "page" for other pages, or the name
// given to StandInDrawScreen. The fields follow the drawing order, one per
// visible control: a text control's text with " #RRGGBB" after it when its
// text colour was set (0x73740011); "bar=<value>" for a progress bar;
// "image=<width>x<height>" for an image control showing an image. A prompt
// page gives its title, message and caption texts, then "field=<characters>".
// A screen gives its title, then each line, the selected one after "> ".
// Texts lose their trailing spaces; characters outside 0x20 to 0x7E become
// '?' and '|' becomes '/'.
//

#define STAND_IN_DRAW_LOG_LIMIT 600U

/**
  Receives each draw log line.

  @param[in] Context  What was given to StandInSetDrawLogSink.
  @param[in] Line     The line, CR LF included, null-terminated.
  @param[in] Length   Its length in bytes without the terminator.
**/
typedef VOID (EFIAPI *STAND_IN_DRAW_LOG_SINK) (IN VOID *Context, IN CONST CHAR8 *Line, IN UINTN Length);

/**
  Sets where draw log lines go; null drops them. Inside firmware they go to
  StandInSerialDrawLogSink until this is called; in host builds nowhere.
**/
VOID EFIAPI StandInSetDrawLogSink (IN STAND_IN_DRAW_LOG_SINK Sink OPTIONAL, IN VOID *Context OPTIONAL);

/**
  Writes a line to the first EFI_SERIAL_IO_PROTOCOL found (not to the console
  output, which would draw over the page); nothing when there is none.
**/
VOID EFIAPI StandInSerialDrawLogSink (IN VOID *Context, IN CONST CHAR8 *Line, IN UINTN Length);

#endif
