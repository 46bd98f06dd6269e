/** @file
  The prompt page: a framed box in the middle of the screen with the title,
  the message and the caption (controls 1711 to 1713; their own text when one
  was set, else what ShowPrompt received) and the password field (1714), whose
  characters are shown as '*'.
**/
#include "RenderInternal.h"

#define PROMPT_BOX_WIDTH_PERCENT 60U
#define PROMPT_BOX_HEIGHT_PERCENT 50U
#define PROMPT_BOX_COLOUR 0x202020U
#define PROMPT_FIELD_WIDTH_PERCENT 60U
#define PROMPT_LINE_PADDING 10U
#define PROMPT_MASK_LIMIT 64U ///< at most this many '*' are drawn

/**
  Draws one text of the prompt box at *Y, wrapped into up to Lines lines, and
  moves *Y below it.
**/
STATIC
VOID
DrawPromptLine (IN RENDER_CANVAS *Canvas,
                IN CONST RENDER_BOX *Inside,
                IN STAND_IN_CONTROL *Control,
                IN CONST CHAR16 *Shown,
                IN UINT32 Foreground,
                IN UINTN Lines,
                IN OUT UINTN *Y)
{
  UINTN Scale = (Control != nullptr) ? RenderScale (Control, UI_STYLE_FONT) : 1;
  RENDER_BOX Line = {Inside->X, *Y, Inside->Width, RENDER_GLYPH_HEIGHT * Scale * Lines + 2 * PROMPT_LINE_PADDING};
  CONST CHAR16 *Text = Shown;
  UINT32 Colour = Foreground;

  if (Control != nullptr) {
    CONST CHAR16 *Own = RenderControlText (Control);

    Text = (Own != nullptr) ? Own : Shown;
    Colour = (UINT32)RenderAttribute (Control, UI_STYLE_TEXT_COLOR, 0, Foreground) & 0xFFFFFFU;
    if (RenderAttribute (Control, UI_PROPERTY_VISIBLE, 0, 1) == 0) {
      Text = nullptr;
    }
  }

  RenderText (Canvas, &Line, Text, Colour, PROMPT_BOX_COLOUR, Scale);
  *Y += Line.Height;
}

STATIC
VOID
DrawField (IN RENDER_CANVAS *Canvas, IN CONST RENDER_BOX *Inside, IN STAND_IN_CONTROL *Field, IN UINTN Y)
{
  CHAR16 Mask[PROMPT_MASK_LIMIT + 1];
  UINTN Count = 0;
  RENDER_BOX Box;
  UINT32 Colour = RENDER_DEFAULT_FOREGROUND;

  Box.Width = (Inside->Width * PROMPT_FIELD_WIDTH_PERCENT) / 100;
  Box.Height = RENDER_GLYPH_HEIGHT + 2 * PROMPT_LINE_PADDING;
  Box.X = Inside->X + (Inside->Width - Box.Width) / 2;
  Box.Y = Y;
  if (Field != nullptr) {
    Colour = (UINT32)RenderAttribute (Field, UI_STYLE_FIELD_COLOR, 0, Colour) & 0xFFFFFFU;
    while ((Field->TextCopy != nullptr) && (Count < PROMPT_MASK_LIMIT) && (Field->TextCopy[Count] != 0)) {
      Mask[Count++] = u'*';
    }
  }

  Mask[Count] = 0;
  RenderFrame (Canvas, &Box, 2, Colour);
  RenderText (Canvas, &Box, Mask, Colour, PROMPT_BOX_COLOUR, 1);
}

VOID
RenderPromptPage (IN RENDER_CANVAS *Canvas, IN STAND_IN_PAGE *Page)
{
  RENDER_BOX Whole = {0, 0, Canvas->Width, Canvas->Height};
  CONST CHAR16 *Shown[] = {Page->Prompt.Title, Page->Prompt.Message, Page->Prompt.Caption};
  STATIC CONST UINTN Lines[] = {1, 3, 1}; // the message may be long
  RENDER_BOX Box;
  RENDER_BOX Inside;
  UINT32 Background;
  UINT32 Foreground;
  UINTN Y;

  RenderThemeColours (Page, &Background, &Foreground);
  RenderFill (Canvas, &Whole, Background);

  Box.Width = (Canvas->Width * PROMPT_BOX_WIDTH_PERCENT) / 100;
  Box.Height = (Canvas->Height * PROMPT_BOX_HEIGHT_PERCENT) / 100;
  Box.X = (Canvas->Width - Box.Width) / 2;
  Box.Y = (Canvas->Height - Box.Height) / 2;
  RenderFill (Canvas, &Box, PROMPT_BOX_COLOUR);
  RenderFrame (Canvas, &Box, 2, Foreground);

  Inside = {Box.X + RENDER_GAP, Box.Y + RENDER_GAP, Box.Width - 2 * RENDER_GAP, Box.Height - 2 * RENDER_GAP};
  Y = Inside.Y;
  for (UINTN Index = 0; Index < ARRAY_SIZE (Shown); Index++) {
    DrawPromptLine (Canvas, &Inside, StandInLookUpControl (Page, PROMPT_CONTROL_TEXT_1 + Index), Shown[Index],
                    Foreground, Lines[Index], &Y);
  }

  DrawField (Canvas, &Inside, StandInLookUpControl (Page, PROMPT_CONTROL_PASSWORD), Y + RENDER_GAP);
}
