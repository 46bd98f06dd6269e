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
#define RENDER_LARGE_FONT 22U   ///< font sizes from here on are drawn twice as large
#define RENDER_DEFAULT_BACKGROUND 0x000000U
#define RENDER_DEFAULT_FOREGROUND 0xFFFFFFU

typedef struct {
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Pixels; ///< Width x Height, rows top down
  UINTN Width;
  UINTN Height;
  EFI_HII_FONT_PROTOCOL *Font; ///< null: texts are left out
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

/**
  Draws Text with the HII system font, centred in Box, Scale times as large,
  on Background (the glyph cells are filled with it).
**/
VOID RenderText (IN RENDER_CANVAS *Canvas,
                 IN CONST RENDER_BOX *Box,
                 IN CONST CHAR16 *Text,
                 IN UINT32 Foreground,
                 IN UINT32 Background,
                 IN UINTN Scale);

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

/** Draws one control of an ordinary page into Box. **/
VOID RenderControl (IN RENDER_CANVAS *Canvas,
                    IN STAND_IN_CONTROL *Control,
                    IN CONST RENDER_BOX *Box,
                    IN UINT32 Background,
                    IN UINT32 Foreground);

//
// PageLayout.cpp, PromptDraw.cpp
//

/** Draws an ordinary page: background and its controls stacked. **/
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
