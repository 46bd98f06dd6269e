/** @file
  Texts through EFI_HII_FONT_PROTOCOL.StringToImage, into an image of the
  box's size (given none, the font driver would make one of its own size,
  800 x 600 in OVMF); one image, reserved per redraw for the page's largest
  text, serves every text of the redraw. The row information gives each row's
  real width; each row is copied into the canvas centred in the box or at its
  left edge, and the rows together are centred vertically or start at the top.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#include "RenderInternal.h"

///
/// Texts up to this length are drawn without their trailing spaces, which
/// would push them off centre.
///
#define TRIM_LIMIT 256U

/**
  @return Text, or a copy in Buffer without its trailing spaces.
**/
STATIC
CONST CHAR16 *
WithoutTrailingSpaces (IN CONST CHAR16 *Text, OUT CHAR16 (&Buffer)[TRIM_LIMIT + 1])
{
  UINTN Length = 0;

  while ((Length <= TRIM_LIMIT) && (Text[Length] != 0)) {
    Length++;
  }

  if ((Length > TRIM_LIMIT) || (Length == 0) || (Text[Length - 1] != u' ')) {
    return Text;
  }

  while ((Length > 0) && (Text[Length - 1] == u' ')) {
    Length--;
  }

  CopyMem (Buffer, Text, Length * sizeof (CHAR16));
  Buffer[Length] = 0;
  return Buffer;
}

/**
  Renders Text into Image (filled with the background first), wrapped at its
  width when the font driver can wrap.

  @return the rows, a pool array the caller frees, or null.
**/
STATIC
EFI_HII_ROW_INFO *
RenderRows (IN EFI_HII_FONT_PROTOCOL *Font,
            IN CONST CHAR16 *Text,
            IN CONST EFI_FONT_DISPLAY_INFO *Info,
            IN EFI_IMAGE_OUTPUT *Image,
            OUT UINTN *RowCount)
{
  EFI_HII_ROW_INFO *Rows = nullptr;
  EFI_STATUS Status;

  //
  // The protocol takes the text as a constant pointer to characters it does
  // not change, as EFI_STRING: the cast only drops what C cannot say.
  //
  Status =
    Font->StringToImage (Font, EFI_HII_OUT_FLAG_WRAP, (EFI_STRING)Text, Info, &Image, 0, 0, &Rows, RowCount, nullptr);
  if (EFI_ERROR (Status)) {
    //
    // Without wrapping the text is cut at the image's edge instead.
    //
    Rows = nullptr;
    Status =
      Font->StringToImage (Font, EFI_HII_OUT_FLAG_CLIP, (EFI_STRING)Text, Info, &Image, 0, 0, &Rows, RowCount, nullptr);
  }

  if (EFI_ERROR (Status) && (Rows != nullptr)) {
    FreePool (Rows);
    Rows = nullptr;
  }

  return Rows;
}

UINTN
RenderTextPixels (IN CONST RENDER_BOX *Box, IN UINTN Scale)
{
  return (Scale == 0) ? 0 : (Box->Width / Scale) * (Box->Height / Scale);
}

VOID
RenderReserveTexts (IN RENDER_CANVAS *Canvas, IN UINTN Pixels)
{
  RenderReleaseTexts (Canvas);
  if ((Pixels == 0) || (Pixels > MAX_UINTN / sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL))) {
    return;
  }

  Canvas->TextImage = (EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)AllocatePool (Pixels * sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL));
  Canvas->TextImagePixels = (Canvas->TextImage == nullptr) ? 0 : Pixels;
}

VOID
RenderReleaseTexts (IN RENDER_CANVAS *Canvas)
{
  if (Canvas->TextImage != nullptr) {
    FreePool (Canvas->TextImage);
  }

  Canvas->TextImage = nullptr;
  Canvas->TextImagePixels = 0;
}

/**
  Copies the rendered rows of a Width x Height text image into Box, each row
  placed as Align says.

  @return the column just right of the last row copied.
**/
STATIC
UINTN
CopyRows (IN RENDER_CANVAS *Canvas,
          IN CONST RENDER_BOX *Box,
          IN CONST EFI_HII_ROW_INFO *Rows,
          IN UINTN RowCount,
          IN UINTN Width,
          IN UINTN Height,
          IN UINTN Scale,
          IN UINTN Align)
{
  UINTN Used = 0;
  UINTN End = Box->X;

  //
  // The font driver's sizes are trusted only as far as the image goes.
  //
  for (UINTN Index = 0; (Index < RowCount) && (Used < Height); Index++) {
    Used += Rows[Index].LineHeight;
  }

  Used = (Used > Height) ? Height : Used;
  UINTN Y = Box->Y + (((Align & RENDER_TEXT_TOP) != 0) ? 0 : ((Height - Used) * Scale) / 2);

  for (UINTN Index = 0, Top = 0; (Index < RowCount) && (Top < Used); Index++) {
    UINTN RowWidth = (Rows[Index].LineWidth > Width) ? Width : Rows[Index].LineWidth;
    UINTN RowHeight = (Rows[Index].LineHeight > Used - Top) ? Used - Top : Rows[Index].LineHeight;
    UINTN X = Box->X + (((Align & RENDER_TEXT_LEFT) != 0) ? 0 : ((Width - RowWidth) * Scale) / 2);

    RenderCopy (Canvas, Box, X, Y + Top * Scale, &Canvas->TextImage[Top * Width], Width, RowWidth, RowHeight, Scale);
    Top += RowHeight;
    End = X + RowWidth * Scale;
  }

  return End;
}

VOID
RenderText (IN RENDER_CANVAS *Canvas,
            IN CONST RENDER_BOX *Box,
            IN CONST CHAR16 *Text,
            IN UINT32 Foreground,
            IN UINT32 Background,
            IN UINTN Scale,
            IN UINTN Align,
            OUT UINTN *End OPTIONAL)
{
  CHAR16 Trimmed[TRIM_LIMIT + 1];
  EFI_FONT_DISPLAY_INFO Info;
  EFI_IMAGE_OUTPUT Image;
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL Fill;
  EFI_HII_ROW_INFO *Rows;
  UINTN RowCount = 0;
  UINTN Width;
  UINTN Height;

  if (End != nullptr) {
    *End = Box->X;
  }

  if ((Canvas->Font == nullptr) || (Canvas->Font->StringToImage == nullptr) || (Text == nullptr) || (Scale == 0)) {
    return;
  }

  Text = WithoutTrailingSpaces (Text, Trimmed);

  //
  // Rows that start at the left lose their leading spaces too: the text lines
  // up with what it stands beside (the percentage's blanks only reserve room).
  //
  while (((Align & RENDER_TEXT_LEFT) != 0) && (Text[0] == u' ')) {
    Text++;
  }

  Width = Box->Width / Scale;
  Height = Box->Height / Scale;
  if ((Text[0] == 0) || (Width == 0) || (Height < RENDER_GLYPH_HEIGHT) || (Width > MAX_UINT16) ||
      (Height > MAX_UINT16) || (Width * Height > Canvas->TextImagePixels)) {
    return;
  }

  //
  // The text is drawn into an image of the box's size (before scaling), so
  // the font driver wraps it at the box's edge; the image is the redraw's
  // reserved one, which is at least that large.
  //
  Image.Width = (UINT16)Width;
  Image.Height = (UINT16)Height;
  Image.Image.Bitmap = Canvas->TextImage;
  Fill = RenderPixel (Background);
  for (UINTN Index = 0; Index < Width * Height; Index++) {
    Image.Image.Bitmap[Index] = Fill;
  }

  ZeroMem (&Info, sizeof (Info));
  Info.ForegroundColor = RenderPixel (Foreground);
  Info.BackgroundColor = Fill;
  Info.FontInfoMask = EFI_FONT_INFO_SYS_FONT | EFI_FONT_INFO_SYS_SIZE | EFI_FONT_INFO_SYS_STYLE;
  Rows = RenderRows (Canvas->Font, Text, &Info, &Image, &RowCount);
  if (Rows != nullptr) {
    UINTN Right = CopyRows (Canvas, Box, Rows, RowCount, Width, Height, Scale, Align);

    if (End != nullptr) {
      *End = Right;
    }

    FreePool (Rows);
  }
}
