/** @file
  Tests of protocol installation, removal and lookup on handles.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}

#include "SelfTestHelpers.h"

TEST_F (HostPlatformTest, InstallMakesAHandleAndRefusesTheSameProtocolTwice)
{
  UINT32 InterfaceA = 0;
  UINT32 InterfaceB = 0;
  EFI_HANDLE Handle = nullptr;
  VOID *Found = nullptr;

  ASSERT_EQ (gBS->InstallProtocolInterface (&Handle, &gTestProtocolA, EFI_NATIVE_INTERFACE, &InterfaceA), EFI_SUCCESS);
  ASSERT_NE (Handle, nullptr);
  EFI_HANDLE Same = Handle;
  ASSERT_EQ (gBS->InstallProtocolInterface (&Same, &gTestProtocolB, EFI_NATIVE_INTERFACE, &InterfaceB), EFI_SUCCESS);
  EXPECT_EQ (Same, Handle);
  EXPECT_EQ (gBS->InstallProtocolInterface (&Same, &gTestProtocolA, EFI_NATIVE_INTERFACE, &InterfaceB),
             EFI_INVALID_PARAMETER);

  ASSERT_EQ (gBS->HandleProtocol (Handle, &gTestProtocolA, &Found), EFI_SUCCESS);
  EXPECT_EQ (Found, &InterfaceA);
  EXPECT_EQ (gBS->HandleProtocol (Handle, &gEfiLoadedImageProtocolGuid, &Found), EFI_UNSUPPORTED);
  EXPECT_EQ (Found, nullptr);

  EFI_GUID **Guids = nullptr;
  UINTN Count = 0;
  ASSERT_EQ (gBS->ProtocolsPerHandle (Handle, &Guids, &Count), EFI_SUCCESS);
  ASSERT_EQ (Count, 2U);
  EXPECT_TRUE (CompareGuid (Guids[0], &gTestProtocolA));
  EXPECT_TRUE (CompareGuid (Guids[1], &gTestProtocolB));
  EXPECT_EQ (gBS->FreePool (Guids), EFI_SUCCESS);
}

TEST_F (HostPlatformTest, UninstallNeedsTheInstalledInterfaceAndRemovesAnEmptyHandle)
{
  UINT32 Interface = 0;
  UINT32 Other = 0;
  EFI_HANDLE Handle = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interface);

  EXPECT_EQ (gBS->UninstallProtocolInterface (Handle, &gTestProtocolA, &Other), EFI_NOT_FOUND);
  EXPECT_EQ (gBS->UninstallProtocolInterface (Handle, &gTestProtocolB, &Interface), EFI_NOT_FOUND);
  ASSERT_EQ (gBS->UninstallProtocolInterface (Handle, &gTestProtocolA, &Interface), EFI_SUCCESS);

  EXPECT_FALSE (Platform ().Handles ().IsHandle (Handle));
  EXPECT_EQ (gBS->UninstallProtocolInterface (Handle, &gTestProtocolA, &Interface), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->InstallProtocolInterface (&Handle, &gTestProtocolA, EFI_NATIVE_INTERFACE, &Interface),
             EFI_INVALID_PARAMETER);

  //
  // A new handle never reuses the stale one.
  //
  EFI_HANDLE Fresh = nullptr;
  ASSERT_EQ (gBS->InstallProtocolInterface (&Fresh, &gTestProtocolA, EFI_NATIVE_INTERFACE, &Interface), EFI_SUCCESS);
  EXPECT_NE (Fresh, Handle);
}

TEST_F (HostPlatformTest, DisconnectControllerIsRecordedWithItsResult)
{
  UINT32 Interface = 0;
  EFI_HANDLE Controller = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interface);
  EFI_HANDLE Image = Platform ().Images ().CreateDriverImage ();

  EXPECT_EQ (gBS->DisconnectController (Controller, Image, nullptr), EFI_SUCCESS);
  Platform ().Calls ().FailNth (HostService::DisconnectController, EFI_DEVICE_ERROR);
  EXPECT_EQ (gBS->DisconnectController (Image, Image, nullptr), EFI_DEVICE_ERROR);
  EXPECT_EQ (gBS->DisconnectController (nullptr, Image, nullptr), EFI_INVALID_PARAMETER);

  const std::vector<HostDisconnect> &Calls = Platform ().Handles ().Disconnects ();
  ASSERT_EQ (Calls.size (), 3U);
  EXPECT_EQ (Calls[0].ControllerHandle, Controller);
  EXPECT_EQ (Calls[0].DriverImageHandle, Image);
  EXPECT_EQ (Calls[1].Status, EFI_DEVICE_ERROR);
  EXPECT_EQ (Calls[2].Status, EFI_INVALID_PARAMETER);
}
