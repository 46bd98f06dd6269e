/** @file
  The logo that both pages show: the personality module's own logo when the
  platform has one, else the firmware-volume logo file; handed to the UI
  framework under one name and set on the page's image control. Also slot 7
  of the UI driver protocol.
**/
#include "UICommon.h"
#include "UiFrameworkCalls.h"
#include "UserInterface.h"
#include "WelcomePage.h"

#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/FileMgrLib.h>
#include <Library/TrackedAllocationLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/PersonalityModule.h>

#define TRACKED_POOL_FILE "Drivers/UserInterface/UICommon"

STATIC constexpr auto mLogoName = CompileTime::MakeWideString (u"KestLogo_1280.bmp");

/**
  Copies the personality module's logo.

  @param[out] Data  Receives a tracked pool copy, or stays null.
  @param[out] Size  Receives its size.

  @retval EFI_SUCCESS  *Data holds the copy.
  @return why there is none (no module, no logo, a size of 0, no pool).
**/
STATIC
EFI_STATUS
GetPersonalityModuleLogoImage (OUT VOID **Data, OUT UINTN *Size)
{
  PERSONALITY_MODULE_PROTOCOL *Personality = nullptr;
  EFI_STATUS Status;

  Status = gBS->LocateProtocol (&gPersonalityModuleProtocolGuid, nullptr, (VOID **)&Personality);
  if (EFI_ERROR (Status) || (Personality == nullptr) || (Personality->Logo == nullptr)) {
    return EFI_NOT_FOUND;
  }

  //
  // A size of 0 is refused by the allocator: such a logo counts as absent.
  //
  Status = AllocateTrackedPool (Data, Personality->Logo->DataSize, __func__, TRACKED_POOL_FILE, __LINE__);
  if (EFI_ERROR (Status)) {
    return Status;
  }

  CopyMem (*Data, Personality->Logo->Data, Personality->Logo->DataSize);
  *Size = Personality->Logo->DataSize;
  return EFI_SUCCESS;
}

EFI_STATUS
UpdateKestFlashLogo (IN UINTN Page, IN OUT UINTN *ImageCell)
{
  UI_SERVICES *Services = (gUiFramework != nullptr) ? gUiFramework->Services : nullptr;
  UI_IMAGE_TABLE *Images = (Services != nullptr) ? Services->Images : nullptr;
  VOID *Data = nullptr;
  UINTN Size = 0;
  EFI_STATUS Status = EFI_NOT_READY;
  BOOLEAN HaveData;

  HaveData = !EFI_ERROR (GetPersonalityModuleLogoImage (&Data, &Size));
  if (!HaveData) {
    HaveData = !EFI_ERROR (ReadFileDataFromFVByGuid (&gKestLogoFileGuid, &Data, &Size));
  }

  if ((Images != nullptr) && (Images->AddImageData != nullptr) && (Images->GetImage != nullptr)) {
    if (HaveData) {
      Images->AddImageData (ImageCell, const_cast<CHAR16 *> (mLogoName.Text), Data, Size);
    }

    //
    // Without new data an image handed over earlier under the same name may
    // still be there.
    //
    Status = Images->GetImage (const_cast<CHAR16 *> (mLogoName.Text), ImageCell);
  }

  if (ImageCell != nullptr) {
    UiSetProperty (Page, UI_PAGE_CONTAINER, gLogoControl, UI_PROPERTY_IMAGE_SCALE, 2, 100, 100);
    UiSetStyle (Page, UI_PAGE_CONTAINER, gLogoControl, UI_STYLE_IMAGE, *ImageCell);
  }

  FreeTrackedPool (&Data, __func__, TRACKED_POOL_FILE, __LINE__);
  return Status;
}

EFI_STATUS EFIAPI
SetWelcomeLogoFlag (VOID)
{
  UI_ATTRIBUTES *Attributes = (gUiFramework != nullptr) ? gUiFramework->Attributes : nullptr;

  if ((Attributes == nullptr) || (Attributes->SetControlProperty == nullptr)) {
    return EFI_NOT_READY;
  }

  return Attributes->SetControlProperty (mWelcomePage, UI_PAGE_CONTAINER, gLogoControl, UI_PROPERTY_LOGO_FLAG, 1, 0, 0);
}
