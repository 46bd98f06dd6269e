/** @file
  What the files of the stand-in renderer share: the canvas (the back buffer)
  and the drawing steps, each in the file its name gives.
**/
#ifndef STAND_IN_RENDER_INTERNAL_H_
#define STAND_IN_RENDER_INTERNAL_H_

#include <Protocol/GraphicsOutput.h>
#include <Protocol/HiiFont.h>
#include <StandIns/StandInRender.h>

#include "../StandInInternal.h"

#define RENDER_GAP 16U          ///< pixels between stacked controls
#define RENDER_GLYPH_HEIGHT 19U ///< height of a line of the system font
#define RENDER_GLYPH_WIDTH 8U   ///< width of a narrow glyph of the system font
#define RENDER_LARGE_FONT 22U   ///< font sizes from here on are drawn twice as large
#define RENDER_DEFAULT_BACKGROUND 0x000000U
#define RENDER_DEFAULT_FOREGROUND 0xFFFFFFU

typedef struct {
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Pixels; ///< Width x Height, rows top down
  UINTN Width;
  UINTN Height;
  EFI_HII_FONT_PROTOCOL *Font; ///< null: texts are left out
  ///
  /// Image that the font driver draws texts into: reserved once per redraw
  /// for the largest text of the page (RenderReserveTexts), so texts do not
  /// each allocate their own. Null between redraws.
  ///
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *TextImage;
  UINTN TextImagePixels;
} RENDER_CANVAS;

typedef struct {
  UINTN X;
  UINTN Y;
  UINTN Width;
  UINTN Height;
} RENDER_BOX;

//
// RenderDevice.cpp
//

/** @return the back buffer while rendering is on, else null. **/
RENDER_CANVAS *RenderActiveCanvas (VOID);

/** Copies the back buffer to the screen with one Blt; nothing while rendering is off. **/
VOID RenderPresent (VOID);

//
// Canvas.cpp
//

/** @return the BLT pixel of a 0xRRGGBB colour. **/
EFI_GRAPHICS_OUTPUT_BLT_PIXEL
RenderPixel (IN UINT32 Rgb);

/** Fills Box (cut to the canvas) with Rgb. **/
VOID RenderFill (IN RENDER_CANVAS *Canvas, IN CONST RENDER_BOX *Box, IN UINT32 Rgb);

/** Draws a frame Thickness pixels wide just inside Box. **/
VOID RenderFrame (IN RENDER_CANVAS *Canvas, IN CONST RENDER_BOX *Box, IN UINTN Thickness, IN UINT32 Rgb);

/**
  Copies a Width x Height pixel block into the canvas at (X, Y), each source
  pixel Scale x Scale times; what falls outside Clip or the canvas is left out.
**/
VOID RenderCopy (IN RENDER_CANVAS *Canvas,
                 IN CONST RENDER_BOX *Clip,
                 IN UINTN X,
                 IN UINTN Y,
                 IN CONST EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Source,
                 IN UINTN SourceStride,
                 IN UINTN Width,
                 IN UINTN Height,
                 IN UINTN Scale);

/** Draws an image scaled to fit Box (aspect kept), centred in it. **/
VOID RenderImageFit (IN RENDER_CANVAS *Canvas,
                     IN CONST RENDER_BOX *Box,
                     IN CONST EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Pixels,
                     IN UINTN Width,
                     IN UINTN Height);

//
// TextDraw.cpp
//

#define RENDER_TEXT_LEFT 0x1U ///< rows start at the box's left edge (else centred)
#define RENDER_TEXT_TOP 0x2U  ///< rows start at the box's top (else centred)

/** @return the pixels of the image that a text in Box at Scale needs. **/
UINTN RenderTextPixels (IN CONST RENDER_BOX *Box, IN UINTN Scale);

/**
  Reserves the text image for a redraw whose largest text needs Pixels;
  texts drawn without it (no pool) are left out.
**/
VOID RenderReserveTexts (IN RENDER_CANVAS *Canvas, IN UINTN Pixels);

/** Releases the text image at the end of a redraw. **/
VOID RenderReleaseTexts (IN RENDER_CANVAS *Canvas);

/**
  Draws Text with the HII system font in Box (wrapped at its width), Scale
  times as large, on Background (the glyph cells are filled with it); Align
  holds RENDER_TEXT_ flags.

  @param[out] End  OPTIONAL; the column just right of the last row drawn, or
                   the box's left edge when nothing was drawn.
**/
VOID RenderText (IN RENDER_CANVAS *Canvas,
                 IN CONST RENDER_BOX *Box,
                 IN CONST CHAR16 *Text,
                 IN UINT32 Foreground,
                 IN UINT32 Background,
                 IN UINTN Scale,
                 IN UINTN Align,
                 OUT UINTN *End OPTIONAL);

//
// ThemeColours.cpp
//

/** Gives the page's theme colours, or the defaults where its theme has none. **/
VOID RenderThemeColours (IN CONST STAND_IN_PAGE *Page, OUT UINT32 *Background, OUT UINT32 *Foreground);

//
// ControlDraw.cpp
//

/** @return V1 of Tag on Control when it was set, else Default. **/
UINTN RenderAttribute (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag, IN UINTN Index, IN UINTN Default);

/** @return 2 for a large font size on Control (Tag its font tag), else 1. **/
UINTN RenderScale (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag);

/** @return the control's text (copy or HII reference), or null. **/
CONST CHAR16 *RenderControlText (IN STAND_IN_CONTROL *Control);

/** @return TRUE unless Control was hidden (0x70720001 V1 0). **/
BOOLEAN RenderIsVisible (IN CONST STAND_IN_CONTROL *Control);

/** @return Rgb of a colour attribute (V1 0xRRGGBB) on Control, else Default. **/
UINT32 RenderColour (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag, IN UINT32 Default);

/** Draws one control of an ordinary page into Box; Align holds RENDER_TEXT_ flags for a text. **/
VOID RenderControl (IN RENDER_CANVAS *Canvas,
                    IN STAND_IN_CONTROL *Control,
                    IN CONST RENDER_BOX *Box,
                    IN UINTN Align,
                    IN UINT32 Background,
                    IN UINT32 Foreground);

//
// PageLayout.cpp, PromptDraw.cpp
//

/** Draws an ordinary page: background and its controls where StandInRender.h's layout puts them. **/
VOID RenderPage (IN RENDER_CANVAS *Canvas, IN STAND_IN_PAGE *Page);

/** Draws a prompt page. **/
VOID RenderPromptPage (IN RENDER_CANVAS *Canvas, IN STAND_IN_PAGE *Page);

//
// DrawLog.cpp, DrawLogSink.cpp
//

/** Writes the draw log line of a page that was just drawn. **/
VOID RenderLogPage (IN STAND_IN_PAGE *Page);

/** Hands a finished draw log line (null-terminated, Length bytes) to the sink. **/
VOID RenderWriteLog (IN CONST CHAR8 *Line, IN UINTN Length);

/** Writes the draw log line of a screen that was just drawn. **/
VOID RenderLogScreen (IN CONST CHAR8 *Name,
                      IN CONST CHAR16 *Title OPTIONAL,
                      IN CONST CHAR16 *CONST *Lines OPTIONAL,
                      IN UINTN LineCount,
                      IN UINTN Selected);

#endif
