/** @file
  The image table of the UI framework stand-in: image data kept under a name
  (AddImageData), image values handed out by name (GetImage), and the pixels
  of an image, decoded once when a page first asks for them.

  An image value is STAND_IN_IMAGE_VALUE_BASE + the image's index + 1; a name
  keeps its index when its data is replaced, so values handed out earlier
  show the new data.
**/
extern "C" {
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
}

#include "StandInInternal.h"

STAND_IN_IMAGE *
StandInFindImage (IN CONST CHAR16 *Name)
{
  if (Name == nullptr) {
    return nullptr;
  }

  for (UINTN Index = 0; Index < gStandInFramework.State.ImageCount; Index++) {
    if (StrCmp (gStandInFramework.Images[Index].Name, Name) == 0) {
      return &gStandInFramework.Images[Index];
    }
  }

  return nullptr;
}

STAND_IN_IMAGE *
StandInLookUpImage (IN UINTN ImageValue)
{
  if ((ImageValue <= STAND_IN_IMAGE_VALUE_BASE) ||
      (ImageValue - STAND_IN_IMAGE_VALUE_BASE > gStandInFramework.State.ImageCount)) {
    return nullptr;
  }

  return &gStandInFramework.Images[ImageValue - STAND_IN_IMAGE_VALUE_BASE - 1];
}

EFI_STATUS
StandInDecodeImage (IN STAND_IN_IMAGE *Image)
{
  if (!Image->Decoded) {
    Image->DecodeStatus = StandInDecodeBmp (Image->Data, Image->Size, &Image->Pixels, &Image->Width, &Image->Height);
    //
    // A lack of pool is no verdict on the data: the next request tries again.
    //
    Image->Decoded = (Image->DecodeStatus != EFI_OUT_OF_RESOURCES) ? TRUE : FALSE;
  }

  return Image->DecodeStatus;
}

STATIC
VOID
ForgetPixels (IN STAND_IN_IMAGE *Image)
{
  StandInFree (Image->Pixels);
  Image->Width = 0;
  Image->Height = 0;
  Image->Decoded = FALSE;
  Image->DecodeStatus = EFI_SUCCESS;
}

VOID
StandInReleaseImages (VOID)
{
  for (UINTN Index = 0; Index < gStandInFramework.State.ImageCount; Index++) {
    STAND_IN_IMAGE *Image = &gStandInFramework.Images[Index];

    ForgetPixels (Image);
    StandInFree (Image->Name);
    StandInFree (Image->Data);
  }

  StandInFree (gStandInFramework.Images);
  gStandInFramework.State.ImageCount = 0;
  gStandInFramework.ImageCapacity = 0;
}

STATIC
EFI_STATUS
EFIAPI
UiAddImageData (IN OUT UINTN *ImageCell, IN CHAR16 *FileName, IN VOID *Data, IN UINTN Size)
{
  UINTN Arguments[] = {(UINTN)ImageCell, (UINTN)FileName, (UINTN)Data, Size};
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  STAND_IN_IMAGE *Image;
  CHAR16 *Name;
  VOID *Copy;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpAddImageData, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if ((FileName == nullptr) || (FileName[0] == 0) || (Data == nullptr) || (Size == 0)) {
    return StandInReject (StandInOpAddImageData, EFI_INVALID_PARAMETER);
  }

  //
  // The caller frees its data right after the call: the framework keeps a copy.
  //
  Copy = AllocatePool (Size);
  if (Copy == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }

  CopyMem (Copy, Data, Size);
  Image = StandInFindImage (FileName);
  if (Image != nullptr) {
    ForgetPixels (Image);
    StandInFree (Image->Data);
    Image->Data = Copy;
    Image->Size = Size;
    return EFI_SUCCESS;
  }

  Status = StandInCopyText (FileName, &Name);
  if (!EFI_ERROR (Status) && (Framework->State.ImageCount >= STAND_IN_MAX_IMAGES)) {
    Status = EFI_OUT_OF_RESOURCES;
  }

  if (!EFI_ERROR (Status)) {
    Status = StandInGrow (Framework->Images, Framework->ImageCapacity, Framework->State.ImageCount);
  }

  if (EFI_ERROR (Status)) {
    StandInFree (Name);
    FreePool (Copy);
    return (Status == EFI_INVALID_PARAMETER) ? StandInReject (StandInOpAddImageData, Status) : Status;
  }

  Image = &Framework->Images[Framework->State.ImageCount++];
  ZeroMem (Image, sizeof (*Image));
  Image->Name = Name;
  Image->Data = Copy;
  Image->Size = Size;
  return EFI_SUCCESS;
}

STATIC
EFI_STATUS
EFIAPI
UiGetImage (IN CHAR16 *FileName, IN OUT UINTN *ImageCell)
{
  UINTN Arguments[] = {(UINTN)FileName, (UINTN)ImageCell};
  STAND_IN_IMAGE *Image;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpGetImage, Arguments, ARRAY_SIZE (Arguments), &Status)) {
    return Status;
  }

  if ((FileName == nullptr) || (ImageCell == nullptr)) {
    return StandInReject (StandInOpGetImage, EFI_INVALID_PARAMETER);
  }

  Image = StandInFindImage (FileName);
  if (Image == nullptr) {
    return EFI_NOT_FOUND;
  }

  *ImageCell = STAND_IN_IMAGE_VALUE_BASE + (UINTN)(Image - gStandInFramework.Images) + 1;
  return EFI_SUCCESS;
}

UI_IMAGE_TABLE gStandInImageTable = {
  {nullptr, nullptr, nullptr, nullptr},
  UiAddImageData,
  UiGetImage,
};
