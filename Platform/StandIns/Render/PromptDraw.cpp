/** @file
  The prompt page: a framed box in the middle of the screen with the title,
  the message and the caption (controls 1711 to 1713; their own text when one
  was set, else what ShowPrompt received), the password field (1714), whose
  characters are shown as '*' followed by a caret, and the cancel and submit
  buttons (1715, 1716) side by side below it. A hidden control is left out
  and the others keep their places.
**/
#include <Library/CompileTimeLib.h>

#include "RenderInternal.h"

#define PROMPT_BOX_WIDTH_PERCENT 60U
#define PROMPT_BOX_HEIGHT_PERCENT 50U
#define PROMPT_BOX_COLOUR 0x202020U
#define PROMPT_FIELD_WIDTH_PERCENT 60U
#define PROMPT_LINE_PADDING 10U
#define PROMPT_FIELD_INSET 8U    ///< pixels between the field's edge and its text
#define PROMPT_CARET_WIDTH 2U    ///< pixels
#define PROMPT_BUTTON_WIDTH 120U ///< pixels, each button
#define PROMPT_MASK_LIMIT 64U    ///< at most this many '*' are drawn

STATIC constexpr auto mCancelLabel = CompileTime::MakeWideString (u"Cancel");
STATIC constexpr auto mSubmitLabel = CompileTime::MakeWideString (u"OK");

//
// Where each part of the prompt goes, worked out before anything is drawn so
// that the one text image of the redraw can be reserved for the largest.
//
enum { PromptTitle, PromptMessage, PromptCaption, PromptField, PromptCancel, PromptSubmit, PromptParts };

typedef struct {
  RENDER_BOX Box[PromptParts];
  UINTN Scale[PromptParts];
  STAND_IN_CONTROL *Control[PromptParts]; ///< the part's control, or null
} PROMPT_LAYOUT;

/** Lays the box out: the three texts, the field and the row of buttons, top down. **/
STATIC
VOID
LayOutPrompt (IN STAND_IN_PAGE *Page, IN CONST RENDER_BOX *Inside, OUT PROMPT_LAYOUT *Layout)
{
  STATIC CONST UINTN Lines[] = {1, 3, 1}; // the message may be long
  UINTN Y = Inside->Y;

  for (UINTN Part = 0; Part < PromptParts; Part++) {
    Layout->Control[Part] = StandInLookUpControl (Page, PROMPT_CONTROL_TEXT_1 + Part);
    Layout->Scale[Part] = (Layout->Control[Part] != nullptr) ? RenderScale (Layout->Control[Part], UI_STYLE_FONT) : 1;
  }

  for (UINTN Part = PromptTitle; Part <= PromptCaption; Part++) {
    UINTN Height = RENDER_GLYPH_HEIGHT * Layout->Scale[Part] * Lines[Part] + 2 * PROMPT_LINE_PADDING;

    Layout->Box[Part] = {Inside->X, Y, Inside->Width, Height};
    Y += Height;
  }

  //
  // The field's text is always drawn in the small font, whatever size the
  // field's style asks for.
  //
  RENDER_BOX *Field = &Layout->Box[PromptField];

  Layout->Scale[PromptField] = 1;
  Field->Width = (Inside->Width * PROMPT_FIELD_WIDTH_PERCENT) / 100;
  Field->Height = RENDER_GLYPH_HEIGHT + 2 * PROMPT_LINE_PADDING;
  Field->X = Inside->X + (Inside->Width - Field->Width) / 2;
  Field->Y = Y + RENDER_GAP;
  Y = Field->Y + Field->Height + RENDER_GAP;

  //
  // Cancel on the left, submit on the right, the pair centred under the field.
  //
  UINTN Pair = 2 * PROMPT_BUTTON_WIDTH + RENDER_GAP;
  UINTN Left = Inside->X + ((Inside->Width > Pair) ? (Inside->Width - Pair) / 2 : 0);

  Layout->Box[PromptCancel] = {Left, Y, PROMPT_BUTTON_WIDTH, Field->Height};
  Layout->Box[PromptSubmit] = {Left + PROMPT_BUTTON_WIDTH + RENDER_GAP, Y, PROMPT_BUTTON_WIDTH, Field->Height};
  Layout->Scale[PromptCancel] = 1;
  Layout->Scale[PromptSubmit] = 1;
}

/** Draws one of the three texts: its control's own text, else what ShowPrompt received. **/
STATIC
VOID
DrawPromptText (
  IN RENDER_CANVAS *Canvas, IN CONST PROMPT_LAYOUT *Layout, IN UINTN Part, IN CONST CHAR16 *Shown, IN UINT32 Foreground)
{
  STAND_IN_CONTROL *Control = Layout->Control[Part];
  CONST CHAR16 *Text = Shown;
  UINT32 Colour = Foreground;

  if (Control != nullptr) {
    CONST CHAR16 *Own = RenderControlText (Control);

    if (!RenderIsVisible (Control)) {
      return;
    }

    Text = (Own != nullptr) ? Own : Shown;
    Colour = RenderColour (Control, UI_STYLE_TEXT_COLOR, Foreground);
  }

  RenderText (Canvas, &Layout->Box[Part], Text, Colour, PROMPT_BOX_COLOUR, Layout->Scale[Part], 0, nullptr);
}

/** Draws the field's frame, one '*' per character typed and the caret after them. **/
STATIC
VOID
DrawField (IN RENDER_CANVAS *Canvas, IN CONST PROMPT_LAYOUT *Layout)
{
  CONST RENDER_BOX *Box = &Layout->Box[PromptField];
  STAND_IN_CONTROL *Field = Layout->Control[PromptField];
  CHAR16 Mask[PROMPT_MASK_LIMIT + 1];
  UINTN Count = 0;
  UINT32 Colour = RENDER_DEFAULT_FOREGROUND;
  UINTN End;

  if (Field != nullptr) {
    if (!RenderIsVisible (Field)) {
      return;
    }

    Colour = RenderColour (Field, UI_STYLE_FIELD_COLOR, Colour);
    while ((Field->TextCopy != nullptr) && (Count < PROMPT_MASK_LIMIT) && (Field->TextCopy[Count] != 0)) {
      Mask[Count++] = u'*';
    }
  }

  Mask[Count] = 0;
  RenderFrame (Canvas, Box, 2, Colour);
  if (Box->Width <= 2 * PROMPT_FIELD_INSET + PROMPT_CARET_WIDTH) {
    return;
  }

  RENDER_BOX Text = {Box->X + PROMPT_FIELD_INSET, Box->Y, Box->Width - 2 * PROMPT_FIELD_INSET, Box->Height};

  RenderText (Canvas, &Text, Mask, Colour, PROMPT_BOX_COLOUR, 1, RENDER_TEXT_LEFT, &End);

  //
  // The caret sits one pixel after the last '*' (at the text's start when the
  // field is empty), as tall as a line, and never past the field's text area.
  //
  UINTN Last = Text.X + Text.Width - PROMPT_CARET_WIDTH;
  RENDER_BOX Caret = {(End + 1 < Last) ? End + 1 : Last, Box->Y + (Box->Height - RENDER_GLYPH_HEIGHT) / 2,
                      PROMPT_CARET_WIDTH, RENDER_GLYPH_HEIGHT};

  RenderFill (Canvas, &Caret, Colour);
}

/** Draws a framed button with its label centred, unless its control is hidden. **/
STATIC
VOID
DrawButton (
  IN RENDER_CANVAS *Canvas, IN CONST PROMPT_LAYOUT *Layout, IN UINTN Part, IN CONST CHAR16 *Label, IN UINT32 Foreground)
{
  STAND_IN_CONTROL *Button = Layout->Control[Part];
  UINT32 Colour = Foreground;

  if (Button != nullptr) {
    CONST CHAR16 *Own = RenderControlText (Button);

    if (!RenderIsVisible (Button)) {
      return;
    }

    Label = (Own != nullptr) ? Own : Label;
    Colour = RenderColour (Button, UI_STYLE_TEXT_COLOR, Foreground);
  }

  RenderFrame (Canvas, &Layout->Box[Part], 1, Colour);
  RenderText (Canvas, &Layout->Box[Part], Label, Colour, PROMPT_BOX_COLOUR, 1, 0, nullptr);
}

VOID
RenderPromptPage (IN RENDER_CANVAS *Canvas, IN STAND_IN_PAGE *Page)
{
  RENDER_BOX Whole = {0, 0, Canvas->Width, Canvas->Height};
  CONST CHAR16 *Shown[] = {Page->Prompt.Title, Page->Prompt.Message, Page->Prompt.Caption};
  PROMPT_LAYOUT Layout;
  RENDER_BOX Box;
  RENDER_BOX Inside;
  UINT32 Background;
  UINT32 Foreground;
  UINTN Largest = 0;

  RenderThemeColours (Page, &Background, &Foreground);
  RenderFill (Canvas, &Whole, Background);

  Box.Width = (Canvas->Width * PROMPT_BOX_WIDTH_PERCENT) / 100;
  Box.Height = (Canvas->Height * PROMPT_BOX_HEIGHT_PERCENT) / 100;
  Box.X = (Canvas->Width - Box.Width) / 2;
  Box.Y = (Canvas->Height - Box.Height) / 2;
  if ((Box.Width <= 2 * RENDER_GAP) || (Box.Height <= 2 * RENDER_GAP)) {
    return;
  }

  RenderFill (Canvas, &Box, PROMPT_BOX_COLOUR);
  RenderFrame (Canvas, &Box, 2, Foreground);

  Inside = {Box.X + RENDER_GAP, Box.Y + RENDER_GAP, Box.Width - 2 * RENDER_GAP, Box.Height - 2 * RENDER_GAP};
  LayOutPrompt (Page, &Inside, &Layout);
  for (UINTN Part = 0; Part < PromptParts; Part++) {
    UINTN Pixels = RenderTextPixels (&Layout.Box[Part], Layout.Scale[Part]);

    Largest = (Pixels > Largest) ? Pixels : Largest;
  }

  RenderReserveTexts (Canvas, Largest);
  for (UINTN Part = PromptTitle; Part <= PromptCaption; Part++) {
    DrawPromptText (Canvas, &Layout, Part, Shown[Part], Foreground);
  }

  DrawField (Canvas, &Layout);
  DrawButton (Canvas, &Layout, PromptCancel, mCancelLabel.Text, Foreground);
  DrawButton (Canvas, &Layout, PromptSubmit, mSubmitLabel.Text, Foreground);
  RenderReleaseTexts (Canvas);
}
