/** @file
  Full-screen pages of the other platform services (Setup, boot menu,
  diagnostics): a title bar with an accent rule, a centred column of lines
  with the selected one on the accent colour, and a hint line at the bottom,
  in the colours of the driver's pages.
**/
#include <Library/CompileTimeLib.h>

#include "RenderInternal.h"

#define SCREEN_BACKGROUND 0x010101U
#define SCREEN_TITLE_BAR 0x1C1C1CU
#define SCREEN_ACCENT 0xB7295AU
#define SCREEN_TEXT 0xFFFFFFU
#define SCREEN_HINT_TEXT 0xAAAAAAU
#define SCREEN_RULE 0x3A3A3AU

#define TITLE_HEIGHT_PERCENT 10U
#define ACCENT_THICKNESS 4U
#define COLUMN_WIDTH_PERCENT 60U
#define ROW_PADDING 8U
#define ROW_HEIGHT (RENDER_GLYPH_HEIGHT + 2 * ROW_PADDING)

static constexpr auto mChoiceHint = CompileTime::MakeWideString (u"Up/Down: select    Enter: choose    Esc: leave");
static constexpr auto mLeaveHint = CompileTime::MakeWideString (u"Esc: leave");

/** @return the height of the title bar, which holds one line of the large font. **/
STATIC
UINTN
TitleBarHeight (IN CONST RENDER_CANVAS *Canvas)
{
  return MAX ((Canvas->Height * TITLE_HEIGHT_PERCENT) / 100, 2 * RENDER_GLYPH_HEIGHT + 2 * ROW_PADDING);
}

/** @return the height of the title bar. **/
STATIC
UINTN
DrawTitleBar (IN RENDER_CANVAS *Canvas, IN CONST CHAR16 *Title OPTIONAL)
{
  UINTN Height = TitleBarHeight (Canvas);
  RENDER_BOX Bar = {0, 0, Canvas->Width, Height - ACCENT_THICKNESS};
  RENDER_BOX Rule = {0, Height - ACCENT_THICKNESS, Canvas->Width, ACCENT_THICKNESS};
  RENDER_BOX Text = Bar;

  RenderFill (Canvas, &Bar, SCREEN_TITLE_BAR);
  RenderFill (Canvas, &Rule, SCREEN_ACCENT);
  if (Canvas->Width > 2 * RENDER_GAP) {
    Text.X = RENDER_GAP;
    Text.Width = Canvas->Width - 2 * RENDER_GAP;
  }

  RenderText (Canvas, &Text, Title, SCREEN_TEXT, SCREEN_TITLE_BAR, 2, 0, nullptr);
  return Height;
}

/**
  Draws the lines from Top down in rows, at most Visible of them; the first
  row shown is moved down so that the selected line is among them.
**/
STATIC
VOID
DrawLines (IN RENDER_CANVAS *Canvas,
           IN CONST CHAR16 *CONST *Lines,
           IN UINTN LineCount,
           IN UINTN Selected,
           IN UINTN Top,
           IN UINTN Visible)
{
  UINTN Width = (Canvas->Width * COLUMN_WIDTH_PERCENT) / 100;
  UINTN Shown = MIN (LineCount, Visible);
  UINTN First = 0;
  RENDER_BOX Frame;

  if (Shown == 0) {
    return;
  }

  if ((Selected < LineCount) && (Selected >= Visible)) {
    First = Selected + 1 - Visible;
  }

  if ((Canvas->Width - Width) / 2 >= ROW_PADDING) {
    Frame = {(Canvas->Width - Width) / 2 - ROW_PADDING, Top - ROW_PADDING, Width + 2 * ROW_PADDING,
             Shown * ROW_HEIGHT + 2 * ROW_PADDING};
    RenderFrame (Canvas, &Frame, 1, SCREEN_RULE);
  }
  for (UINTN Row = 0; Row < Shown; Row++) {
    RENDER_BOX Box = {(Canvas->Width - Width) / 2, Top + Row * ROW_HEIGHT, Width, ROW_HEIGHT};
    UINT32 Background = SCREEN_BACKGROUND;

    if (First + Row == Selected) {
      Background = SCREEN_ACCENT;
      RenderFill (Canvas, &Box, Background);
    }

    RenderText (Canvas, &Box, Lines[First + Row], SCREEN_TEXT, Background, 1, 0, nullptr);
  }
}

VOID EFIAPI
StandInDrawScreen (
  IN CONST CHAR8 *Name, IN CONST CHAR16 *Title, IN CONST CHAR16 *CONST *Lines, IN UINTN LineCount, IN UINTN Selected)
{
  RENDER_CANVAS *Canvas = RenderActiveCanvas ();
  RENDER_BOX Whole;
  UINTN TitleHeight;
  UINTN HintY;
  UINTN Top;
  UINTN Visible = 0;

  if (Canvas == nullptr) {
    return;
  }

  if (Lines == nullptr) {
    LineCount = 0;
  }

  Whole = {0, 0, Canvas->Width, Canvas->Height};
  RenderFill (Canvas, &Whole, SCREEN_BACKGROUND);

  //
  // One text image serves every text of the screen: the title (twice as
  // large) and the rows, none wider than the screen.
  //
  RENDER_BOX TitleBox = {0, 0, Canvas->Width, TitleBarHeight (Canvas)};
  RENDER_BOX RowBox = {0, 0, Canvas->Width, ROW_HEIGHT};

  RenderReserveTexts (Canvas, MAX (RenderTextPixels (&TitleBox, 2), RenderTextPixels (&RowBox, 1)));
  TitleHeight = DrawTitleBar (Canvas, Title);

  //
  // The hint sits one gap above the bottom edge with a rule over it; the
  // lines take the room between the title bar and the rule.
  //
  Top = TitleHeight + 2 * RENDER_GAP;
  if (Canvas->Height > Top + 3 * RENDER_GAP + 2 * ROW_HEIGHT) {
    HintY = Canvas->Height - RENDER_GAP - ROW_HEIGHT;
    RENDER_BOX Rule = {RENDER_GAP, HintY - RENDER_GAP / 2, Canvas->Width - 2 * RENDER_GAP, 1};
    RENDER_BOX Hint = {0, HintY, Canvas->Width, ROW_HEIGHT};

    RenderFill (Canvas, &Rule, SCREEN_RULE);
    RenderText (Canvas, &Hint, (Selected < LineCount) ? mChoiceHint.Text : mLeaveHint.Text, SCREEN_HINT_TEXT,
                SCREEN_BACKGROUND, 1, 0, nullptr);
    Visible = (HintY - 2 * RENDER_GAP - Top) / ROW_HEIGHT;
  }

  DrawLines (Canvas, Lines, LineCount, Selected, Top, Visible);
  RenderReleaseTexts (Canvas);
  RenderPresent ();
  RenderLogScreen ((Name != nullptr) ? Name : "screen", Title, Lines, LineCount, Selected);
}
