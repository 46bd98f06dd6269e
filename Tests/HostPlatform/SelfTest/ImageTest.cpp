/** @file
  Tests of simulated driver images and their unload.
**/
#include <Protocol/LoadedImage.h>

#include "SelfTestHelpers.h"

namespace {

EFI_HANDLE mUnloaded = nullptr;
EFI_STATUS mUnloadResult = EFI_SUCCESS;

EFI_STATUS EFIAPI
TestUnload (IN EFI_HANDLE ImageHandle)
{
  mUnloaded = ImageHandle;
  return mUnloadResult;
}

} // namespace

TEST_F (HostPlatformTest, UnloadCallsTheImagesUnloadAndRemovesTheImageOnSuccess)
{
  EFI_HANDLE Image = Platform ().Images ().CreateDriverImage ();
  EFI_LOADED_IMAGE_PROTOCOL *Loaded = nullptr;

  ASSERT_EQ (gBS->HandleProtocol (Image, &gEfiLoadedImageProtocolGuid, reinterpret_cast<VOID **> (&Loaded)),
             EFI_SUCCESS);
  EXPECT_EQ (Loaded->SystemTable, gST);
  EXPECT_EQ (Loaded->Unload, nullptr);
  EXPECT_EQ (Platform ().Images ().Unload (Image), EFI_UNSUPPORTED);

  Loaded->Unload = TestUnload;
  mUnloadResult = EFI_ACCESS_DENIED;
  EXPECT_EQ (Platform ().Images ().Unload (Image), EFI_ACCESS_DENIED);
  EXPECT_EQ (mUnloaded, Image);
  EXPECT_TRUE (Platform ().Handles ().HasProtocol (Image, gEfiLoadedImageProtocolGuid));

  mUnloadResult = EFI_SUCCESS;
  EXPECT_EQ (Platform ().Images ().Unload (Image), EFI_SUCCESS);
  EXPECT_FALSE (Platform ().Handles ().IsHandle (Image));
  EXPECT_EQ (Platform ().Images ().Unload (Image), EFI_INVALID_PARAMETER);
}
