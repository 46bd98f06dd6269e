/** @file
  Simulated driver images.
**/
#include "HostImages.h"

#include "HostPlatform.h"

EFI_HANDLE
HostImages::CreateDriverImage ()
{
  EFI_LOADED_IMAGE_PROTOCOL Image = {};

  Image.Revision = EFI_LOADED_IMAGE_PROTOCOL_REVISION;
  Image.SystemTable = mPlatform.SystemTable ();
  Image.ImageCodeType = EfiBootServicesCode;
  Image.ImageDataType = EfiBootServicesData;
  Image.Unload = nullptr;
  mImages.push_back (Image);
  return mPlatform.Handles ().InstallProtocol (gEfiLoadedImageProtocolGuid, &mImages.back ());
}

EFI_LOADED_IMAGE_PROTOCOL *
HostImages::LoadedImage (EFI_HANDLE ImageHandle)
{
  VOID *Interface = mPlatform.Handles ().Interface (ImageHandle, gEfiLoadedImageProtocolGuid);

  for (EFI_LOADED_IMAGE_PROTOCOL &Image : mImages) {
    if (&Image == Interface) {
      return &Image;
    }
  }

  return nullptr;
}

EFI_STATUS
HostImages::Unload (EFI_HANDLE ImageHandle)
{
  EFI_LOADED_IMAGE_PROTOCOL *Image = LoadedImage (ImageHandle);

  if (Image == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  if (Image->Unload == nullptr) {
    return EFI_UNSUPPORTED;
  }

  EFI_STATUS Status = Image->Unload (ImageHandle);
  if (!EFI_ERROR (Status)) {
    mPlatform.Handles ().UninstallProtocol (ImageHandle, gEfiLoadedImageProtocolGuid, Image);
  }

  return Status;
}

EFI_STATUS EFIAPI
HostImages::UnloadImageService (IN EFI_HANDLE ImageHandle)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::UnloadImage)) {
    return *Failure;
  }

  return Platform.Images ().Unload (ImageHandle);
}

VOID
HostImages::Publish (EFI_BOOT_SERVICES &BootServices)
{
  BootServices.UnloadImage = UnloadImageService;
}
