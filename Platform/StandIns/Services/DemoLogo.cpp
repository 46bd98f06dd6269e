/** @file
  A BMP logo of our own: a rust-coloured disc with a light ring and a dark
  bird in flight, on the welcome page's background colour. It is drawn here
  with integer arithmetic (4 x 4 samples per pixel, so that the edges stay
  smooth when the page scales it) and no image file has to be shipped.
**/
#include <StandIns/DemoLogo.h>

extern "C" {
#include <Library/BaseMemoryLib.h>
}

#define LOGO_SIDE 144U
#define LOGO_ROW_BYTES (LOGO_SIDE * 3U) ///< a multiple of 4: no row padding
#define LOGO_HEADER_BYTES 54U
#define LOGO_FILE_BYTES (LOGO_HEADER_BYTES + LOGO_ROW_BYTES * LOGO_SIDE)

#define LOGO_SAMPLES 4 ///< per pixel and axis

STATIC_ASSERT (LOGO_ROW_BYTES % 4 == 0, "BMP rows need no padding");
STATIC_ASSERT (LOGO_FILE_BYTES <= 0x10000, "fits the personality module's logo storage");

STATIC UINT8 mLogo[LOGO_FILE_BYTES];
STATIC BOOLEAN mLogoMade = FALSE;

STATIC
VOID
PutUint32 (IN UINTN Offset, IN UINT32 Value)
{
  for (UINTN Index = 0; Index < 4; Index++) {
    mLogo[Offset + Index] = (UINT8)(Value >> (8 * Index));
  }
}

/**
  @return the colour (0xRRGGBB) of the logo at (X, Y), in sample units
  (LOGO_SAMPLES per pixel), Y counted from the top.
**/
STATIC
UINT32
LogoSampleColour (IN INTN X, IN INTN Y)
{
  INTN Centre = (INTN)(LOGO_SIDE * LOGO_SAMPLES) / 2;
  INTN Unit = (INTN)(LOGO_SIDE * LOGO_SAMPLES) / 96; // the design is drawn on a 96-unit grid
  INTN Dx = X - Centre;
  INTN Dy = Y - Centre;
  INTN Distance = Dx * Dx + Dy * Dy;

  if (Distance > 46 * 46 * Unit * Unit) {
    return 0x010101; // the welcome page's background
  }

  if (Distance > 40 * 40 * Unit * Unit) {
    return 0xF2E6D0; // ring
  }

  //
  // A bird in flight: a wide V, its point just below the centre.
  //
  INTN Wing = ((Dx < 0) ? -Dx : Dx) / 2;

  if ((Dx > -30 * Unit) && (Dx < 30 * Unit) && (Dy + Wing > -2 * Unit) && (Dy + Wing < 8 * Unit)) {
    return 0x3A2418;
  }

  return 0xB8562A;
}

/**
  @return the mean colour of the pixel's samples.
**/
STATIC
UINT32
LogoPixelColour (IN UINTN Column, IN UINTN Row)
{
  UINT32 Sum[3] = {0, 0, 0};

  for (UINTN Sy = 0; Sy < LOGO_SAMPLES; Sy++) {
    for (UINTN Sx = 0; Sx < LOGO_SAMPLES; Sx++) {
      UINT32 Colour = LogoSampleColour ((INTN)(Column * LOGO_SAMPLES + Sx), (INTN)(Row * LOGO_SAMPLES + Sy));

      Sum[0] += (Colour >> 16) & 0xFF;
      Sum[1] += (Colour >> 8) & 0xFF;
      Sum[2] += Colour & 0xFF;
    }
  }

  return ((Sum[0] / (LOGO_SAMPLES * LOGO_SAMPLES)) << 16) | ((Sum[1] / (LOGO_SAMPLES * LOGO_SAMPLES)) << 8) |
         (Sum[2] / (LOGO_SAMPLES * LOGO_SAMPLES));
}

CONST VOID *
DemoLogoBmp (OUT UINTN *Size)
{
  if (!mLogoMade) {
    ZeroMem (mLogo, sizeof (mLogo));
    mLogo[0] = 'B';
    mLogo[1] = 'M';
    PutUint32 (2, LOGO_FILE_BYTES);
    PutUint32 (10, LOGO_HEADER_BYTES);
    PutUint32 (14, 40);
    PutUint32 (18, LOGO_SIDE);
    PutUint32 (22, LOGO_SIDE); // positive: rows bottom up
    mLogo[26] = 1;             // planes
    mLogo[28] = 24;            // bits per pixel
    PutUint32 (34, LOGO_ROW_BYTES * LOGO_SIDE);
    for (UINTN Row = 0; Row < LOGO_SIDE; Row++) {
      UINT8 *Line = &mLogo[LOGO_HEADER_BYTES + (LOGO_SIDE - 1 - Row) * LOGO_ROW_BYTES];

      for (UINTN Column = 0; Column < LOGO_SIDE; Column++) {
        UINT32 Colour = LogoPixelColour (Column, Row);

        Line[3 * Column] = (UINT8)Colour;
        Line[3 * Column + 1] = (UINT8)(Colour >> 8);
        Line[3 * Column + 2] = (UINT8)(Colour >> 16);
      }
    }

    mLogoMade = TRUE;
  }

  *Size = sizeof (mLogo);
  return mLogo;
}
