/** @file
  Simulated driver images: a handle with EFI_LOADED_IMAGE_PROTOCOL, as the DXE
  dispatcher makes one before it calls a driver's entry point, and the unload
  that calls the image's Unload function.
**/
#ifndef HOST_IMAGES_H_
#define HOST_IMAGES_H_

#include <deque>

#include <Protocol/LoadedImage.h>
#include <Uefi.h>

class HostPlatform;

class HostImages {
public:
  explicit HostImages (HostPlatform &Platform) : mPlatform (Platform)
  {}

  HostImages (const HostImages &) = delete;
  HostImages &operator= (const HostImages &) = delete;

  /**
    Makes a loaded driver image: a new handle carrying EFI_LOADED_IMAGE_PROTOCOL
    with SystemTable set, code and data types of a boot-service driver, and
    Unload null (the driver's entry point sets it).

    @return the image handle.
  **/
  EFI_HANDLE CreateDriverImage ();

  /** @return the loaded image protocol of an image made here, or null. **/
  EFI_LOADED_IMAGE_PROTOCOL *LoadedImage (EFI_HANDLE ImageHandle);

  /**
    Unloads an image as gBS->UnloadImage does: calls its Unload function and,
    when that succeeds, removes its EFI_LOADED_IMAGE_PROTOCOL.

    @retval EFI_INVALID_PARAMETER  ImageHandle is not a loaded image of this platform.
    @retval EFI_UNSUPPORTED        The image has no Unload function.
    @return the status of the image's Unload function.
  **/
  EFI_STATUS Unload (EFI_HANDLE ImageHandle);

  //
  // Used by the platform.
  //

  VOID Publish (EFI_BOOT_SERVICES &BootServices);

private:
  static EFI_STATUS EFIAPI UnloadImageService (IN EFI_HANDLE ImageHandle);

  HostPlatform &mPlatform;
  std::deque<EFI_LOADED_IMAGE_PROTOCOL> mImages; ///< stable addresses
};

#endif
