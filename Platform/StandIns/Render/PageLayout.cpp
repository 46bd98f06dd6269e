/** @file
  The layout of an ordinary page (StandInRender.h describes it): the controls
  stacked in creation order, each centred horizontally, the stack centred
  vertically, on the theme's background.
**/
#include "RenderInternal.h"

#define TEXT_PADDING 8U        ///< pixels above and below a line of text
#define TEXT_WIDTH_PERCENT 90U ///< default width of a text line
#define PROGRESS_WIDTH_PERCENT 60U
#define PROGRESS_HEIGHT_PERCENT 2U
#define IMAGE_PERCENT 30U

STATIC
UINTN
Percent (IN UINTN Total, IN UINTN Value)
{
  return (Total * ((Value > 100) ? 100 : Value)) / 100;
}

/**
  Gives the size of a control's box: its size attribute (4, w%, h%) when set,
  else the default of its kind.
**/
STATIC
VOID
ControlSize (IN CONST RENDER_CANVAS *Canvas, IN CONST STAND_IN_CONTROL *Control, OUT RENDER_BOX *Box)
{
  STAND_IN_ATTRIBUTE *Size = StandInFindAttribute (Control, UI_PROPERTY_SIZE);

  if ((Size != nullptr) && (Size->Value[0] == 4)) {
    Box->Width = Percent (Canvas->Width, Size->Value[1]);
    Box->Height = Percent (Canvas->Height, Size->Value[2]);
    return;
  }

  switch (Control->Kind) {
    case StandInControlImage:
      Box->Width = Percent (Canvas->Width, IMAGE_PERCENT);
      Box->Height = Percent (Canvas->Height, IMAGE_PERCENT);
      break;
    case StandInControlProgress:
      Box->Width = Percent (Canvas->Width, PROGRESS_WIDTH_PERCENT);
      Box->Height = Percent (Canvas->Height, PROGRESS_HEIGHT_PERCENT) + 2 * TEXT_PADDING;
      break;
    default:
      Box->Width = Percent (Canvas->Width, TEXT_WIDTH_PERCENT);
      Box->Height = RENDER_GLYPH_HEIGHT * RenderScale (Control, UI_STYLE_FONT) + 2 * TEXT_PADDING;
      break;
  }
}

VOID
RenderPage (IN RENDER_CANVAS *Canvas, IN STAND_IN_PAGE *Page)
{
  RENDER_BOX Whole = {0, 0, Canvas->Width, Canvas->Height};
  UINT32 Background;
  UINT32 Foreground;
  UINTN Total = 0;
  UINTN Y;

  RenderThemeColours (Page, &Background, &Foreground);
  RenderFill (Canvas, &Whole, Background);

  //
  // Two passes over the controls: the sizes first, for the height of the
  // stack, then the drawing.
  //
  for (UINTN Index = 0; Index < Page->ControlCount; Index++) {
    RENDER_BOX Box;

    ControlSize (Canvas, Page->Controls[Index], &Box);
    Total += Box.Height + ((Index == 0) ? 0 : RENDER_GAP);
  }

  Y = (Total < Canvas->Height) ? (Canvas->Height - Total) / 2 : 0;
  for (UINTN Index = 0; (Index < Page->ControlCount) && (Y < Canvas->Height); Index++) {
    STAND_IN_CONTROL *Control = Page->Controls[Index];
    RENDER_BOX Box;

    ControlSize (Canvas, Control, &Box);
    Box.X = (Canvas->Width - Box.Width) / 2;
    Box.Y = Y;
    if (RenderAttribute (Control, UI_PROPERTY_VISIBLE, 0, 1) != 0) {
      RenderControl (Canvas, Control, &Box, Background, Foreground);
    }

    Y += Box.Height + RENDER_GAP;
  }
}
