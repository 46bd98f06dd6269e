/** @file
  A small BMP logo of our own: a rust-coloured disc with a light ring and a
  dark bird in flight, on the welcome page's background colour. It is drawn
  here with integer arithmetic so that no image file has to be shipped with
  the test.
**/
#include "DemoLogo.h"

#include <Library/BaseMemoryLib.h>

#define LOGO_SIDE 96U
#define LOGO_ROW_BYTES (LOGO_SIDE * 3U) ///< a multiple of 4: no row padding
#define LOGO_HEADER_BYTES 54U
#define LOGO_FILE_BYTES (LOGO_HEADER_BYTES + LOGO_ROW_BYTES * LOGO_SIDE)

STATIC_ASSERT (LOGO_ROW_BYTES % 4 == 0, "BMP rows need no padding");

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
  @return the colour (0xRRGGBB) of the logo at (X, Y), Y counted from the top.
**/
STATIC
UINT32
LogoColour (IN INTN X, IN INTN Y)
{
  INTN Centre = (INTN)LOGO_SIDE / 2;
  INTN Dx = X - Centre;
  INTN Dy = Y - Centre;
  INTN Distance = Dx * Dx + Dy * Dy;

  if (Distance > 46 * 46) {
    return 0x010101; // the welcome page's background
  }

  if (Distance > 40 * 40) {
    return 0xF2E6D0; // ring
  }

  //
  // A bird in flight: a wide V, its point just below the centre.
  //
  INTN Wing = ((Dx < 0) ? -Dx : Dx) / 2;

  if ((Dx > -30) && (Dx < 30) && (Dy + Wing > -2) && (Dy + Wing < 8)) {
    return 0x3A2418;
  }

  return 0xB8562A;
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
        UINT32 Colour = LogoColour ((INTN)Column, (INTN)Row);

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
