/** @file
  A BMP logo of our own, made at run time, that the personality module
  stand-in hands to the UI driver in firmware (144 x 144, 24 bits per pixel).
**/
#ifndef STAND_IN_DEMO_LOGO_H_
#define STAND_IN_DEMO_LOGO_H_

#include <Uefi.h>

/**
  Makes the logo (once) and gives it.

  @param[out] Size  Bytes of the BMP file.
  @return the BMP file, in static storage.
**/
CONST VOID *DemoLogoBmp (OUT UINTN *Size);

#endif
