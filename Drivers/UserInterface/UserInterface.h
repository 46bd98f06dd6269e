/** @file
  Driver-wide state of the UI driver: the protocol pointers it keeps for its
  lifetime, its two protocol records and its HII handle.
**/
#ifndef USER_INTERFACE_H_
#define USER_INTERFACE_H_

#include <Protocol/FlashUpdatePage.h>
#include <Protocol/HiiConfigRouting.h>
#include <Protocol/HiiDatabase.h>
#include <Protocol/HiiFont.h>
#include <Protocol/HiiImage.h>
#include <Protocol/HiiString.h>
#include <Protocol/PageEngine.h>
#include <Protocol/UiDriver.h>
#include <Protocol/UiFramework.h>
#include <Uefi.h>

extern EFI_HII_STRING_PROTOCOL *gHiiString;
extern EFI_HII_DATABASE_PROTOCOL *gHiiDatabase;
extern EFI_HII_CONFIG_ROUTING_PROTOCOL *gHiiConfigRouting;
extern EFI_HII_FONT_PROTOCOL *gHiiFont;
extern EFI_HII_IMAGE_PROTOCOL *gHiiImage;

///
/// The UI framework; null until it is installed.
///
extern UI_FRAMEWORK_PROTOCOL *gUiFramework;

///
/// The page engine; non-null once the second stage has begun.
///
extern PAGE_ENGINE_PROTOCOL *gPageEngine;

extern UI_DRIVER_PROTOCOL *gUiDriverProtocol;
extern FLASH_UPDATE_PAGE_PROTOCOL *gFlashUpdatePageProtocol;

///
/// The image handle: the device handle of the HII package list.
///
extern EFI_HANDLE gDriverHandle;

///
/// The driver's HII package list; null when its registration failed.
///
extern EFI_HII_HANDLE gHiiHandle;

/**
  The second stage: fills and installs both protocols once the page engine exists.

  @param[in] ImageHandle  The driver's image handle.
  @param[in] SystemTable  Unused; present so that the wait can call this directly.

  @retval EFI_NOT_READY  The second stage has run already.
  @return the first failing status, or that of the last installation.
**/
EFI_STATUS
EFIAPI
PrereqReadyLoadUIDrv (IN EFI_HANDLE ImageHandle, IN VOID *SystemTable);

/**
  Fills the UI driver protocol record (and makes the flash page record once).
**/
EFI_STATUS
InitKestUIDrvInterfaces (VOID);

/**
  Locates the page engine, registers the driver's HII and image packages, and
  reads the password records and makes the prompt page.

  @return the status of the page engine's look-up when it failed, else that of
          the prompt page's set-up.
**/
EFI_STATUS
InitUIPages (VOID);

/**
  The image's unload function.
**/
EFI_STATUS
EFIAPI
UnloadUserInterface (IN EFI_HANDLE ImageHandle);

#endif
