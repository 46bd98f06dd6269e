/** @file
  Pixel work on the back buffer: fills, frames, block copies and the scaled
  image. Everything is cut to the canvas, so no box from a page can write
  outside it.
**/
#include "RenderInternal.h"

EFI_GRAPHICS_OUTPUT_BLT_PIXEL
RenderPixel (IN UINT32 Rgb)
{
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL Pixel;

  Pixel.Blue = (UINT8)(Rgb & 0xFFU);
  Pixel.Green = (UINT8)((Rgb >> 8) & 0xFFU);
  Pixel.Red = (UINT8)((Rgb >> 16) & 0xFFU);
  Pixel.Reserved = 0;
  return Pixel;
}

/**
  Cuts Box to the canvas and to Clip (when given).

  @return FALSE when nothing of it is left.
**/
STATIC
BOOLEAN
CutBox (IN CONST RENDER_CANVAS *Canvas, IN CONST RENDER_BOX *Clip OPTIONAL, IN OUT RENDER_BOX *Box)
{
  UINTN Left = 0;
  UINTN Top = 0;
  UINTN Right = Canvas->Width;
  UINTN Bottom = Canvas->Height;

  if (Clip != nullptr) {
    Left = Clip->X;
    Top = Clip->Y;
    Right = ((Clip->X + Clip->Width) < Right) ? (Clip->X + Clip->Width) : Right;
    Bottom = ((Clip->Y + Clip->Height) < Bottom) ? (Clip->Y + Clip->Height) : Bottom;
  }

  UINTN BoxRight = Box->X + Box->Width;
  UINTN BoxBottom = Box->Y + Box->Height;

  BoxRight = (BoxRight > Right) ? Right : BoxRight;
  BoxBottom = (BoxBottom > Bottom) ? Bottom : BoxBottom;
  Box->X = (Box->X < Left) ? Left : Box->X;
  Box->Y = (Box->Y < Top) ? Top : Box->Y;
  if ((Box->X >= BoxRight) || (Box->Y >= BoxBottom)) {
    return FALSE;
  }

  Box->Width = BoxRight - Box->X;
  Box->Height = BoxBottom - Box->Y;
  return TRUE;
}

VOID
RenderFill (IN RENDER_CANVAS *Canvas, IN CONST RENDER_BOX *Box, IN UINT32 Rgb)
{
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL Pixel = RenderPixel (Rgb);
  RENDER_BOX Cut = *Box;

  if (!CutBox (Canvas, nullptr, &Cut)) {
    return;
  }

  for (UINTN Row = Cut.Y; Row < Cut.Y + Cut.Height; Row++) {
    EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Line = &Canvas->Pixels[Row * Canvas->Width];

    for (UINTN Column = Cut.X; Column < Cut.X + Cut.Width; Column++) {
      Line[Column] = Pixel;
    }
  }
}

VOID
RenderFrame (IN RENDER_CANVAS *Canvas, IN CONST RENDER_BOX *Box, IN UINTN Thickness, IN UINT32 Rgb)
{
  RENDER_BOX Edge;

  if ((Box->Width <= 2 * Thickness) || (Box->Height <= 2 * Thickness)) {
    RenderFill (Canvas, Box, Rgb);
    return;
  }

  Edge = {Box->X, Box->Y, Box->Width, Thickness};
  RenderFill (Canvas, &Edge, Rgb);
  Edge.Y = Box->Y + Box->Height - Thickness;
  RenderFill (Canvas, &Edge, Rgb);
  Edge = {Box->X, Box->Y, Thickness, Box->Height};
  RenderFill (Canvas, &Edge, Rgb);
  Edge.X = Box->X + Box->Width - Thickness;
  RenderFill (Canvas, &Edge, Rgb);
}

VOID
RenderCopy (IN RENDER_CANVAS *Canvas,
            IN CONST RENDER_BOX *Clip,
            IN UINTN X,
            IN UINTN Y,
            IN CONST EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Source,
            IN UINTN SourceStride,
            IN UINTN Width,
            IN UINTN Height,
            IN UINTN Scale)
{
  RENDER_BOX Cut = {X, Y, Width * Scale, Height * Scale};

  if ((Scale == 0) || (Source == nullptr) || !CutBox (Canvas, Clip, &Cut)) {
    return;
  }

  for (UINTN Row = Cut.Y; Row < Cut.Y + Cut.Height; Row++) {
    CONST EFI_GRAPHICS_OUTPUT_BLT_PIXEL *From = &Source[((Row - Y) / Scale) * SourceStride];
    EFI_GRAPHICS_OUTPUT_BLT_PIXEL *To = &Canvas->Pixels[Row * Canvas->Width];

    for (UINTN Column = Cut.X; Column < Cut.X + Cut.Width; Column++) {
      To[Column] = From[(Column - X) / Scale];
    }
  }
}

VOID
RenderImageFit (IN RENDER_CANVAS *Canvas,
                IN CONST RENDER_BOX *Box,
                IN CONST EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Pixels,
                IN UINTN Width,
                IN UINTN Height)
{
  UINTN DrawWidth;
  UINTN DrawHeight;
  RENDER_BOX Cut;

  if ((Pixels == nullptr) || (Width == 0) || (Height == 0) || (Box->Width == 0) || (Box->Height == 0)) {
    return;
  }

  //
  // The larger of the two ratios decides, so the image fits both ways; its
  // aspect stays as it is.
  //
  if (Width * Box->Height >= Height * Box->Width) {
    DrawWidth = Box->Width;
    DrawHeight = (Height * Box->Width) / Width;
  } else {
    DrawHeight = Box->Height;
    DrawWidth = (Width * Box->Height) / Height;
  }

  DrawWidth = (DrawWidth == 0) ? 1 : DrawWidth;
  DrawHeight = (DrawHeight == 0) ? 1 : DrawHeight;
  Cut = {Box->X + (Box->Width - DrawWidth) / 2, Box->Y + (Box->Height - DrawHeight) / 2, DrawWidth, DrawHeight};
  RENDER_BOX Target = Cut;

  if (!CutBox (Canvas, nullptr, &Cut)) {
    return;
  }

  for (UINTN Row = Cut.Y; Row < Cut.Y + Cut.Height; Row++) {
    CONST EFI_GRAPHICS_OUTPUT_BLT_PIXEL *From = &Pixels[((Row - Target.Y) * Height / DrawHeight) * Width];
    EFI_GRAPHICS_OUTPUT_BLT_PIXEL *To = &Canvas->Pixels[Row * Canvas->Width];

    for (UINTN Column = Cut.X; Column < Cut.X + Cut.Width; Column++) {
      To[Column] = From[(Column - Target.X) * Width / DrawWidth];
    }
  }
}
