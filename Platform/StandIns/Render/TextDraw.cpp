/** @file
  Texts through EFI_HII_FONT_PROTOCOL.StringToImage. Given no image, the font
  driver makes one of its own size (800 x 600 in OVMF) and fills only the
  rows it uses; the row information gives the real size of the text, and only
  that part is copied into the canvas, centred in its box.
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
  EFI_IMAGE_OUTPUT *Image = nullptr;
  EFI_HII_ROW_INFO *Rows = nullptr;
  UINTN RowCount = 0;
  UINTN TextWidth = 0;
  UINTN TextHeight = 0;
  EFI_STATUS Status;

  if ((Canvas->Font == nullptr) || (Canvas->Font->StringToImage == nullptr) || (Text == nullptr) || (Text[0] == 0)) {
    return;
  }

  Text = WithoutTrailingSpaces (Text, Trimmed);
  if (Text[0] == 0) {
    return;
  }

  ZeroMem (&Info, sizeof (Info));
  Info.ForegroundColor = RenderPixel (Foreground);
  Info.BackgroundColor = RenderPixel (Background);
  Info.FontInfoMask = EFI_FONT_INFO_SYS_FONT | EFI_FONT_INFO_SYS_SIZE | EFI_FONT_INFO_SYS_STYLE;

  Status =
    Canvas->Font->StringToImage (Canvas->Font, 0, (EFI_STRING)Text, &Info, &Image, 0, 0, &Rows, &RowCount, nullptr);
  if (!EFI_ERROR (Status) && (Image != nullptr) && (Image->Image.Bitmap != nullptr) && (Rows != nullptr)) {
    for (UINTN Index = 0; Index < RowCount; Index++) {
      TextWidth = (Rows[Index].LineWidth > TextWidth) ? Rows[Index].LineWidth : TextWidth;
      TextHeight += Rows[Index].LineHeight;
    }

    //
    // The font driver's sizes are trusted only as far as its own image goes.
    //
    TextWidth = (TextWidth > Image->Width) ? Image->Width : TextWidth;
    TextHeight = (TextHeight > Image->Height) ? Image->Height : TextHeight;
    UINTN DrawWidth = TextWidth * Scale;
    UINTN DrawHeight = TextHeight * Scale;
    UINTN X = Box->X + ((DrawWidth < Box->Width) ? (Box->Width - DrawWidth) / 2 : 0);
    UINTN Y = Box->Y + ((DrawHeight < Box->Height) ? (Box->Height - DrawHeight) / 2 : 0);

    RenderCopy (Canvas, Box, X, Y, Image->Image.Bitmap, Image->Width, TextWidth, TextHeight, Scale);
  }

  if (Rows != nullptr) {
    FreePool (Rows);
  }

  if (Image != nullptr) {
    if (Image->Image.Bitmap != nullptr) {
      FreePool (Image->Image.Bitmap);
    }

    FreePool (Image);
  }
}
