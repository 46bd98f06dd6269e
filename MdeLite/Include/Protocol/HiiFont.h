/** @file
  EFI_HII_FONT_PROTOCOL: StringToImage, which the stand-in renderer draws texts with.
**/
#ifndef MDE_LITE_HIIFONT_H_
#define MDE_LITE_HIIFONT_H_

#include <Protocol/GraphicsOutput.h>
#include <Uefi.h>
#include <Uefi/UefiInternalFormRepresentation.h>

#define EFI_HII_FONT_PROTOCOL_GUID                                                                                     \
  {                                                                                                                    \
    0xe9ca4775, 0x8657, 0x47fc,                                                                                        \
    {                                                                                                                  \
      0x97, 0xe7, 0x7e, 0xd6, 0x5a, 0x08, 0x43, 0x24                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_HII_FONT_PROTOCOL EFI_HII_FONT_PROTOCOL;

typedef UINT32 EFI_HII_OUT_FLAGS;

#define EFI_HII_OUT_FLAG_CLIP 0x00000001
#define EFI_HII_OUT_FLAG_WRAP 0x00000002
#define EFI_HII_OUT_FLAG_CLIP_CLEAN_Y 0x00000004
#define EFI_HII_OUT_FLAG_CLIP_CLEAN_X 0x00000008
#define EFI_HII_OUT_FLAG_TRANSPARENT 0x00000010
#define EFI_HII_IGNORE_IF_NO_GLYPH 0x00000020
#define EFI_HII_IGNORE_LINE_BREAK 0x00000040
#define EFI_HII_DIRECT_TO_SCREEN 0x00000080

typedef UINT32 EFI_HII_FONT_STYLE;
typedef UINT32 EFI_FONT_INFO_MASK;

#define EFI_FONT_INFO_SYS_FONT 0x00000001
#define EFI_FONT_INFO_SYS_SIZE 0x00000002
#define EFI_FONT_INFO_SYS_STYLE 0x00000004
#define EFI_FONT_INFO_SYS_FORE_COLOR 0x00000010
#define EFI_FONT_INFO_SYS_BACK_COLOR 0x00000020
#define EFI_FONT_INFO_RESIZE 0x00001000
#define EFI_FONT_INFO_RESTYLE 0x00002000
#define EFI_FONT_INFO_ANY_FONT 0x00010000
#define EFI_FONT_INFO_ANY_SIZE 0x00020000
#define EFI_FONT_INFO_ANY_STYLE 0x00040000

typedef struct {
  EFI_HII_FONT_STYLE FontStyle;
  UINT16 FontSize;
  CHAR16 FontName[1];
} EFI_FONT_INFO;

typedef struct {
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL ForegroundColor;
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL BackgroundColor;
  EFI_FONT_INFO_MASK FontInfoMask;
  EFI_FONT_INFO FontInfo;
} EFI_FONT_DISPLAY_INFO;

typedef struct {
  UINT16 Width;
  UINT16 Height;
  union {
    EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Bitmap;
    EFI_GRAPHICS_OUTPUT_PROTOCOL *Screen;
  } Image;
} EFI_IMAGE_OUTPUT;

typedef struct {
  UINTN StartIndex;
  UINTN EndIndex;
  UINTN LineHeight;
  UINTN LineWidth;
  UINTN BaselineOffset;
} EFI_HII_ROW_INFO;

//
// String is a constant pointer to characters that are not constant: MdePkg's
// "CONST EFI_STRING", spelt without the typedef.
//
typedef EFI_STATUS (EFIAPI *EFI_HII_STRING_TO_IMAGE) (IN CONST EFI_HII_FONT_PROTOCOL *This,
                                                      IN EFI_HII_OUT_FLAGS Flags,
                                                      IN CHAR16 *CONST String,
                                                      IN CONST EFI_FONT_DISPLAY_INFO *StringInfo OPTIONAL,
                                                      IN OUT EFI_IMAGE_OUTPUT **Blt,
                                                      IN UINTN BltX,
                                                      IN UINTN BltY,
                                                      OUT EFI_HII_ROW_INFO **RowInfoArray OPTIONAL,
                                                      OUT UINTN *RowInfoArraySize OPTIONAL,
                                                      OUT UINTN *ColumnInfoArray OPTIONAL);

struct _EFI_HII_FONT_PROTOCOL {
  EFI_HII_STRING_TO_IMAGE StringToImage;
  VOID *StringIdToImage;
  VOID *GetGlyph;
  VOID *GetFontInfo;
};

extern EFI_GUID gEfiHiiFontProtocolGuid;

#endif
