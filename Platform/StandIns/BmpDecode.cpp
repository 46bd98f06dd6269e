/** @file
  Decoding of BMP files into BLT pixels, for the image record that pages read
  (and, in firmware, for drawing). Uncompressed files of 1, 4, 8, 24 and 32
  bits per pixel; 32 bits also with the usual bit fields. Every offset and size
  is checked against the data before it is read.
**/
extern "C" {
#include <Library/MemoryAllocationLib.h>
}

#include "StandInInternal.h"

#define BMP_FILE_HEADER_SIZE 14U
#define BMP_INFO_HEADER_MIN_SIZE 40U
#define BMP_MASKS_OFFSET (BMP_FILE_HEADER_SIZE + BMP_INFO_HEADER_MIN_SIZE)
#define BMP_MASKS_SIZE 12U
#define BMP_MAX_SIDE 0x4000
#define BMP_COMPRESSION_NONE 0U
#define BMP_COMPRESSION_BIT_FIELDS 3U

STATIC
UINT16
ReadUint16 (IN CONST UINT8 *Bytes)
{
  return (UINT16)(Bytes[0] | (Bytes[1] << 8));
}

STATIC
UINT32
ReadUint32 (IN CONST UINT8 *Bytes)
{
  return (UINT32)Bytes[0] | ((UINT32)Bytes[1] << 8) | ((UINT32)Bytes[2] << 16) | ((UINT32)Bytes[3] << 24);
}

///
/// What the headers say, once checked.
///
typedef struct {
  UINTN Width;
  UINTN Height;
  BOOLEAN TopDown;
  UINTN Bits;
  UINTN RowSize;
  UINTN PixelOffset;
  CONST UINT8 *Palette; ///< null above 8 bits
  UINTN PaletteEntries;
} BMP_LAYOUT;

STATIC
BOOLEAN
HasStandardMasks (IN CONST UINT8 *Bytes, IN UINTN Size)
{
  if (Size < BMP_MASKS_OFFSET + BMP_MASKS_SIZE) {
    return FALSE;
  }

  return (ReadUint32 (Bytes + BMP_MASKS_OFFSET) == 0x00FF0000U) &&
         (ReadUint32 (Bytes + BMP_MASKS_OFFSET + 4) == 0x0000FF00U) &&
         (ReadUint32 (Bytes + BMP_MASKS_OFFSET + 8) == 0x000000FFU);
}

STATIC
EFI_STATUS
ReadLayout (IN CONST UINT8 *Bytes, IN UINTN Size, OUT BMP_LAYOUT *Layout)
{
  UINT32 InfoSize;
  INT32 RawWidth;
  INT32 RawHeight;
  UINT32 Compression;
  UINT32 ColorsUsed;
  UINTN PaletteOffset;

  if ((Size < BMP_FILE_HEADER_SIZE + BMP_INFO_HEADER_MIN_SIZE) || (Bytes[0] != 'B') || (Bytes[1] != 'M')) {
    return EFI_UNSUPPORTED;
  }

  Layout->PixelOffset = ReadUint32 (Bytes + 10);
  InfoSize = ReadUint32 (Bytes + 14);
  RawWidth = (INT32)ReadUint32 (Bytes + 18);
  RawHeight = (INT32)ReadUint32 (Bytes + 22);
  Layout->Bits = ReadUint16 (Bytes + 28);
  Compression = ReadUint32 (Bytes + 30);
  ColorsUsed = ReadUint32 (Bytes + 46);

  if ((InfoSize < BMP_INFO_HEADER_MIN_SIZE) || (InfoSize > Size - BMP_FILE_HEADER_SIZE) ||
      (ReadUint16 (Bytes + 26) != 1)) {
    return EFI_UNSUPPORTED;
  }

  if ((RawWidth <= 0) || (RawWidth > BMP_MAX_SIDE) || (RawHeight == 0) || (RawHeight > BMP_MAX_SIDE) ||
      (RawHeight < -BMP_MAX_SIDE)) {
    return EFI_UNSUPPORTED;
  }

  if ((Layout->Bits != 1) && (Layout->Bits != 4) && (Layout->Bits != 8) && (Layout->Bits != 24) &&
      (Layout->Bits != 32)) {
    return EFI_UNSUPPORTED;
  }

  if ((Compression != BMP_COMPRESSION_NONE) &&
      !((Compression == BMP_COMPRESSION_BIT_FIELDS) && (Layout->Bits == 32) && HasStandardMasks (Bytes, Size))) {
    return EFI_UNSUPPORTED;
  }

  Layout->Width = (UINTN)RawWidth;
  Layout->TopDown = (RawHeight < 0) ? TRUE : FALSE;
  Layout->Height = (RawHeight < 0) ? (UINTN)-RawHeight : (UINTN)RawHeight;
  Layout->RowSize = ((Layout->Width * Layout->Bits + 31) / 32) * 4;
  if ((Layout->PixelOffset > Size) || (Layout->RowSize * Layout->Height > Size - Layout->PixelOffset)) {
    return EFI_UNSUPPORTED;
  }

  Layout->Palette = nullptr;
  Layout->PaletteEntries = 0;
  if (Layout->Bits <= 8) {
    Layout->PaletteEntries = (ColorsUsed != 0) ? ColorsUsed : ((UINTN)1 << Layout->Bits);
    PaletteOffset = BMP_FILE_HEADER_SIZE + InfoSize;
    if ((Layout->PaletteEntries > ((UINTN)1 << Layout->Bits)) || (PaletteOffset > Size) ||
        (Layout->PaletteEntries * 4 > Size - PaletteOffset)) {
      return EFI_UNSUPPORTED;
    }

    Layout->Palette = Bytes + PaletteOffset;
  }

  return EFI_SUCCESS;
}

STATIC
VOID
DecodeRow (IN CONST BMP_LAYOUT *Layout, IN CONST UINT8 *Source, OUT EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Target)
{
  UINTN Mask = ((UINTN)1 << Layout->Bits) - 1;

  for (UINTN X = 0; X < Layout->Width; X++) {
    CONST UINT8 *Color;

    if (Layout->Bits >= 24) {
      Color = Source + X * (Layout->Bits / 8);
    } else {
      UINTN Bit = X * Layout->Bits;
      UINTN Index = (Source[Bit / 8] >> (8 - Layout->Bits - (Bit % 8))) & Mask;

      //
      // An index beyond the palette has no colour: it is drawn black.
      //
      if (Index >= Layout->PaletteEntries) {
        Target[X] = EFI_GRAPHICS_OUTPUT_BLT_PIXEL{0, 0, 0, 0};
        continue;
      }

      Color = Layout->Palette + Index * 4;
    }

    Target[X] = EFI_GRAPHICS_OUTPUT_BLT_PIXEL{Color[0], Color[1], Color[2], 0};
  }
}

EFI_STATUS
StandInDecodeBmp (
  IN CONST VOID *Data, IN UINTN Size, OUT EFI_GRAPHICS_OUTPUT_BLT_PIXEL **Pixels, OUT UINTN *Width, OUT UINTN *Height)
{
  CONST UINT8 *Bytes = (CONST UINT8 *)Data;
  BMP_LAYOUT Layout;
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Buffer;
  EFI_STATUS Status;

  if (Data == nullptr) {
    return EFI_UNSUPPORTED;
  }

  Status = ReadLayout (Bytes, Size, &Layout);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  Buffer = (EFI_GRAPHICS_OUTPUT_BLT_PIXEL *)AllocatePool (Layout.Width * Layout.Height *
                                                          sizeof (EFI_GRAPHICS_OUTPUT_BLT_PIXEL));
  if (Buffer == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  //
  // BMP rows run bottom-up unless the height is negative; BLT rows run top-down.
  //
  for (UINTN Y = 0; Y < Layout.Height; Y++) {
    UINTN SourceRow = Layout.TopDown ? Y : (Layout.Height - 1 - Y);

    DecodeRow (&Layout, Bytes + Layout.PixelOffset + SourceRow * Layout.RowSize, Buffer + Y * Layout.Width);
  }

  *Pixels = Buffer;
  *Width = Layout.Width;
  *Height = Layout.Height;
  return EFI_SUCCESS;
}
