/** @file
  The flash update page: the protocol record that the firmware-update driver
  calls, and the session pass-through to the UI framework.

  The page itself is not built yet: until it is, Show, SetProgress,
  SetStatusText and ShowResult change nothing on the screen.
**/
#include "FlashUpdatePage.h"
#include "UserInterface.h"

#include <Library/TrackedAllocationLib.h>

#define TRACKED_POOL_FILE "Drivers/UserInterface/FlashUpdatePage"

//
// The flash page's own handles; it shares the image, progress and status
// controls and the countdown with the welcome page.
//
STATIC UINTN mFlashPage = 0;
STATIC UINTN mFlashLogoImage = 0;
STATIC UINTN mFlashMessageControl = 0;
STATIC UINTN mFlashLabelControl = 0;
STATIC UINTN mFlashPercentControl = 0;

VOID
ForgetFlashUpdatePage (VOID)
{
  mFlashPage = 0;
  mFlashLogoImage = 0;
  mFlashMessageControl = 0;
  mFlashLabelControl = 0;
  mFlashPercentControl = 0;
}

EFI_STATUS
InitFlashUpdatePageDriverInterfaces (VOID)
{
  EFI_STATUS Status;

  Status = ALLOCATE_TRACKED_POOL (gFlashUpdatePageProtocol, sizeof (FLASH_UPDATE_PAGE_PROTOCOL));
  if (gFlashUpdatePageProtocol != nullptr) {
    gFlashUpdatePageProtocol->Show = ShowFlashUpdatePage;
    gFlashUpdatePageProtocol->SetProgress = SetFlashProgress;
    gFlashUpdatePageProtocol->SetStatusText = SetFlashStatusText;
    gFlashUpdatePageProtocol->ShowResult = ShowFlashResult;
    gFlashUpdatePageProtocol->Revision = FLASH_UPDATE_PAGE_PROTOCOL_REVISION;
    gFlashUpdatePageProtocol->Reserved = 0;
    gFlashUpdatePageProtocol->SessionPassThrough = FlashSessionPassThrough;
  }

  return Status;
}

VOID EFIAPI
ShowFlashUpdatePage (VOID)
{}

VOID EFIAPI
SetFlashProgress (IN UINTN Percent)
{}

VOID EFIAPI
SetFlashStatusText (IN CHAR8 *Text OPTIONAL)
{}

VOID EFIAPI
ShowFlashResult (IN UINT32 Result)
{}

/**
  Passes a session request to the UI framework unchanged, but for the first
  argument, which becomes the framework's service table.
**/
EFI_STATUS EFIAPI
FlashSessionPassThrough (
  IN VOID *Unused, IN UINTN Argument1, IN UINTN Argument2, IN UINTN Argument3, IN UINTN Argument4)
{
  UI_SERVICES *Services;

  if (gUiFramework == nullptr) {
    return EFI_NOT_READY;
  }

  Services = gUiFramework->Services;
  return Services->Session->SessionRequest (Services, Argument1, Argument2, Argument3, Argument4);
}
