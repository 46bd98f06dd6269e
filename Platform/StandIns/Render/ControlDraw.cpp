/** @file
  One control of an ordinary page in its box: a text line, a progress bar, an
  image, or a framed field. Hidden controls are skipped by the caller.
**/
#include "RenderInternal.h"

#define PROGRESS_FRAME 2U ///< pixels of the progress bar's frame
#define PROGRESS_INSET 2U ///< pixels between the frame and the filled part

UINTN
RenderAttribute (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag, IN UINTN Index, IN UINTN Default)
{
  STAND_IN_ATTRIBUTE *Attribute = StandInFindAttribute (Control, Tag);

  return ((Attribute == nullptr) || (Index >= 3)) ? Default : Attribute->Value[Index];
}

UINTN
RenderScale (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag)
{
  return (RenderAttribute (Control, Tag, 2, 0) >= RENDER_LARGE_FONT) ? 2 : 1;
}

BOOLEAN
RenderIsVisible (IN CONST STAND_IN_CONTROL *Control)
{
  return RenderAttribute (Control, UI_PROPERTY_VISIBLE, 0, 1) != 0;
}

UINT32
RenderColour (IN CONST STAND_IN_CONTROL *Control, IN UINT32 Tag, IN UINT32 Default)
{
  return (UINT32)RenderAttribute (Control, Tag, 0, Default) & 0xFFFFFFU;
}

CONST CHAR16 *
RenderControlText (IN STAND_IN_CONTROL *Control)
{
  CHAR16 *String = nullptr;

  if (Control->TextCopy != nullptr) {
    return Control->TextCopy;
  }

  if ((Control->TextStringId == 0) ||
      EFI_ERROR (StandInLookUpString (Control->TextHiiHandle, Control->TextStringId, &String))) {
    return nullptr;
  }

  return String;
}

STATIC
VOID
DrawProgress (IN RENDER_CANVAS *Canvas, IN STAND_IN_CONTROL *Control, IN CONST RENDER_BOX *Box, IN UINT32 Colour)
{
  UINTN Minimum = RenderAttribute (Control, UI_DATA_PROGRESS_MINIMUM, 0, Control->Minimum);
  UINTN Maximum = RenderAttribute (Control, UI_DATA_PROGRESS_MAXIMUM, 0, Control->Maximum);
  UINTN Value = RenderAttribute (Control, UI_DATA_PROGRESS_VALUE, 0, Minimum);
  UINTN Border = PROGRESS_FRAME + PROGRESS_INSET;
  RENDER_BOX Filled;

  RenderFrame (Canvas, Box, PROGRESS_FRAME, Colour);
  if ((Maximum <= Minimum) || (Box->Width <= 2 * Border) || (Box->Height <= 2 * Border)) {
    return;
  }

  Value = (Value < Minimum) ? Minimum : ((Value > Maximum) ? Maximum : Value);
  Filled.X = Box->X + Border;
  Filled.Y = Box->Y + Border;
  Filled.Height = Box->Height - 2 * Border;
  //
  // Values from a caller may be anything: both are shifted down until the
  // product with a screen width cannot overflow.
  //
  UINTN Range = Maximum - Minimum;
  UINTN Done = Value - Minimum;

  while (Range > 0xFFFFFFFFU) {
    Range >>= 1;
    Done >>= 1;
  }

  Filled.Width = (Done * (Box->Width - 2 * Border)) / Range;
  RenderFill (Canvas, &Filled, Colour);
}

STATIC
VOID
DrawImage (IN RENDER_CANVAS *Canvas, IN STAND_IN_CONTROL *Control, IN CONST RENDER_BOX *Box)
{
  STAND_IN_IMAGE *Image = StandInLookUpImage (RenderAttribute (Control, UI_STYLE_IMAGE, 0, 0));

  if ((Image == nullptr) || EFI_ERROR (StandInDecodeImage (Image))) {
    return;
  }

  RenderImageFit (Canvas, Box, Image->Pixels, Image->Width, Image->Height);
}

VOID
RenderControl (IN RENDER_CANVAS *Canvas,
               IN STAND_IN_CONTROL *Control,
               IN CONST RENDER_BOX *Box,
               IN UINTN Align,
               IN UINT32 Background,
               IN UINT32 Foreground)
{
  UINT32 Colour = RenderColour (Control, UI_STYLE_TEXT_COLOR, Foreground);

  switch (Control->Kind) {
    case StandInControlImage:
      DrawImage (Canvas, Control, Box);
      break;
    case StandInControlProgress:
      DrawProgress (Canvas, Control, Box, Colour);
      break;
    case StandInControlText:
    case StandInControlButton:
      RenderText (Canvas, Box, RenderControlText (Control), Colour, Background, RenderScale (Control, UI_STYLE_FONT),
                  Align, nullptr);
      break;
    case StandInControlField:
      Colour = RenderColour (Control, UI_STYLE_FIELD_COLOR, Foreground);
      RenderFrame (Canvas, Box, 1, Colour);
      break;
    default:
      break;
  }
}
