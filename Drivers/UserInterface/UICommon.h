/** @file
  Services that both pages use: the logo, and slot 7 of the UI driver protocol.
**/
#ifndef UI_COMMON_H_
#define UI_COMMON_H_

#include <Uefi.h>

/**
  Hands the platform's logo to the UI framework and sets it on Page's image
  control.

  @param[in]     Page       The page just built.
  @param[in,out] ImageCell  The page's image cell, which receives the image value.

  @return the status of the image's look-up.
**/
EFI_STATUS
UpdateKestFlashLogo (IN UINTN Page, IN OUT UINTN *ImageCell);

EFI_STATUS EFIAPI SetWelcomeLogoFlag (VOID);

#endif
