/** @file
  Texts through EFI_HII_FONT_PROTOCOL.StringToImage, into an image of the
  box's size that this file makes (given none, the font driver would make one
  of its own size, 800 x 600 in OVMF). The row information gives each row's
  real width; each row is copied into the canvas centred in the box, and the
  rows together are centred vertically.
**/
#include <Library/BaseMemoryLib.h>

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

  Status = Font->StringToImage (Font, EFI_HII_OUT_FLAG_WRAP, Text, Info, &Image, 0, 0, &Rows, RowCount, nullptr);
  if (EFI_ERROR (Status)) {
    //
    // Without wrapping the text is cut at the image's edge instead.
    //
    Rows = nullptr;
    Status = Font->StringToImage (Font, EFI_HII_OUT_FLAG_CLIP, Text, Info, &Image, 0, 0, &Rows, RowCount, nullptr);
  }

  if (EFI_ERROR (Status) && (Rows != nullptr)) {
    FreePool (Rows);
    Rows = nullptr;
  }

  return Rows;
}

VOID
RenderText (IN RENDER_CANVAS *Canvas,
            IN CONST RENDER_BOX *Box,
            IN CONST CHAR16 *Text,
            IN UINT32 Foreground,
            IN UINT32 Background,
            IN UINTN Scale)
{
  CHAR16 Trimmed[TRIM_LIMIT + 1];
  EFI_FONT_DISPLAY_INFO Info;
  EFI_IMAGE_OUTPUT Image;
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL Fill;
  EFI_HII_ROW_INFO *Rows;
  UINTN RowCount = 0;
  UINTN Width;
  UINTN Height;
  UINTN Used = 0;

  if ((Canvas->Font == nullptr) || (Canvas->Font->StringToImage == nullptr) || (Text == nullptr) || (Scale == 0)) {
    return;
  }

  Text = WithoutTrailingSpaces (Text, Trimmed);
  Width = Box->Width / Scale;
  Height = Box->Height / Scale;
  if ((Text[0] == 0) || (Width == 0) || (Height < RENDER_GLYPH_HEIGHT) || (Width > MAX_UINT16) ||
      (Height > MAX_UINT16)) {
    return;
  }

  //
  // The text is drawn into an image of the box's size (before scaling), so
  // the font driver wraps it at the box's edge.
  //
  Image.Width = (UINT16)Width;
  Image.Height = (UINT16)Height;
  Image.Image.Bitmap = (EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)AllocatePool (Width * Height * sizeof (Fill));
  if (Image.Image.Bitmap == nullptr) {
    return;
  }

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
    //
    // The font driver's sizes are trusted only as far as the image goes.
    //
    for (UINTN Index = 0; Index < RowCount; Index++) {
      Used += Rows[Index].LineHeight;
    }

    Used = (Used > Height) ? Height : Used;
    UINTN Y = Box->Y + ((Height - Used) * Scale) / 2;

    for (UINTN Index = 0, Top = 0; (Index < RowCount) && (Top < Used); Index++) {
      UINTN RowWidth = (Rows[Index].LineWidth > Width) ? Width : Rows[Index].LineWidth;
      UINTN RowHeight = (Rows[Index].LineHeight > Used - Top) ? Used - Top : Rows[Index].LineHeight;
      UINTN X = Box->X + ((Width - RowWidth) * Scale) / 2;

      RenderCopy (Canvas, Box, X, Y + Top * Scale, &Image.Image.Bitmap[Top * Width], Width, RowWidth, RowHeight, Scale);
      Top += RowHeight;
    }

    FreePool (Rows);
  }

  FreePool (Image.Image.Bitmap);
}
